<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{rdynamic crumb,breadcrumbs}{htmlspecialchars crumb::*::name} · {/rdynamic}{htmlspecialchars shop::name}</title>
<meta name="description" content="{htmlentities shop::tagline}">
{include style.tpl}
</head>
<body>
{include shapes.tpl}
{include header.tpl}
<main>
{include breadcrumbs.tpl}
<section class="hero">
<div>
<h1>{htmlspecialchars category::name}</h1>
<p>{optional category::intro}{optional}vouched: HTML of our own{/optional}{category::intro}{/optional}{!optional category::intro}{htmlspecialchars shop::tagline}{/optional}</p>
</div>
<div class="trio" aria-hidden="true">{dynamic featured}<svg style="--a:{*::shade};--b:{*::body}"><use href="#{htmlspecialchars *::shape}"/></svg>{/dynamic}</div>
</section>
<input type="checkbox" id="filters" hidden>
<div class="bar">
<label for="filters" class="button">Filters</label>
<span><b>{products::first}–{products::last}</b> of {products::total} lamps</span>
<label class="sort">Sort by <select>
{dynamic sorting}<option value="{htmlspecialchars [*]}"{optional [*] popular} selected{/optional}>{htmlspecialchars *}</option>
{/dynamic}</select></label>
</div>
<div class="columns">
{include facets.tpl}
<div>
<ul class="grid">
{dynamic product,products}{include product.tpl}{optional product::[*] 7}{optional}vouched: set by the shop's keeper{/optional}{include shop::promo}
{/optional}{/dynamic}</ul>
{include pages.tpl}
</div>
</div>
{optional viewed}<section class="seen">
<h2>You looked at</h2>
<ul>
{rdynamic seen,viewed}<li><a href="/p/{rawurlencode seen::*::name}" style="--t:{seen::*::tint category::tint '#eee8dc'};--a:{seen::*::shade};--b:{seen::*::body}"><svg><use href="#{htmlspecialchars seen::*::shape}"/></svg>{htmlspecialchars seen::*::name}</a></li>
{/rdynamic}</ul>
</section>{/optional}
</main>
{include footer.tpl}
{include script.tpl}
</body>
</html>
