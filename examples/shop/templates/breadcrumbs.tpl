<ol class="crumbs" aria-label="You are here">
{dynamic breadcrumbs}<li>{!optional [*] 0}<i>/</i> {/optional}<a href="/c/{rawurlencode *::id}">{htmlspecialchars *::name}</a></li>
{/dynamic}</ol>
