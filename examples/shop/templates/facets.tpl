<form class="facets" aria-label="Filters">
{dynamic facet,facets}{optional facet::*}<details open>
<summary>{htmlspecialchars facet::*::title}</summary>
{dynamic choice,facet::*::choices}<label><input type="checkbox" name="{htmlspecialchars facet::[*]}" value="{htmlspecialchars choice::*::value}"{optional choice::*::chosen 1} checked{/optional}>{optional facet::[*] colour}<i style="background:{choice::*::swatch '#fff'}"></i>{/optional}{optional choice::*::label}{htmlspecialchars choice::*::label}{/optional}{!optional choice::*::label}{htmlspecialchars choice::*::value}{/optional} <small>{htmlspecialchars choice::*::count}</small></label>
{/dynamic}</details>
{/optional}{/dynamic}</form>
