<?php

const PAGES = ['hello', 'table', 'nested', 'literal', 'includes', 'shop', 'string'];
const ENGINES = ['template', 'php', 'twig', 'smarty', 'blade'];
const REQUESTED = ['hello', 'includes', 'shop']; // as whole requests

const SYNTAX = [
    'php' => [
        'include' => "<?php include __DIR__ . '/%s.php' ?>\n",
        'htmlspecialchars' => "<?= htmlspecialchars(\$%s, ENT_COMPAT, 'ISO-8859-1') ?>",
        '' => '<?= $%s ?>',
    ],
    'twig' => ['include' => "{%% include 'includes/%s.twig' %%}", 'htmlspecialchars' => '{{ %s|e }}', '' => '{{ %s }}'],
    'smarty' => ['include' => "{include file='includes/%s.smarty'}", 'htmlspecialchars' => '{$%s|escape}', '' => '{$%s}'],
    'blade' => ['include' => "@include('includes.%s')", 'htmlspecialchars' => '{{ $%s }}', '' => '{!! $%s !!}'],
];

/** Writes all pages into $to, ready to be rendered: the committed ones and those made from a template. */
function preparePages(string $to): void
{
    foreach (PAGES as $page) {
        is_dir("$to/$page") || mkdir("$to/$page", 0777, true);
        foreach (glob(dirname(__DIR__) . "/pages/$page/*") as $file) {
            copy($file, "$to/$page/" . basename($file));
        }
    }
    file_put_contents("$to/literal/page.tpl", literalPage());
    foreach (['literal', 'includes', 'string'] as $page) {
        foreach (glob("$to/$page/*.tpl") as $file) {
            foreach (['php' => 'php', 'twig' => 'twig', 'smarty' => 'smarty', 'blade' => 'blade.php'] as $engine => $suffix) {
                file_put_contents(substr($file, 0, -3) . $suffix, translate(file_get_contents($file), $engine));
            }
        }
    }
    // Blade compiles again what is not older than its compiled file; opcache leaves out what has no time at all.
    array_map(fn ($file) => touch($file, 1), glob("$to/*/*"));
    foreach (PAGES as $page) {
        file_put_contents("$to/$page/data.ser", serialize(require "$to/$page/data.php"));
        file_put_contents("$to/$page/data.php", '<?php return ' . var_export(require "$to/$page/data.php", true) . ';');
    }
}

/** The data of a page as a database would hand it over: no string shared with the code. */
function pageData(string $pages, string $page): array
{
    return unserialize(file_get_contents("$pages/$page/data.ser"));
}

/** One megabyte of style sheets and scripts with fifty variables and every brace escaped. */
function literalPage(): string
{
    $text = '';
    for ($i = 0; strlen($text) < 1 << 20; $i++) {
        $colour = substr(md5("$i"), 0, 6);
        $text .= ".box-$i > a:hover, .box-$i > a:focus {{display:block;margin:0 auto 1em;padding:4px 8px;color:#$colour;border:1px solid currentColor}}\n"
            . "/* box $i: opened by a click, closed by the next one */\n"
            . "function toggle$i(box, open) {{ if (box && open !== box.open) {{box.open = open; box.title = \"#$colour\"}} return box }}\n";
        if ($i % 70 === 0 && $i < 3500) {
            $text .= ":root {{--colour-$i:{colour" . $i / 70 . "}}}\n";
        }
    }
    return $text;
}

/** A template without blocks in another engine's syntax. */
function translate(string $template, string $engine): string
{
    preg_match_all('~(?:\{\{|}}|\{(?=\s)|[^{}]+|})+|\{(include |htmlspecialchars |)([^{}]+)}~', $template, $parts, PREG_SET_ORDER);
    $text = '';
    foreach ($parts as $part) {
        if (isset($part[2])) {
            $text .= sprintf(SYNTAX[$engine][trim($part[1])], preg_replace('~\w+/|\.tpl~', '', $part[2]));
        } else {
            $literal = strtr($part[0], ['{{' => '{', '}}' => '}']);
            $text .= $engine === 'smarty' && strpbrk($literal, '{}') ? "{literal}$literal{/literal}" : $literal;
        }
    }
    return $text;
}
