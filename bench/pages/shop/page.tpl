{include shop/header.tpl}<p class="path">
{dynamic path}<a href="{*::url}">{htmlspecialchars *::title}</a> /
{/dynamic}</p>
<main>
<h1>{htmlspecialchars title}</h1>
<p>{found} articles found</p>
<aside>
{dynamic facet,facets}<fieldset><legend>{htmlspecialchars *::title}</legend>
{dynamic facet::*::values}<label><input type="checkbox" name="{rawurlencode facet::*::title}" value="{rawurlencode *::name}"> {htmlspecialchars *::name} ({*::count})</label>
{/dynamic}</fieldset>
{/dynamic}</aside>
<ol class="products">
{dynamic products}<li class="product" id="p{*::id}">
{optional *::badge}<b class="badge">{*::badge}</b>
{/optional}<a class="picture" href="{*::url}"><img src="{*::image}" alt="{htmlspecialchars *::name}" width="320" height="320" loading="lazy"></a>
<h2><a href="{*::url}">{htmlspecialchars *::name}</a></h2>
<p class="brand">by {htmlspecialchars *::brand}</p>
<p class="text">{htmlspecialchars *::text}</p>
<ul class="facts"><li>Article {*::sku}</li><li>{*::width} × {*::height} cm, {*::weight} kg</li><li>Made in {htmlspecialchars *::origin}</li><li><a href="{*::url}#care">How to care for it</a></li></ul>
<p class="rating" title="{*::rating} of 5"><meter min="0" max="5" value="{*::rating}"></meter> {*::votes} votes</p>
<p class="price">{optional *::before}<s>{*::before} EUR</s> {/optional}<strong>{*::price} EUR</strong></p>
{optional *::stock 'out'}<p class="stock out">Back in three weeks</p>
{/optional}{!optional *::stock 'out'}<form action="/cart" method="post"><input type="hidden" name="id" value="{*::id}"><button>Add to cart</button></form>
{/optional}</li>
{/dynamic}</ol>
</main>
{include shop/footer.tpl}
