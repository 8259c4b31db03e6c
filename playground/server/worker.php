<?php

// Does one job for a request, in a process of its own whose limits Sandbox has set:
//   php worker.php render|check FOLDER
// FOLDER/files holds the templates, FOLDER/data.json the data. Prints one JSON object.

use TemplateTool\Check\Checker;
use TemplateTool\Check\Options;

const MOST_FINDINGS = 200;
const LARGEST_TREE = 1 << 20;

[, $job, $folder] = $argv;

register_shutdown_function(static function (): void {
    $message = error_get_last()['message'] ?? '';
    if (str_starts_with($message, 'Maximum execution time')) {
        echo '{"stopped":"time"}';
    } elseif (str_starts_with($message, 'Allowed memory size')) {
        echo '{"stopped":"memory"}';
    }
});

$tool = dirname(__DIR__, 2) . '/tool';
require "$tool/autoload.php";
// Behind the lock below no class can be loaded.
foreach ($job === 'check' ? ['Syntax', 'Files', 'Rules', 'Check'] : [] as $room) {
    foreach ([...glob("$tool/src/$room/*.php"), ...glob("$tool/src/$room/*/*.php")] as $file) {
        class_exists('TemplateTool\\' . strtr(substr($file, strlen("$tool/src/"), -4), '/', '\\'));
    }
}
$data = json_decode(file_get_contents("$folder/data.json"), true);

// From here on there are no files but the templates. A running script can narrow open_basedir, never widen it.
chdir("$folder/files");
ini_set('open_basedir', "$folder/files");
foreach (stream_get_wrappers() as $wrapper) {
    $wrapper === 'file' || stream_wrapper_unregister($wrapper);
}

/** @return array<string, mixed> */
function rendered(array $data): array
{
    $messages = [];
    set_error_handler(static function (int $level, string $message) use (&$messages): bool {
        if (str_contains($message, 'Unable to find the wrapper')) {
            $messages['An include names a stream; only files of this page can be included here.'] = true;
        } elseif (!str_contains($message, 'open_basedir')) {
            // Those are left to the checker: where this server's files lie is nobody's business.
            $messages[$message] = true;
        }
        return true;
    });
    $start = hrtime(true);
    $page = template('page.tpl', $data);
    $time = hrtime(true) - $start;
    restore_error_handler();
    return ['page' => $page, 'nanoseconds' => $time, 'messages' => array_slice(array_keys($messages), 0, 20)];
}

/** @return array<string, mixed> */
function checked(array $data): array
{
    $checker = new Checker(new Options(data: $data));
    $found = $checker->checkFiles(templates('.'));
    $tree = json_encode($checker->treeOfFile('page.tpl'), JSON_INVALID_UTF8_SUBSTITUTE, 1024);
    return [
        'findings' => array_slice($found, 0, MOST_FINDINGS),
        'more' => max(0, count($found) - MOST_FINDINGS),
        'unreadable' => $checker->unreadable(),
        'tree' => $tree !== false && strlen($tree) <= LARGEST_TREE ? json_decode($tree, true, 1024) : null,
    ];
}

/** @return list<string> */
function templates(string $folder): array
{
    $files = [];
    foreach (array_diff(scandir($folder), ['.', '..']) as $name) {
        $path = $folder === '.' ? $name : "$folder/$name";
        array_push($files, ...(is_dir($path) ? templates($path) : [$path]));
    }
    return $files;
}

echo json_encode($job === 'check' ? checked($data) : rendered($data), JSON_INVALID_UTF8_SUBSTITUTE, 1100);
