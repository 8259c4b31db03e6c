<?php

// Serves one request of the page, which lies in /request.json: {"job": "version"}, or "render" or "check" with
// "files" (texts by name), "data" (the text of a JSON object) and, for a check, "security". Prints one JSON object:
// {"error": "…"} when it isn't served, {"stopped": "memory"|"size"} or {"fatal": "…"} when it had to be broken off.
// A page that has a script.php is what that prints; what it leaves behind is for the Worker's owner to clear away.

use TemplateTool\Check\Checker;
use TemplateTool\Check\Options;
use TemplateTool\Json\Broken;
use TemplateTool\Json\JsonText;

const PAGE = 'page.tpl';
const SCRIPT = 'script.php';
const NAME = '~^(?=.{1,80}\z)(?:[A-Za-z0-9_][A-Za-z0-9_.-]*/){0,4}[A-Za-z0-9_][A-Za-z0-9_.-]*\z~';
const LARGEST_PAGE = 1 << 20;
const MOST_FINDINGS = 200;
const LARGEST_TREE = 1 << 20;

require __DIR__ . '/tool/autoload.php';
require __DIR__ . '/script.php';

/** A request that isn't served, with a sentence for the reader. */
final class Refusal extends RuntimeException
{
}

/**
 * Leaves nothing but these files in a folder of their own, and goes there.
 *
 * @param array<string, string> $files
 */
function put(array $files): void
{
    $folder = '/page';
    remove($folder);
    mkdir($folder);
    chdir($folder);
    foreach ($files as $name => $text) {
        if (!is_string($text) || preg_match(NAME, (string) $name) !== 1) {
            throw new Refusal('Names of files consist of letters, digits, "_", "-", "." and "/", and no part of one'
                . ' begins with a dot.');
        }
        $parent = dirname($name);
        if (!is_dir($parent) && !@mkdir($parent, 0777, true) || @file_put_contents($name, $text) === false) {
            throw new Refusal("A file can't be named $name: another file or folder has a part of this name.");
        }
    }
}

function remove(string $path): void
{
    if (is_dir($path)) {
        foreach (array_diff(scandir($path), ['.', '..']) as $name) {
            remove("$path/$name");
        }
        rmdir($path);
    } elseif (file_exists($path)) {
        unlink($path);
    }
}

/** @return array<string, mixed> */
function data(string $json): array
{
    try {
        $data = JsonText::decode($json, 'data.json');
    } catch (Broken $broken) {
        throw new Refusal($broken->getMessage());
    }
    return is_array($data) ? $data
        : throw new Refusal('data.json:1:1: the data must be an object: {"name": "Ann"}');
}

/** @return array<string, mixed> */
function rendered(array $data): array
{
    $messages = [];
    set_error_handler(static function (int $level, string $message) use (&$messages): bool {
        if (str_contains($message, 'Unable to find the wrapper')) {
            $message = 'An include names a stream; only files of this page can be included here.';
        }
        // Those about open_basedir are left to the checker: the page has no other files.
        str_contains($message, 'open_basedir') || $messages[$message] = true;
        return true;
    });
    $start = hrtime(true);
    $page = template(PAGE, $data);
    $time = hrtime(true) - $start;
    restore_error_handler();
    $size = $page === null ? null : strlen($page);
    return $size > LARGEST_PAGE ? ['stopped' => 'size'] : [
        'page' => $page,
        'size' => $size,
        'nanoseconds' => $time,
        'messages' => array_slice(array_keys($messages), 0, 20),
    ];
}

/** @return array<string, mixed> */
function checked(array $data, bool $security): array
{
    // What a script hands to its templates, only a run can tell.
    $isScript = is_file(SCRIPT);
    $checker = new Checker(new Options(security: $security, data: $isScript ? null : $data));
    $found = $checker->checkFiles(templates('.'));
    $tree = json_encode($isScript ? null : $checker->treeOfFile(PAGE), JSON_INVALID_UTF8_SUBSTITUTE, 1024);
    return [
        'findings' => array_slice($found, 0, MOST_FINDINGS),
        'more' => max(0, count($found) - MOST_FINDINGS),
        'tree' => $tree !== false && strlen($tree) <= LARGEST_TREE ? json_decode($tree, true, 1024) : null,
    ];
}

/** @return list<string> */
function templates(string $folder): array
{
    $files = [];
    foreach (array_diff(scandir($folder), ['.', '..', SCRIPT]) as $name) {
        $path = $folder === '.' ? $name : "$folder/$name";
        array_push($files, ...(is_dir($path) ? templates($path) : [$path]));
    }
    return $files;
}

/** @return array<string, mixed> */
function answer(array $request): array
{
    if ($request['job'] === 'version') {
        return ['template' => phpversion('template'), 'php' => PHP_VERSION];
    }
    put($request['files']);
    $data = data($request['data']);
    if ($request['job'] === 'render' && isset($request['files'][SCRIPT])) {
        (new Script(SCRIPT))->run($data);
    }
    foreach (stream_get_wrappers() as $wrapper) {
        $wrapper === 'file' || stream_wrapper_unregister($wrapper);
    }
    if ($request['job'] === 'check') {
        return checked($data, $request['security'] ?? false);
    }
    ini_set('open_basedir', getcwd());
    return rendered($data);
}

register_shutdown_function(static function (): void {
    $error = error_get_last();
    if (ob_get_level() > 0) {
        // A script's own answer.
    } elseif (str_starts_with($error['message'] ?? '', 'Allowed memory size')) {
        echo '{"stopped":"memory"}';
    } elseif (in_array($error['type'] ?? 0, [E_ERROR, E_CORE_ERROR, E_COMPILE_ERROR], true)) {
        echo json_encode(['fatal' => $error['message']], JSON_INVALID_UTF8_SUBSTITUTE);
    }
});

try {
    $answer = answer(json_decode(file_get_contents('/request.json'), true, 16));
} catch (Refusal $refusal) {
    $answer = ['error' => $refusal->getMessage()];
}
echo json_encode($answer, JSON_INVALID_UTF8_SUBSTITUTE, 1100);
