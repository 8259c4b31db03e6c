<?php

namespace TemplateTool\Server;

use TemplateTool\Files\Files;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Reference;
use TemplateTool\Syntax\Source;

/** What can be written where the cursor is. */
final class Completion
{
    // The protocol's kinds of items.
    private const FIELD = 5;
    private const VARIABLE = 6;
    private const KEYWORD = 14;
    private const SNIPPET = 15;
    private const FILE = 17;
    private const FOLDER = 19;
    private const AS_SNIPPET = 2;

    private const MOST = 500;
    private const BLANKS = " \t\n\r\v\f";

    // The tag that the text ends inside of: what stands behind its brace.
    private const OPEN_TAG = '~(?:\{\{|\{(?=[ \t\n\r]))(*SKIP)(*FAIL)|\{([^{}]*+)\z~';

    private Place $place;

    /** @var array{start: array, end: array} what an item replaces */
    private array $range;

    public function __construct(private Client $client, private Workspace $workspace)
    {
    }

    public function complete(array $parameters): array
    {
        $this->place = $this->workspace->place($parameters);
        $text = substr($this->place->document->source->text, 0, $this->place->offset);
        // A tag is never longer than what PCRE can look back over; only the last braces matter.
        $from = max(0, strlen($text) - 4096);
        if (!preg_match(self::OPEN_TAG, substr($text, $from), $match, PREG_OFFSET_CAPTURE)) {
            return ['isIncomplete' => false, 'items' => $this->outside($text)];
        }
        $inside = $match[1][0];
        $before = substr($text, 0, $from + $match[0][1]);
        return ['isIncomplete' => false, 'items' => array_slice($this->inside($before, $inside), 0, self::MOST)];
    }

    /** Whole tags, between tags. */
    private function outside(string $text): array
    {
        preg_match('/[a-z!\/]*\z/', $text, $word);
        $items = [];
        if ($this->canSnippets() && strlen($word[0]) > 1) {
            $this->replace(strlen($word[0]));
            foreach (Keywords::kinds() as $kind) {
                $items[] = $this->item($kind->value, self::SNIPPET, '{' . Keywords::snippet($kind), isSnippet: true);
            }
        }
        return $items;
    }

    /** $before: the text in front of the tag. $inside: what of the tag stands in front of the cursor. */
    private function inside(string $before, string $inside): array
    {
        $items = [];
        if (preg_match('~^[!/]?[a-z]*$~', $inside)) {
            $items = $this->keywords($before, $inside);
        }
        $kind = Kind::of($inside);
        if ($kind->isEnd() || str_starts_with($inside, '/')) {
            return $items;
        }
        $argument = ltrim(substr($inside, strlen($kind->value)), self::BLANKS);
        if ($kind === Kind::Include) {
            return [...$items, ...$this->files($argument)];
        }
        $isSection = $kind->isOptional();
        if ($kind->isLoop()) {
            $argument = substr((string) strrchr(",$argument", ','), 1);
        } elseif ($kind === Kind::Plain && preg_match("/(?:^|\\s)'/", $argument)) {
            return $items;
        } elseif ($kind === Kind::Plain) {
            $argument = substr($argument, strlen($argument) - strcspn(strrev($argument), self::BLANKS));
        } elseif ($isSection && str_contains($argument, ' ')) {
            return $this->compared($before, ...explode(' ', $argument, 2));
        }
        return [...$items, ...$this->references($before, $argument)];
    }

    private function keywords(string $before, string $inside): array
    {
        $this->replace(strlen($inside));
        $items = [];
        // The innermost block comes first, and the others behind it, in case that it is closed elsewhere.
        foreach (array_unique($this->due($before)) as $i => $end) {
            $items[] = $this->item($end, self::KEYWORD, $this->isClosed() ? $end : "$end}", "0$i");
        }
        foreach (Keywords::kinds() as $kind) {
            $isSnippet = $this->canSnippets() && !$this->isClosed();
            $new = $isSnippet ? Keywords::snippet($kind) : "$kind->value ";
            $text = Keywords::texts()[$kind->value];
            $items[] = $this->item($kind->value, self::KEYWORD, $new, "2$kind->value", $text, '', $isSnippet);
        }
        return $items;
    }

    /** The closing tags that the text waits for, innermost first. @return list<string> */
    private function due(string $before): array
    {
        $due = [];
        foreach (array_reverse($this->cut($before)->nodes) as $node) {
            if ($node->end === null && $node->tag->kind->end()) {
                $due[] = $node->tag->kind->end()->value;
            }
        }
        return $due;
    }

    /** Files of the include path that begin so, folder by folder. */
    private function files(string $argument): array
    {
        $slash = strrpos($argument, '/');
        $folder = $slash === false ? '' : substr($argument, 0, $slash + 1);
        $this->replace(strlen($argument) - strlen($folder));
        $items = [];
        $page = $this->place->folder->includes->pages($this->place->path)[0];
        $roots = preg_match('~^\.{0,2}/~', $folder) ? [''] : $this->place->folder->files($page)->folders($page);
        foreach (array_unique(Files::isStream($folder) ? [] : $roots) as $root) {
            foreach ($this->entries($root === '' ? $folder : "$root/$folder") as $entry => $isFolder) {
                if (!$isFolder && "$folder$entry" === basename($this->place->path)) {
                    continue;
                }
                $new = $isFolder ? "$entry/" : $entry . ($this->isClosed() ? '' : '}');
                $items[$entry] ??= $this->item($entry, $isFolder ? self::FOLDER : self::FILE, $new, "1$entry");
            }
        }
        return array_values($items);
    }

