<?php

namespace TemplateTool\Project;

use TemplateTool\Check\Finding;
use TemplateTool\Json\Broken;
use TemplateTool\Json\JsonText;
use TemplateTool\Json\Schema;

/**
 * Findings that are known and left out. One is known by its file, its name, its message and the text that it is about,
 * so that lines may move; of those alike as many are known as there were.
 */
final class Baseline
{
    private const ENTRY = [
        'type' => 'object',
        'required' => ['file', 'name', 'message', 'text', 'count'],
        'properties' => [
            'file' => ['type' => 'string'],
            'name' => ['type' => ['string', 'null']],
            'message' => ['type' => 'string'],
            'text' => ['type' => 'string'],
            'count' => ['type' => 'integer'],
        ],
    ];

    private string $folder;

    /** @var array<string, array> the entries by what identifies them */
    private array $entries = [];

    /** @var array<string, int> by the same: how many of them haven't been found */
    private array $left = [];

    /** $file: where it is kept; paths in it count from its folder. */
    public function __construct(private string $file)
    {
        $this->folder = (realpath(dirname($file)) ?: dirname($file)) . '/';
    }

    /** @throws Broken when it can't be read; that there is none yet is no failure */
    public function load(): void
    {
        if (!file_exists($this->file)) {
            return;
        }
        $text = @file_get_contents($this->file);
        if ($text === false) {
            throw new Broken("$this->file: reading failed");
        }
        $value = JsonText::decode($text, $this->file);
        $problem = (new Schema([
            'type' => 'object',
            'required' => ['findings'],
            'properties' => ['findings' => ['type' => 'array', 'items' => self::ENTRY]],
        ]))->problem($value);
        if ($problem !== null) {
            throw new Broken("$this->file: no baseline of \"template check --write-baseline\": $problem[1]");
        }
        foreach ($value['findings'] as $entry) {
            $this->entries[self::key($entry)] = $entry;
        }
    }

    /**
     * @param list<Finding> $findings
     * @return list<Finding> those that aren't known
     */
    public function unknown(array $findings): array
    {
        $this->left = array_map(static fn(array $entry): int => $entry['count'], $this->entries);
        return array_values(array_filter($findings, function (Finding $finding): bool {
            $key = self::key($this->entry($finding));
            if (($this->left[$key] ?? 0) === 0) {
                return true;
            }
            $this->left[$key]--;
            return false;
        }));
    }

    /**
     * How many findings are known that weren't among those given to unknown().
     *
     * @param list<string> $checked the paths of the files that were looked at
     */
    public function gone(array $checked): int
    {
        $isChecked = array_fill_keys(array_map($this->path(...), $checked), true);
        $isLeft = fn(string $key): bool => isset($isChecked[$this->entries[$key]['file']]);
        return array_sum(array_filter($this->left, $isLeft, ARRAY_FILTER_USE_KEY));
    }

    /**
     * Makes these the known ones, beside those of files that weren't looked at. That a file can't be read is never known.
     *
     * @param list<Finding> $findings
     * @param list<string> $checked the paths of the files that were looked at
     * @return int how many are known now
     * @throws Broken
     */
    public function write(array $findings, array $checked): int
    {
        $isChecked = array_fill_keys(array_map($this->path(...), $checked), true);
        $this->entries = array_filter($this->entries, fn(array $entry): bool => !isset($isChecked[$entry['file']])
            && file_exists($entry['file'][0] === '/' ? $entry['file'] : $this->folder . $entry['file']));
        $count = 0;
        foreach ($findings as $finding) {
            if (!$finding->isUnreadable()) {
                $entry = $this->entry($finding);
                $key = self::key($entry);
                $entry['count'] += $this->entries[$key]['count'] ?? 0;
                $this->entries[$key] = $entry;
                $count++;
            }
        }
        ksort($this->entries, SORT_STRING);
        $flags = JSON_PRETTY_PRINT | JSON_UNESCAPED_SLASHES | JSON_UNESCAPED_UNICODE | JSON_THROW_ON_ERROR;
        $text = json_encode(['findings' => array_values($this->entries)], $flags) . "\n";
        if (@file_put_contents($this->file, $text) !== strlen($text)) {
            throw new Broken("$this->file: writing failed");
        }
        return $count;
    }

    private function entry(Finding $finding): array
    {
        $source = $finding->source;
        return [
            'file' => $this->path($source->path === '' ? $source->name : $source->path),
            'name' => $finding->name,
            'message' => mb_scrub($finding->message, 'UTF-8'),
            'text' => mb_scrub(substr($source->text, $finding->offset, $finding->length), 'UTF-8'),
            'count' => 1,
        ];
    }

    private function path(string $path): string
    {
        return mb_scrub(str_starts_with($path, $this->folder) ? substr($path, strlen($this->folder)) : $path, 'UTF-8');
    }

    private static function key(array $entry): string
    {
        return implode("\0", [$entry['file'], $entry['name'], $entry['message'], $entry['text']]);
    }
}
