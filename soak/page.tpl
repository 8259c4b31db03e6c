<ul>{dynamic row,rows}
<li>{row::[*]}: {htmlspecialchars row::*::name}{include price.tpl}</li>{/dynamic}
</ul>
