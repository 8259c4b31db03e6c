<h1>{title}</h1>
{dynamic group,groups}<section id="{group::[*]}" class="{group::*::colour}">
<h2>{htmlspecialchars group::*::title}</h2>
{optional group::*::note}<p class="note">{group::*::note}</p>{/optional}
<ul>
{dynamic item,group::*::items}<li id="{group::[*]}-{item::[*]}" class="{group::*::colour}">
<a href="/{group::[*]}/{[*]}">{htmlspecialchars *::name}</a> {*::price}
{optional *::new}<em>new</em>{/optional}
{optional *::state 'sold'}<s>sold</s>{/optional}{!optional *::state 'sold'}<button>buy</button>{/optional}
</li>
{/dynamic}</ul>
</section>
{/dynamic}
