<li class="card" style="--t:{product::*::tint category::tint '#eee8dc'};--a:{product::*::shade};--b:{product::*::body}">
<a href="/p/{rawurlencode product::*::name}"><svg><use href="#{htmlspecialchars product::*::shape}"/></svg>
{optional product::*::discount}<b class="badge sale">−{htmlspecialchars product::*::discount} %</b>{/optional}
{optional product::*::badge}<b class="badge">{htmlspecialchars product::*::badge}</b>{/optional}
<h3>{htmlspecialchars product::*::name}</h3></a>
<p class="maker">{optional product::*::maker}{htmlspecialchars product::*::maker}{/optional}{!optional product::*::maker}{htmlspecialchars product::*::material}, {htmlspecialchars product::*::colour}{/optional}</p>
{optional product::*::reviews}<p class="stars" style="--r:{product::*::rating '0'}" aria-label="{htmlspecialchars product::*::rating} of 5"><small>{htmlspecialchars product::*::reviews}</small></p>{/optional}
{!optional product::*::reviews}<p class="maker">Not rated yet</p>{/optional}
<p class="price">{currency '€'}{htmlspecialchars product::*::price}
{optional product::*::old_price}<s>{currency '€'}{htmlspecialchars product::*::old_price}</s>{/optional}
{optional product::*::few}<small>Only {htmlspecialchars product::*::stock} left</small>{/optional}
{optional product::*::stock 1}<small>The last one</small>{/optional}</p>
{optional product::*::stock 0}<button disabled>Sold out</button>{/optional}
{optional product::*::stock}<button value="{htmlspecialchars product::*::id}">Add to basket</button>{/optional}
</li>
