<?php

namespace TemplateTool\Page;

/** HTML, cut into tags, attributes and texts in the way that browsers do. */
final class Html implements Scanner
{
    private const BLANKS = "\t\n\f\r ";
    private const LONGEST_NAME = 40;

    private State $state = State::Text;

    /** The end of what was read, when it isn't clear yet what it is. */
    private string $pending = '';

    private string $tag = '';
    private bool $isEndTag = false;
    private bool $isSelfClosing = false;
    private string $attribute = '';

    /** @var array<string, string> attributes of the open tag that decide about others: type, rel, http-equiv */
    private array $deciding = [];

    /** The element that only its own end tag ends. */
    private string $raw = '';

    /** In a script: 1 inside "<!--", 2 inside a "<script" in there. */
    private int $escape = 0;

    /** @var list<array{string, string}> what changes between HTML, SVG and MathML: the element, what is inside of it */
    private array $foreign = [];

    /** What is read inside of an attribute, a script or a style sheet. */
    private ?Scanner $inner = null;

    /** $isNested: this is what an attribute holds, so the browser takes entities back before it reads it. */
    public function __construct(private bool $isNested = false)
    {
    }

    /** For a file: style sheets and scripts are told by their names. */
    public static function ofFile(string $name): self
    {
        $html = new self();
        if (preg_match('~\.(css|m?js)(?:\.\w+)?$~i', $name, $match)) {
            $html->tag = strtolower($match[1]) === 'css' ? 'style' : 'script';
            $html->leaveTag();
        }
        return $html;
    }

    public function __clone()
    {
        $this->inner = $this->inner ? clone $this->inner : null;
    }

    public function read(string $text): void
    {
        $text = $this->pending . $text;
        $this->pending = '';
        for ($offset = 0, $length = strlen($text); $offset < $length;) {
            $offset = match ($this->state) {
                State::Text => $this->text($text, $offset),
                State::Raw => $this->rawText($text, $offset),
                State::TagName => $this->tagName($text, $offset),
                State::BeforeName => $this->beforeName($text, $offset),
                State::Name => $this->name($text, $offset),
                State::AfterName => $this->afterName($text, $offset),
                State::BeforeValue => $this->beforeValue($text, $offset),
                State::DoubleQuoted => $this->attributeValue($text, $offset, '"'),
                State::SingleQuoted => $this->attributeValue($text, $offset, "'"),
                State::Unquoted => $this->attributeValue($text, $offset, self::BLANKS . '>'),
                State::Comment => $this->until($text, $offset, '~--!?>~', '~-{0,2}!?\z~'),
                State::Bogus => $this->until($text, $offset, '~>~', '~\z~'),
                State::Cdata => $this->until($text, $offset, '~\]\]>~', '~\]{0,2}\z~'),
            };
        }
    }

    public function value(): void
    {
        $pending = $this->pending;
        $this->pending = '';
        if ($this->state === State::Text && $pending !== '') {
            $this->state = $this->pendingState($pending);
            [$this->tag, $this->isEndTag] = ['', $pending === '</'];
            $this->deciding = [];
        }
        if ($this->state === State::Raw && $pending !== '') {
            $this->inner?->read($pending);
        }
        switch ($this->state) {
            case State::TagName:
                $this->tag .= Element::UNKNOWN;
                break;
            case State::BeforeName:
            case State::AfterName:
                $this->beginName();
                // The value is the beginning of a name.
            case State::Name:
                $this->attribute .= Element::UNKNOWN;
                break;
            case State::BeforeValue:
                $this->beginValue(State::Unquoted);
                // The value is the beginning of one without quotes.
            default:
                $this->inner?->value();
        }
    }

    public function risk(Escaping $given, string $following = ''): ?Risk
    {
        $state = $this->state;
        if ($state === State::BeforeValue) {
            $begun = clone $this;
            $begun->beginValue(State::Unquoted);
            return $begun->risk($given, $following);
        }
        if ($state === State::Text && $this->pending !== '') {
            $state = $this->pendingState($this->pending);
        }
        return match ($state) {
            State::TagName, State::BeforeName, State::Name, State::AfterName => new Risk(
                'value-as-name',
                $state === State::TagName ? 'the name of a tag' : 'the name of an attribute',
                'a name can turn it into a script',
                'write the names that are allowed into sections'
            ),
            State::DoubleQuoted, State::SingleQuoted, State::Unquoted => $this->attributeRisk($given, $following),
            default => $this->contentRisk($given, $state, $following),
        };
    }

