{optional shop::notice}<p class="notice">{htmlspecialchars shop::notice}</p>
{/optional}<header>
<a class="logo" href="/"><svg viewBox="0 0 24 24" aria-hidden="true"><path d="M12 1c4 5 6 8 6 12a6 6 0 0 1-12 0c0-4 2-7 6-12z"/></svg>{htmlspecialchars shop::name}</a>
<form role="search"><input type="search" name="q" value="{htmlspecialchars search::phrase}" placeholder="Search lamps, makers, materials" aria-label="Search"></form>
<select aria-label="Currency">{dynamic currencies}<option{optional [*] EUR} selected{/optional}>{htmlspecialchars [*]} {htmlspecialchars *}</option>{/dynamic}</select>
<a href="/account">{optional customer}Hello, {htmlspecialchars customer::name}{/optional}{!optional customer}Sign in{/optional}</a>
<a class="basket" href="/basket">Basket <b id="count">{optional}vouched: a number{/optional}{basket::count '0'}</b></a>
</header>
<nav aria-label="Departments">
{dynamic navigation}<a href="/c/{rawurlencode *::id}"{optional *::current} aria-current="true"{/optional}>{htmlspecialchars *::name}</a>
{/dynamic}</nav>
