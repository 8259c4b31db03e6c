<?php

/**
 * Times relative to plain PHP as an SVG: those of a call, then those of whole requests, a group of bars a page. The scale
 * is logarithmic: a bar to the left of the middle line is faster, one to the right slower.
 */
function chart(array $times, array $requests): string
{
    $engines = array_values(array_diff(ENGINES, ['php']));
    $relative = fn (array $pages) => array_map(fn ($page) => array_map(fn ($time) => $time / $page['php'], $page), $pages);
    $times = $relative($times);
    // Of a request that takes 250 µs, five more or less can't be told from nothing.
    $requests = $relative(array_map(fn ($page) => array_map(fn ($time) => max($time, 5000), $page), $requests));
    $shown = [];
    foreach ([...array_values($times), ...array_values($requests)] as $page) {
        array_push($shown, ...array_values(array_intersect_key($page, array_flip($engines))));
    }
    $low = floor(log(min($shown), 2) - 0.6); // room for the figure at the end of the longest bar
    $high = ceil(log(max($shown), 2) + 0.6);
    $x = fn (float $ratio) => round(100 + (log($ratio, 2) - $low) / ($high - $low) * 740, 1);
    $group = 14 * count($engines) + 18;
    $top = 104;
    $second = $top + $group * count($times) + 24;
    $bottom = $second + $group * count($requests);

    $svg = '';
    for ($power = $low; $power <= $high; $power++) {
        $at = $x(2 ** $power);
        foreach ([[$top, $second - 32], [$second, $bottom]] as [$from, $to]) {
            $svg .= "<line x1=\"$at\" x2=\"$at\" y1=\"" . ($from - 8) . "\" y2=\"$to\" class=\"" . ($power == 0 ? 'one' : 'grid') . "\"/>\n";
        }
        if ($power != 0) {
            $label = $power < 0 ? '1/' . 2 ** -$power : 2 ** $power . '×';
            $svg .= "<text x=\"$at\" y=\"" . ($bottom + 16) . "\" class=\"scale\">$label</text>\n";
        }
    }
    $svg .= '<text x="' . $x(1) . '" y="' . ($bottom + 16) . "\" class=\"scale strong\">plain PHP</text>\n"
        . '<text x="12" y="' . ($top - 16) . "\" class=\"strong\">A call, everything warm</text>\n"
        . '<text x="12" y="' . ($second - 16) . "\" class=\"strong\">A whole request, beyond one that prints the finished page</text>\n";
    foreach ([[$top, $times], [$second, $requests]] as [$y, $pages]) {
        foreach ($pages as $page => $ratio) {
            $svg .= '<text x="88" y="' . ($y + $group / 2 - 4) . "\" class=\"page\">$page</text>\n" . bars($ratio, $engines, $x, $y);
            $y += $group;
        }
    }
    $legend = '';
    foreach ($engines as $i => $engine) {
        $at = 100 + 96 * $i;
        $legend .= "<rect x=\"$at\" y=\"42\" width=\"12\" height=\"12\" class=\"$engine\"/><text x=\"" . ($at + 18) . '" y="52">' . TITLES[$engine] . "</text>\n";
    }
    $height = $bottom + 30;
    return <<<SVG
        <svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 860 $height" width="860" height="$height" role="img" aria-label="Time of a call and of a whole request relative to plain PHP">
        <style>
        text { font: 12px system-ui, sans-serif; fill: #24292f } .title { font-size: 15px; font-weight: 600 } .strong { font-weight: 600 }
        .page { text-anchor: end; font-size: 13px } .scale { text-anchor: middle; fill: #57606a } .scale.strong { fill: #24292f }
        .value { font-size: 11px } .left { text-anchor: end } .grid { stroke: #d0d7de } .one { stroke: #57606a; stroke-width: 1.5 }
        .template { fill: #0969da } .twig { fill: #8c959f } .smarty { fill: #afb8c1 } .blade { fill: #d0a35c } .reading { stroke: #cf222e; stroke-width: 3 }
        @media (prefers-color-scheme: dark) {
        text, .scale.strong { fill: #e6edf3 } .scale { fill: #8b949e } .grid { stroke: #30363d } .one { stroke: #8b949e }
        .template { fill: #4493f8 } .twig { fill: #7d8590 } .smarty { fill: #4d545c } .blade { fill: #9a7431 } .reading { stroke: #ff7b72 }
        }
        </style>
        <text x="100" y="22" class="title">Time relative to plain PHP: left is faster, right is slower (logarithmic)</text>
        $legend<line x1="488" x2="488" y1="42" y2="54" class="reading"/><text x="496" y="52">PHP's streams reading the files, nothing else</text>
        $svg</svg>

        SVG;
}

/** The bars of one page, a line an engine from $y on; $x: the place of a ratio. */
function bars(array $ratio, array $engines, Closure $x, int $y): string
{
    $svg = '';
    // Where plain PHP keeps compiled code, the template is read again: that part is marked.
    $mark = isset($ratio['yardstick']) && $x($ratio['yardstick']) > $x(1) + 2 ? $x($ratio['yardstick']) : 0;
    foreach ($engines as $i => $engine) {
        $from = min($x(1), $x($ratio[$engine]));
        $width = max(1, abs($x($ratio[$engine]) - $x(1)));
        $row = $y + 14 * $i;
        $faster = $ratio[$engine] < 1;
        $end = max($from + $width, $engine === 'template' ? $mark : 0);
        $svg .= "<rect x=\"$from\" y=\"$row\" width=\"$width\" height=\"12\" class=\"$engine\"/>\n"
            . '<text x="' . ($faster ? $from - 5 : $end + 5) . '" y="' . ($row + 10) . '" class="value' . ($faster ? ' left' : '')
            . ($engine === 'template' ? ' strong' : '') . '">' . figure($ratio[$engine]) . "</text>\n";
    }
    if ($mark) {
        $svg .= "<line x1=\"$mark\" x2=\"$mark\" y1=\"" . ($y - 3) . "\" y2=\"" . ($y + 13) . "\" class=\"reading\"/>\n";
    }
    return $svg;
}