    public function key(): string
    {
        $fields = [
            $this->state->value, $this->pending, $this->tag, $this->attribute, $this->raw, $this->escape,
            (int) $this->isEndTag, (int) $this->isSelfClosing, $this->foreign ? json_encode($this->foreign) : '',
            ...$this->deciding,
        ];
        return implode("\1", $fields) . "\2" . $this->inner?->key();
    }

    /** @return array{State, string, string} where this is, with the names of the element and the attribute it is in */
    public function place(): array
    {
        return match ($this->state) {
            State::Text => [$this->pending === '' ? State::Text : $this->pendingState($this->pending), '', ''],
            State::Raw => [State::Raw, $this->raw, ''],
            default => [$this->state, $this->tag, $this->attribute],
        };
    }

    private function pendingState(string $pending): State
    {
        return match (true) {
            str_starts_with($pending, '<!--') => State::Comment,
            str_starts_with($pending, '<!') => State::Bogus,
            default => State::TagName,
        };
    }

    private function contentRisk(Escaping $given, State $state, string $following): ?Risk
    {
        $place = match (true) {
            $state !== State::Text && $state !== State::Raw => "HTML ($state->value)",
            $this->isNested => 'an HTML document within an attribute',
            default => 'HTML (text)',
        };
        if ($this->inner) {
            return $this->inner->risk($given);
        }
        if ($this->isNested && $given !== Escaping::Url) {
            $why = 'the browser takes the entities back before it reads the document';
            return Risk::of($given, $place, $why, 'give the document an address of its own, or vouch for it');
        }
        if ($given === Escaping::Html || $given === Escaping::Url) {
            $closes = $state === State::Comment && preg_match('~^(?:-?!?>)~', $following);
            return $closes ? Risk::of($given, $place, 'with "--" at its end the value ends the comment', '') : null;
        }
        $advice = '"htmlspecialchars" would escape it';
        return Risk::of($given, $place, 'it does nothing about "<" and "&"', $advice, Escaping::Html);
    }

    private function attributeRisk(Escaping $given, string $following): ?Risk
    {
        $inner = $this->isLive($following) ? $this->inner?->risk($given) : null;
        $place = "HTML ({$this->state->value})";
        if ($given === Escaping::None || $given === Escaping::Addslashes) {
            $advice = $inner->advice ?? '"htmlspecialchars" would escape it';
            $remedy = $inner ? $inner->remedy : Escaping::Html;
            if ($inner?->name === 'script-address' && !$remedy) {
                $advice = "escape it with \"htmlspecialchars\", $advice";
            }
            $place = $inner->place ?? $place;
            return Risk::of($given, $place, 'a double quote still ends the attribute', $advice, $remedy);
        }
        if ($inner || $given === Escaping::Url) {
            return $inner;
        }
        $advice = 'put the attribute in double quotes';
        return match ($this->state) {
            State::SingleQuoted =>
                new Risk('single-quoted-attribute', $place, 'it leaves single quotes alone', $advice),
            State::Unquoted => new Risk('unquoted-attribute', $place, 'a value with a blank ends it', $advice),
            default => null,
        };
    }

    /** Whether the browser does with this attribute what it holds: some need another attribute of the same tag. */
    private function isLive(string $following): bool
    {
        [$other, $pattern] = match ("$this->tag $this->attribute") {
            'meta content' => ['http-equiv', 'refresh'],
            'link href' => ['rel', '[^"\'>]*\b(?:stylesheet|modulepreload|preload|import)\b'],
            default => [null, ''],
        };
        return $other === null || (isset($this->deciding[$other])
            ? preg_match("~^\\s*$pattern|\0~i", $this->deciding[$other])
            : preg_match("~^[^<>]*?\\b$other\\s*=\\s*[\"']?\\s*$pattern~i", $following)) === 1;
    }

