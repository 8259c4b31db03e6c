<svg width="0" height="0" style="position:absolute" aria-hidden="true">
<radialGradient id="glow"><stop stop-color="#ffe7ad" stop-opacity=".95"/><stop offset="1" stop-color="#ffe7ad" stop-opacity="0"/></radialGradient>
{dynamic shape,shapes}<symbol id="{htmlspecialchars shape::[*]}" viewBox="0 0 160 160">{dynamic shape::*}<path class="{htmlspecialchars *::fill}" d="{htmlspecialchars *::d}"/>{/dynamic}</symbol>
{/dynamic}</svg>