    /** @return array<string, bool> names in a folder that can be part of a template's, and whether it is a folder */
    private function entries(string $folder): array
    {
        $entries = [];
        foreach (@scandir($folder) ?: [] as $entry) {
            $isFolder = is_dir("$folder/$entry");
            $isWanted = $isFolder || $this->place->folder->isTemplate($entry);
            if ($isWanted && $entry[0] !== '.' && strpbrk($entry, '{}') === false) {
                $entries[$entry] = $isFolder;
            }
        }
        return $entries;
    }

    /** Values that a section's reference has in the sample data. */
    private function compared(string $before, string $reference, string $value): array
    {
        $this->replace(strlen($value));
        $items = [];
        foreach ($this->values($before, $reference) as $found) {
            if (is_string($found) && strlen($found) < 50 && strpbrk($found, "{}\n'") === false) {
                $new = str_contains($found, ' ') ? "'$found'" : $found;
                $items[$new] = $this->item($new, self::VARIABLE, $new);
            }
        }
        return array_values($items);
    }

    /** $written: the part of a reference in front of the cursor. */
    private function references(string $before, string $written): array
    {
        $colons = strrpos($written, '::');
        $owner = $colons === false ? '' : substr($written, 0, $colons);
        $this->replace(strlen($written) - ($colons === false ? 0 : $colons + 2));
        $items = [];
        $loops = [];
        foreach ($this->scopes($before) as $scope) {
            foreach ($scope->loops() as $loop) {
                $loops[$loop->node->tag->name][] = $loop;
            }
        }
        if ($owner === '' && $loops) {
            $items[] = $this->item('*', self::VARIABLE, '*', '10', 'The element of the innermost loop.');
            $items[] = $this->item('[*]', self::VARIABLE, '[*]', '11', 'The key of the element.');
        }
        foreach ($owner === '' ? array_keys($loops) : [] as $name) {
            if ((string) $name !== '') {
                $text = "The element of the loop `$name`.";
                $items[] = $this->item("$name::*", self::VARIABLE, "$name::*", '12', $text);
                $items[] = $this->item("$name::[*]", self::VARIABLE, "$name::[*]", '13');
            }
        }
        if (isset($loops[$owner]) && $owner !== '') {
            $items[] = $this->item('*', self::VARIABLE, '*', '10');
            $items[] = $this->item('[*]', self::VARIABLE, '[*]', '11');
        }
        return [...$items, ...$this->keys($before, $owner)];
    }

    /** The keys of the arrays that a reference finds in the sample data; of the whole data, when it is empty. */
    private function keys(string $before, string $owner): array
    {
        $items = [];
        foreach ($this->values($before, $owner) as $value) {
            foreach (is_array($value) ? $value : [] as $key => $inside) {
                // At the top of the data no integer is ever found, and what can't stand in a tag can't be offered.
                $isReachable = $owner !== '' || is_string($key);
                if ($isReachable && !preg_match('/[{}\s\']|::|^$/', (string) $key) && count($items) < self::MOST) {
                    $detail = Sample::text($inside);
                    $items[$key] ??= $this->item("$key", self::FIELD, "$key", "1$key", '', $detail);
                }
            }
        }
        return array_values($items);
    }

    /** @return list<mixed> */
    private function values(string $before, string $reference): array
    {
        $values = [];
        foreach ($this->scopes($before) as $scope) {
            $path = $reference === '' ? [] : $scope->path(new Reference($reference, 0));
            if ($path !== null) {
                array_push($values, ...Sample::values($this->place->folder->data($scope->page()), $path));
            }
        }
        return $values;
    }

    /** Where the tag stands that is being written. @return list<Scope> */
    private function scopes(string $before): array
    {
        $document = $this->cut($before);
        $loop = -1;
        foreach ($document->nodes as $i => $node) {
            $loop = $node->end === null && $node->tag->kind->isLoop() ? $i : $loop;
        }
        return (new Usages($this->workspace, $this->place->folder))->scopesIn($document, $loop);
    }

    /** What the text would be if it ended here: blocks without an end are those around the cursor. */
    private function cut(string $before): Document
    {
        $source = $this->place->document->source;
        return $this->workspace->documents->of(new Source("$source->name\0", $before, $source->path));
    }

    /** Whether the tag has its closing brace already. */
    private function isClosed(): bool
    {
        return preg_match('/\G[^{}\n]*\}/', $this->place->document->source->text, offset: $this->place->offset) === 1;
    }

    private function canSnippets(): bool
    {
        return $this->client->can('textDocument.completion.completionItem.snippetSupport');
    }

    /** Items replace the last bytes in front of the cursor. */
    private function replace(int $bytes): void
    {
        $lines = $this->workspace->lines($this->place->document->source);
        $this->range = $lines->range($this->place->offset - $bytes, $bytes);
    }

    private function item(
        string $label,
        int $kind,
        string $new,
        string $order = '',
        string $text = '',
        string $detail = '',
        bool $isSnippet = false,
    ): array {
        return array_filter([
            'label' => $label,
            'kind' => $kind,
            'detail' => $detail,
            'documentation' => $text === '' ? '' : ['kind' => 'markdown', 'value' => $text],
            'sortText' => $order,
            'filterText' => $label,
            'insertTextFormat' => $isSnippet ? self::AS_SNIPPET : 0,
            'textEdit' => ['range' => $this->range, 'newText' => $new],
        ]);
    }
}