    private function text(string $text, int $offset): int
    {
        $next = strpos($text, '<', $offset);
        $this->content(substr($text, $offset, $next === false ? null : $next - $offset));
        if ($next === false) {
            return strlen($text);
        }
        if (preg_match('~\G(?:</?|<!-?|<!\[(?:C(?:D(?:A(?:TA?)?)?)?)?)\z~', $text, $match, 0, $next)) {
            $this->pending = $match[0];
            return strlen($text);
        }
        preg_match('~\G<(?:(?=[a-z])|/(?=[a-z])|/>|!--|!\[CDATA\[|[!?/])?~i', $text, $match, 0, $next);
        $opening = $match[0];
        if ($opening === '<' && !ctype_alpha($text[$next + 1])) {
            $this->content('<');
            return $next + 1;
        }
        $isTag = $opening === '<' || ($opening === '</' && ctype_alpha($text[$next + 2]));
        if ($isTag) {
            [$this->tag, $this->isEndTag, $this->isSelfClosing, $this->deciding] = ['', $opening === '</', false, []];
        }
        $this->state = match (true) {
            $isTag => State::TagName,
            $opening === '</>' => State::Text,
            $opening === '<!--' => State::Comment,
            $opening === '<![CDATA[' && $this->foreign => State::Cdata,
            default => State::Bogus,
        };
        // The comment may be over before it begins: "<!-->".
        return $next + ($this->state === State::Comment ? $this->beginComment($text, $next) : strlen($opening));
    }

    /** Returns how much of the text has been read. */
    private function beginComment(string $text, int $offset): int
    {
        if (preg_match('~\G<!---?>~', $text, $match, 0, $offset)) {
            $this->state = State::Text;
            return strlen($match[0]);
        }
        if (preg_match('~\G<!---?\z~', $text, $match, 0, $offset)) {
            $this->state = State::Text;
            $this->pending = $match[0];
            return strlen($match[0]);
        }
        return 4;
    }

    private function until(string $text, int $offset, string $end, string $unclear): int
    {
        if (preg_match($end, $text, $match, PREG_OFFSET_CAPTURE, $offset)) {
            $this->state = State::Text;
            return $match[0][1] + strlen($match[0][0]);
        }
        preg_match($unclear, substr($text, $offset), $match);
        $this->pending = $match[0] ?? '';
        return strlen($text);
    }

    private function tagName(string $text, int $offset): int
    {
        $length = strcspn($text, self::BLANKS . '/>', $offset);
        $this->tag = substr($this->tag . strtolower(substr($text, $offset, $length)), 0, self::LONGEST_NAME);
        if ($offset + $length < strlen($text)) {
            $this->state = State::BeforeName;
        }
        return $offset + $length;
    }

    private function beforeName(string $text, int $offset): int
    {
        $byte = $text[$offset];
        if ($byte === '>') {
            $this->leaveTag();
        } elseif (!str_contains(self::BLANKS . '/', $byte)) {
            $this->beginName();
            $this->attribute = $byte === '=' ? '=' : '';
            return $offset + strlen($this->attribute);
        }
        $this->isSelfClosing = $byte === '/';
        return $offset + 1;
    }

    private function beginName(): void
    {
        $this->attribute = '';
        $this->isSelfClosing = false;
        $this->state = State::Name;
    }

    private function name(string $text, int $offset): int
    {
        $length = strcspn($text, self::BLANKS . '/>=', $offset);
        $name = $this->attribute . strtolower(substr($text, $offset, $length));
        $this->attribute = substr($name, 0, self::LONGEST_NAME);
        $next = $text[$offset + $length] ?? '';
        if ($next !== '') {
            $this->state = match (true) {
                $next === '=' => State::BeforeValue,
                $next === '/' || $next === '>' => State::BeforeName,
                default => State::AfterName,
            };
        }
        return $offset + $length + (int) ($next === '=');
    }

    private function afterName(string $text, int $offset): int
    {
        $offset += strspn($text, self::BLANKS, $offset);
        $byte = $text[$offset] ?? '';
        if ($byte !== '') {
            $this->state = $byte === '=' ? State::BeforeValue : State::BeforeName;
        }
        return $offset + (int) ($byte === '=');
    }

    private function beforeValue(string $text, int $offset): int
    {
        $offset += strspn($text, self::BLANKS, $offset);
        $byte = $text[$offset] ?? '';
        if ($byte === '>') {
            $this->leaveTag();
        } elseif ($byte !== '') {
            $states = ['"' => State::DoubleQuoted, "'" => State::SingleQuoted];
            $this->beginValue($states[$byte] ?? State::Unquoted);
            return $offset + (int) isset($states[$byte]);
        }
        return $offset + (int) ($byte === '>');
    }

    private function beginValue(State $quoting): void
    {
        $this->state = $quoting;
        $this->inner = $this->isEndTag ? null : Element::attribute($this->tag, $this->attribute);
        if (in_array($this->attribute, ['type', 'rel', 'http-equiv'], true)) {
            $this->deciding[$this->attribute] = '';
        }
    }

