<?php

namespace Template;

use Psr\Log\LoggerInterface;
use TemplateTool\Check\Checker;
use TemplateTool\Check\Finding;
use TemplateTool\Check\Options;
use TemplateTool\Files\Files;

/**
 * For developers: what the checker finds in the files that an Engine renders, each finding once for each change of its file.
 *
 *     $engine = new Engine($folder, $isProduction ? null : new Development($logger));
 *
 * A page is checked when it, a file that takes part, or the place of a missing one has changed since the last time. What has
 * been told is kept in a file from one request to the next.
 */
final class Development
{
    private const NONE = '-';

    /** @var ?array{pages: array<string, array<string, string>>, told: array<string, array<string, list<string>>>} */
    private ?array $known = null;

    private ?string $memory;

    /**
     * $logger: hears of the findings; null for a notice (E_USER_NOTICE) for each.
     * $security: whether values are looked for that could break out of their place in the page.
     * $off: names of warnings that aren't wanted; "template explain" lists them.
     * $memory: the file that keeps what has been told; null for one in the folder for temporary files.
     *
     * @param list<string> $off
     */
    public function __construct(
        private ?LoggerInterface $logger = null,
        private bool $security = false,
        private array $off = [],
        ?string $memory = null,
    ) {
        $this->memory = $memory ?? self::ownFile();
    }

    /**
     * Tells what is new about a template and what it includes.
     *
     * @param list<string> $folders the include path
     */
    public function look(string $name, array $folders): void
    {
        // What is told is remembered before, since an error handler may throw.
        array_map($this->tell(...), Quiet::run(fn(): array => $this->news($name, $folders)) ?? []);
    }

    /**
     * @param list<string> $folders
     * @return list<Finding>
     */
    private function news(string $name, array $folders): array
    {
        $path = (new Files($folders))->find($name, '');
        if ($path === null || !is_file($path)) {
            return [];
        }
        $this->known ??= $this->remembered();
        $page = md5(serialize([$path, $folders, $this->security, $this->off]));
        $files = $this->known['pages'][$page] ?? [];
        if ($files && $files === self::stamps(array_keys($files))) {
            return [];
        }
        $checker = new Checker(new Options($folders, $this->off, $this->security, memory: Quiet::memory()));
        $findings = array_filter($checker->checkFiles([$path]), $this->isNew(...));
        $this->known['pages'][$page] = self::stamps([$path, ...array_keys($checker->sources()), ...$checker->looked()]);
        $this->remember();
        return $findings;
    }

    private function isNew(Finding $finding): bool
    {
        $file = $finding->source->path;
        $stamp = self::stamps([$file])[$file];
        $text = $this->text($finding);
        if (in_array($text, $this->known['told'][$file][$stamp] ?? [], true)) {
            return false;
        }
        // What was told of an earlier state of the file is of no use any more.
        $this->known['told'][$file] = [$stamp => [...$this->known['told'][$file][$stamp] ?? [], $text]];
        return true;
    }

    private function tell(Finding $finding): void
    {
        if ($this->logger === null) {
            trigger_error($this->text($finding), E_USER_NOTICE);
            return;
        }
        $this->logger->notice($this->text($finding), [
            'file' => $finding->source->path,
            'line' => $finding->line,
            'column' => $finding->column,
            'finding' => $finding->name,
            'includedFrom' => $finding->includedFrom,
        ]);
    }

    private function text(Finding $finding): string
    {
        return "{$finding->source->name}:$finding->line:$finding->column: $finding->severity: $finding->message"
            . ($finding->name === null ? '' : " [$finding->name]");
    }

    /**
     * What tells one state of a file from another, by path.
     *
     * @param list<string> $paths
     * @return array<string, string>
     */
    private static function stamps(array $paths): array
    {
        $stamps = [];
        foreach ($paths as $path) {
            clearstatcache(true, $path);
            $stat = @stat($path);
            $stamps[$path] = $stat ? "$stat[mtime]-$stat[ctime]-$stat[size]-$stat[ino]" : self::NONE;
        }
        return $stamps;
    }

    private function remembered(): array
    {
        $text = $this->memory !== null && is_file($this->memory) ? @file_get_contents($this->memory) : false;
        $known = $text === false ? null : json_decode($text, true);
        return is_array($known['pages'] ?? null) && is_array($known['told'] ?? null) ? $known : ['pages' => [], 'told' => []];
    }

    private function remember(): void
    {
        if ($this->memory !== null) {
            // Nothing about files that have gone.
            $isThere = static fn(array $files): bool => is_file((string) array_key_first($files));
            $this->known['pages'] = array_filter($this->known['pages'], $isThere);
            $this->known['told'] = array_filter($this->known['told'], 'is_file', ARRAY_FILTER_USE_KEY);
            $new = $this->memory . '.' . getmypid();
            if (@file_put_contents($new, json_encode($this->known, JSON_INVALID_UTF8_SUBSTITUTE)) !== false) {
                @rename($new, $this->memory);
            }
        }
    }

    /** In a folder that is this user's alone; null when there can't be one. */
    private static function ownFile(): ?string
    {
        $user = function_exists('posix_geteuid') ? posix_geteuid() : getmyuid();
        $folder = sys_get_temp_dir() . "/template-development-$user";
        @mkdir($folder, 0700);
        $isOwn = !is_link($folder) && is_dir($folder) && fileowner($folder) === $user && (fileperms($folder) & 0077) === 0;
        return $isOwn ? "$folder/told.json" : null;
    }
}
