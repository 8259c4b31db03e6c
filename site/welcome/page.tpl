{include parts/style.tpl}
<h1>{htmlspecialchars cafe::name}</h1>
<p class="motto">{cafe::motto 'Open every day'}</p>

{optional offer}<p class="offer">Today: {htmlspecialchars offer::text}</p>{/optional}

<ul>
{dynamic drink,menu}<li>
  {htmlspecialchars drink::*::name}
  {optional drink::*::new}<em>new</em>{/optional}
  <b>{currency}{drink::*::price}</b>
</li>
{/dynamic}</ul>

<p class="hint">Change a price in the data. Take a {{/optional}} out of the template.</p>
