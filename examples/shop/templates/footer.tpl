<footer>
{optional newsletter}<form><h2>{htmlspecialchars newsletter::title}</h2><p>New lamps and old tricks, {optional newsletter::frequency}{htmlspecialchars newsletter::frequency}{/optional}{!optional newsletter::frequency}now and then{/optional}.</p><input type="email" placeholder="you@example.org" aria-label="E-mail"><button>Subscribe</button></form>
{/optional}{dynamic column,footer}<div><h2>{htmlspecialchars column::[*]}</h2>{dynamic link,column::*}<a href="{optional}vouched: pages of our own{/optional}{htmlspecialchars link::*::url}">{htmlspecialchars link::*::label}</a>{/dynamic}</div>
{/dynamic}<p class="legal">{htmlentities shop::legal}</p>
</footer>
