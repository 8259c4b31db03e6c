<?php

namespace Playground;

/**
 * Renders and checks templates of strangers.
 *
 * Each request has a folder of its own, and two processes that can open nothing else: one for the page, and one for
 * the checker, which so has something to say also when the page takes too long.
 */
final class Sandbox
{
    public const SECONDS = 2;
    public const MEGABYTES = 64;
    public const LARGEST_PAGE = 1 << 20;

    /** What one process may print: a page of which every byte is escaped in JSON still fits in. */
    private const LARGEST_OUTPUT = 8 << 20;

    private const KILLED = 137;

    public function __construct(private string $requests, private string $module)
    {
    }

    /**
     * @param array<string, string> $files by name; page.tpl is the page
     * @return array<string, mixed>
     */
    public function run(array $files, string $json): array
    {
        $folder = $this->requests . '/' . bin2hex(random_bytes(12));
        // A fatal error skips "finally".
        register_shutdown_function(self::remove(...), $folder);
        try {
            self::fill($folder, $files, $json);
            $deadline = microtime(true) + 3 * self::SECONDS;
            $processes = [$this->start('render', $folder), $this->start('check', $folder)];
            [$page, $check] = array_map(static fn(array $each): array => self::finish($each, $deadline), $processes);
        } finally {
            self::remove($folder);
        }
        return self::withPage($page) + self::withCheck($check);
    }

    /** @param array<string, string> $files */
    private static function fill(string $folder, array $files, string $json): void
    {
        mkdir("$folder/files", 0700, true);
        file_put_contents("$folder/data.json", $json);
        foreach ($files as $name => $text) {
            $path = "$folder/files/$name";
            if (!is_dir(dirname($path)) && !@mkdir(dirname($path), 0700, true) || @file_put_contents($path, $text) === false) {
                throw new Refusal(422, "A file can't be named $name: another file or folder has a part of this name.");
            }
        }
    }

    /** @return array{resource, resource} the process, and the pipe that it prints to */
    private function start(string $job, string $folder): array
    {
        $settings = [
            'extension' => $this->module,
            'open_basedir' => implode(PATH_SEPARATOR, [__DIR__, dirname(__DIR__, 2) . '/tool', $folder]),
            'include_path' => '.',
            'allow_url_fopen' => '0',
            'disable_functions' => 'exec,passthru,popen,proc_open,shell_exec,system,mail,dl,putenv,symlink,link',
            'memory_limit' => self::MEGABYTES . 'M',
            'max_execution_time' => (string) self::SECONDS,
            'display_errors' => '0',
            'log_errors' => '0',
            'zend.assertions' => '-1',
        ];
        $options = ['-n'];
        foreach ($settings as $name => $value) {
            array_push($options, '-d', "$name=$value");
        }
        // No files are written, and should PHP's own limits fail, the kernel's hold.
        $limits = sprintf('ulimit -c 0; ulimit -f 0; ulimit -t %d; ulimit -v %d', 2 * self::SECONDS, 8 * self::MEGABYTES * 1024);
        $process = proc_open(
            ['sh', '-c', "$limits; exec \"\$@\"", 'sh', PHP_BINARY, ...$options, __DIR__ . '/worker.php', $job, $folder],
            [['null'], ['pipe', 'w'], ['null']],
            $pipes,
            $folder,
            ['PATH' => '/usr/bin:/bin']
        );
        if (!$process) {
            throw new Refusal(500, 'The server has no process left; try again.');
        }
        return [$process, $pipes[1]];
    }

    /** @return array<string, mixed> what the process has printed, or why it was stopped */
    private static function finish(array $started, float $deadline): array
    {
        [$process, $pipe] = $started;
        stream_set_blocking($pipe, false);
        $output = '';
        $stopped = null;
        while (!feof($pipe) && !$stopped) {
            $read = [$pipe];
            $none = [];
            $left = $deadline - microtime(true);
            if ($left <= 0 || !stream_select($read, $none, $none, 0, (int) min(999999, $left * 1e6))) {
                $stopped = $left <= 0 ? 'time' : null;
                continue;
            }
            $output .= fread($pipe, 65536);
            $stopped = strlen($output) > self::LARGEST_OUTPUT ? 'size' : null;
        }
        if ($stopped) {
            proc_terminate($process, SIGKILL);
        }
        fclose($pipe);
        $status = proc_close($process);
        return match (true) {
            $stopped !== null => ['stopped' => $stopped],
            // PHP ends a process so that leaps over memory_limit, as it seems when the kernel ends it.
            $status === self::KILLED => ['stopped' => 'memory'],
            default => json_decode($output, true, 1200) ?? ['stopped' => 'crash'],
        };
    }

    /** @return array<string, mixed> */
    private static function withPage(array $result): array
    {
        if (isset($result['page']) && strlen($result['page']) > self::LARGEST_PAGE) {
            $result = ['stopped' => 'size'];
        }
        $size = isset($result['page']) ? strlen($result['page']) : null;
        $stopped = isset($result['stopped']) ? self::sentence('The page', $result['stopped']) : null;
        return ['size' => $size, 'stopped' => $stopped]
            + $result + ['page' => null, 'nanoseconds' => null, 'messages' => []];
    }

    /** @return array<string, mixed> */
    private static function withCheck(array $result): array
    {
        $stopped = isset($result['stopped']) ? self::sentence('The check', $result['stopped']) : null;
        unset($result['stopped']);
        return $result + ['findings' => [], 'more' => 0, 'unreadable' => [], 'tree' => null, 'unchecked' => $stopped];
    }

    private static function sentence(string $what, string $reason): string
    {
        return $what . match ($reason) {
            'time' => ' took more than ' . self::SECONDS . ' seconds, so it was stopped.',
            'memory' => ' needed more than ' . self::MEGABYTES . ' MB of memory, so it was stopped.',
            'size' => ' is larger than ' . (self::LARGEST_PAGE >> 20) . ' MB, so it isn\'t shown.',
            default => ' could not be finished: the process ended early.',
        };
    }

    private static function remove(string $path): void
    {
        if (is_dir($path) && !is_link($path)) {
            foreach (array_diff(scandir($path), ['.', '..']) as $name) {
                self::remove("$path/$name");
            }
            rmdir($path);
        } elseif (is_link($path) || file_exists($path)) {
            unlink($path);
        }
    }
}