    private function attributeValue(string $text, int $offset, string $ends): int
    {
        $length = strcspn($text, $ends, $offset);
        $value = html_entity_decode(substr($text, $offset, $length), ENT_QUOTES | ENT_HTML5);
        $this->inner?->read($value);
        if (isset($this->deciding[$this->attribute])) {
            $this->deciding[$this->attribute] = substr($this->deciding[$this->attribute] . strtolower($value), 0, 80);
        }
        $offset += $length;
        if ($offset < strlen($text)) {
            $this->inner = null;
            $this->isSelfClosing = false;
            $offset += (int) ($this->state !== State::Unquoted);
            $this->state = State::BeforeName;
        }
        return $offset;
    }

    private function leaveTag(): void
    {
        $this->state = State::Text;
        $this->inner = null;
        [$this->raw, $this->escape] = ['', 0];
        $this->isEndTag ? $this->leave() : $this->enter();
        // What follows doesn't depend on the tag any more.
        [$this->tag, $this->attribute, $this->deciding] = ['', '', []];
        [$this->isEndTag, $this->isSelfClosing] = [false, false];
    }

    private function leave(): void
    {
        if ($this->isForeign() && ($this->tag === 'p' || $this->tag === 'br')) {
            $this->foreign = [];
        }
        $opened = array_keys(array_column($this->foreign, 0), $this->tag, true);
        if ($opened) {
            $this->foreign = array_slice($this->foreign, 0, end($opened));
        }
    }

    private function enter(): void
    {
        $tag = $this->tag;
        if ($this->isForeign() && Element::breaksOut($tag)) {
            $this->foreign = [];
        }
        $type = trim($this->deciding['type'] ?? '');
        $language = end($this->foreign)[1] ?? 'html';
        if ($language === 'html' && !in_array($tag, ['svg', 'math'], true)) {
            if (Element::isRaw($tag)) {
                $this->state = State::Raw;
                $this->raw = $tag;
                $this->inner = Element::content($tag, $type);
            }
        } elseif (!$this->isSelfClosing) {
            if (in_array($tag, ['svg', 'math', 'script', 'style'], true)) {
                $this->foreign[] = [$tag, $language === 'html' ? $tag : $language];
            } elseif ($language === 'svg' && in_array($tag, ['foreignobject', 'desc', 'title'], true)) {
                $this->foreign[] = [$tag, 'html'];
            }
            $this->inner = Element::content($tag, $type);
        }
    }

    private function isForeign(): bool
    {
        return (end($this->foreign)[1] ?? 'html') !== 'html';
    }

    private function content(string $text): void
    {
        if ($text !== '' && $this->inner) {
            $this->inner->read(html_entity_decode($text, ENT_QUOTES | ENT_HTML5));
        }
    }

    private function rawText(string $text, int $offset): int
    {
        $more = $this->raw === 'script' ? '<!--|-->|<script(?=[\t\n\f\r />])|' : '';
        $found = preg_match("~$more</$this->raw(?=[\\t\\n\\f\\r />])~i", $text, $match, PREG_OFFSET_CAPTURE, $offset);
        if (!$found) {
            // The end may hold the beginning of a tag.
            $tail = substr($text, max($offset, strlen($text) - strlen($this->raw) - 2));
            $unclear = strrchr($tail, '<');
            $dashes = $this->escape ? strspn(strrev($tail), '-') : 0;
            $length = $unclear !== false ? strlen($unclear) : min($dashes, 2);
            $this->pending = $length ? substr($text, -$length) : '';
            $this->inner?->read(substr($text, $offset, strlen($text) - $length - $offset));
            return strlen($text);
        }
        [$mark, $start] = $match[0];
        $mark = strtolower($mark);
        $isEnd = $mark === "</$this->raw" && $this->escape < 2;
        // "<!-->" is both marks.
        $length = $mark === '<!--' ? 2 : strlen($mark);
        $this->inner?->read(substr($text, $offset, $start - $offset + ($isEnd ? 0 : $length)));
        if ($isEnd) {
            [$this->state, $this->tag, $this->isEndTag, $this->inner] = [State::BeforeName, $this->raw, true, null];
            $this->isSelfClosing = false;
            return $start + $length;
        }
        $this->escape = match ($mark) {
            '<!--' => max($this->escape, 1),
            '-->' => 0,
            '<script' => $this->escape === 1 ? 2 : $this->escape,
            default => 1,
        };
        return $start + $length;
    }
}
