<?php

namespace TemplateTool\Page;

/** What HTML's elements and attributes hold. */
final class Element
{
    /** In a name: what a value stands for. */
    public const UNKNOWN = "\0";

    /** These hold text up to their own end tag: [name => whether entities count]. */
    private const RAW = [
        'script' => false, 'style' => false, 'xmp' => false, 'iframe' => false, 'noembed' => false, 'noframes' => false,
        'textarea' => true, 'title' => true, 'plaintext' => false,
    ];

    // HTML elements that end SVG or MathML wherever they stand.
    private const BREAKS_OUT = ' b big blockquote body br center code dd div dl dt em embed h1 h2 h3 h4 h5 h6 head hr i'
        . ' img li listing menu meta nobr ol p pre ruby s small span strong strike sub sup table tt u ul var ';

    private const SCRIPT_TYPES =
        '~^(?:|module|(?:text|application)/(?:x-)?(?:java|ecma|type)script\b.*|text/(?:babel|jsx))$~';

    private const ADDRESSES = [
        Address::SCRIPT => ['script src', 'script href', 'script xlink:href'],
        Address::RESOURCE => [
            'link href', 'iframe src', 'frame src', 'embed src', 'object data', 'base href', 'form action',
            'input formaction', 'button formaction', 'use href', 'use xlink:href',
        ],
        Address::LINK => [
            'a href', 'area href', 'a xlink:href', 'animate to', 'animate from', 'animate values',
            'animate by', 'set to',
        ],
    ];

    public static function isRaw(string $tag): bool
    {
        return isset(self::RAW[$tag]);
    }

    public static function decodesEntities(string $tag): bool
    {
        return self::RAW[$tag] ?? true;
    }

    /** What stands inside such an element; null for mere text. $type: the attribute of a script. */
    public static function content(string $tag, string $type): ?Scanner
    {
        return match (true) {
            $tag === 'style' => new Style('a style sheet'),
            $tag !== 'script' => null,
            preg_match(self::SCRIPT_TYPES, $type) === 1 => new Script('a script'),
            preg_match('~json|map|rules~', $type) === 1 => new Script('a script with JSON'),
            default => null,
        };
    }

    /** What the value of an attribute is to the browser; null for mere text. $type: what <meta> is for. */
    public static function attribute(string $tag, string $name): ?Scanner
    {
        if (str_contains($name, self::UNKNOWN)) {
            return null;
        }
        if (strlen($name) > 2 && str_starts_with($name, 'on')) {
            return new Script("the event attribute \"$name\"");
        }
        $isUnknown = str_contains($tag, self::UNKNOWN);
        $use = self::use($tag, $name);
        return match (true) {
            $name === 'style' => new Style('a "style" attribute'),
            $name === 'srcdoc' && ($tag === 'iframe' || $isUnknown) => new Html(true),
            $name === 'content' && $tag === 'meta' => new Address(Address::REFRESH),
            $use !== null => new Address($use),
            $isUnknown && ($name === 'href' || $name === 'src') => new Address(Address::SCRIPT),
            default => null,
        };
    }

    public static function breaksOut(string $tag): bool
    {
        return str_contains(self::BREAKS_OUT, " $tag ");
    }

    private static function use(string $tag, string $name): ?string
    {
        foreach (self::ADDRESSES as $use => $places) {
            if (in_array("$tag $name", $places, true)) {
                return $use;
            }
        }
        return null;
    }
}
