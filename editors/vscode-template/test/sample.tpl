<p class="a {name}">{user::name 'no "one"'}</p>
~ { | punctuation.definition.tag.begin.template
~ name | variable.other.template
~ name | string.quoted.double.html
~ user | variable.other.template
~ :: | punctuation.separator.template
~ 'no "one"' | string.quoted.single.template
~ } | punctuation.definition.tag.end.template
~ p | entity.name.tag
a {{b}} c { d } e }
~ {{ | constant.character.escape.template
~ }} | constant.character.escape.template
~ c { d } e } | -
{{{name}}}
~ {{ | constant.character.escape.template
~ name | variable.other.template
~ }} | constant.character.escape.template
function () {
~ function () { | -
{htmlspecialchars row::*::title}{rawurlencode *}{addslashes .*::x}
~ htmlspecialchars | support.function.template
~ row | entity.name.section.template
~ * | variable.language.element.template
~ title | variable.other.template
~ rawurlencode | support.function.template
~ .* | variable.language.element.template
{htmlentities a:b::c}
~ a:b | variable.other.template
{dynamic row,rows}{row::[*]}{[*]}{a*b}{/dynamic rows}{rdynamic row::*::cells}{/rdynamic}
~ dynamic | keyword.control.loop.template
~ row | entity.name.section.template
~ rows | variable.other.template
~ [*] | variable.language.key.template
~ a*b | variable.other.template
~ /dynamic | keyword.control.template
~ rows | comment.block.template
~ rdynamic | keyword.control.loop.template
~ cells | variable.other.template
~ /rdynamic | keyword.control.template
{optional colour 'dark red'}<b>{/optional}{!optional *::stock 0}</b>{/optional}{optional [*]}
~ optional | keyword.control.conditional.template
~ colour | variable.other.template
~ 'dark red' | string.unquoted.compared.template
~ !optional | keyword.control.conditional.template
~ 0 | string.unquoted.compared.template
~ [*] | variable.language.key.template
{include parts/head line.tpl}{includes}
~ include | keyword.control.include.template
~ parts/head line.tpl | string.unquoted.file.template
~ s | string.unquoted.file.template
<style>p { color: {colour}; margin: 0 } b{{color: red}}</style>
~ colour | variable.other.template
~ color | support.type.property-name.css
~ { | constant.character.escape.template
~ } | constant.character.escape.template
~ red | support.constant.color.w3c-standard-color-name.css
~ style | entity.name.tag.html
<script>
const name = '{addslashes user::name}', table = {{ a: [1] }}; if (name) {
~ addslashes | support.function.template
~ addslashes | string.quoted.single.js
~ if | keyword.control
~ a | meta.object-literal.key.js
    go('{id}')
~ id | variable.other.template
}
</script>
~ script | entity.name.tag.html
<a href='{htmlspecialchars
  link::*::url
}' title={name}>x</a>
~ } | punctuation.definition.tag.end.template
~ name | variable.other.template
<option value="1"{optional [*] EUR} selected{/optional}>{*}</option> <option{!optional a} hidden{/optional}>
~ !optional | keyword.control.conditional.template
~ selected | entity.other.attribute-name.html
~ hidden | entity.other.attribute-name.html
~ option | entity.name.tag.html
{a {b} c
~ { | invalid.illegal.brace.template
