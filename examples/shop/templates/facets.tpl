<form class="facets" aria-label="Filters">
{dynamic facet,facets}{optional facet::*}<details open>
<summary>{facet::*::title}</summary>
{dynamic choice,facet::*::choices}<label>{optional facet::[*] colour}<i class="swatch" style="background:{choice::*::swatch '#fff'}"></i>{/optional}<input type="checkbox" name="{facet::[*]}" value="{htmlspecialchars choice::*::value}"{optional choice::*::chosen 1} checked{/optional}>{choice::*::label choice::*::value} <small>{choice::*::count}</small></label>
{/dynamic}</details>
{/optional}{/dynamic}</form>
