<?php

/*
 * Holds src/ and tool/src/ against the plans of their rooms: an include runs downwards only, and what PHP keeps to itself is
 * known in src/php/ alone. Prints a line for each fault.
 */

// The higher a room, the more it may include. Rooms of the same height know nothing of each other.
const HEIGHTS = [
    'php' => 1,
    'text' => 2,
    'tree' => 3,
    'source' => 4,
    'data' => 4,
    'call' => 5,
    'template' => 6,
    'analysis' => 7,
    'rendering' => 7,
    'main' => 8,
];

const TOOL_HEIGHTS = [
    'Syntax' => 1,
    'Page' => 1,
    'Files' => 2,
    'Json' => 2,
    'Rules' => 3,
    'Check' => 4,
    'Fix' => 5,
    'Needs' => 5,
    'Project' => 5,
    'Report' => 5,
    'Server' => 6,
    'Console' => 7,
];

const PRIVATE_TO_PHP = [
    'PHP_VERSION_ID' => 'a version of PHP',
    'PHP_API_VERSION' => 'a version of PHP',
    'ZEND_MODULE_API_NO' => 'a version of PHP',
    'extern "C"' => 'an include of PHP',
    'arPacked' => 'the layout of a table',
    'arData' => 'the layout of a table',
    'nNumUsed' => 'the layout of a table',
    '_ZSTR_HEADER_SIZE' => 'the layout of a string',
    '_ZSTR_STRUCT_SIZE' => 'the layout of a string',
    'php_stream' => 'the layout of a stream',
    'zend_resource' => 'the layout of a stream',
    'zend_fiber' => 'the layout of a fiber',
    'emalloc(' => 'memory that is asked for otherwise than by requestMemory',
    'safe_emalloc(' => 'memory that is asked for otherwise than by requestMemory',
    'zend_string_alloc(' => 'memory that is asked for otherwise than by requestMemory',
    'zend_string_init(' => 'memory that is asked for otherwise than by requestMemory',
];

chdir(dirname(__DIR__, 2) . '/src');
$faults = [];
foreach ([...glob('*.{h,cpp}', GLOB_BRACE), ...glob('*/*.{h,cpp}', GLOB_BRACE)] as $file) {
    if ($file === 'template_arginfo.h') {
        continue;
    }
    $roomOf = fn (string $path): string => strstr($path, '/', true) ?: strstr($path, '.', true);
    $room = $roomOf($file);
    if (!isset(HEIGHTS[$room])) {
        $faults[] = "src/$file: there is no room $room";
        continue;
    }
    foreach (file($file, FILE_IGNORE_NEW_LINES) as $i => $line) {
        $place = "src/$file:" . $i + 1;
        if (preg_match('~^#include "(.+)"~', $line, $include) && $include[1] !== 'template_arginfo.h') {
            $other = $roomOf($include[1]);
            if (!is_file($include[1])) {
                // Only the room that includes PHP names files that don't lie here.
                $room === 'php' || $faults[] = "$place: $include[1] isn't a file of src/";
            } elseif ($other !== $room && (HEIGHTS[$other] ?? INF) >= HEIGHTS[$room]) {
                $faults[] = "$place: $room must not include $other";
            }
        }
        $isExported = $file === 'main.cpp' && str_contains($line, 'extern "C"');
        foreach ($room === 'php' || $isExported ? [] : PRIVATE_TO_PHP as $word => $what) {
            if (preg_match('~(?<!\w)' . preg_quote($word) . (preg_match('~\w$~', $word) ? '(?!\w)' : '') . '~', $line)) {
                $faults[] = "$place: $what ($word) is known in src/php/ alone";
            }
        }
    }
}

chdir('../tool/src');
foreach ([...glob('*.php'), ...glob('*/*.php'), ...glob('*/*/*.php')] as $file) {
    $room = strstr($file, '/', true) ?: basename($file);
    if (!isset(TOOL_HEIGHTS[$room])) {
        $faults[] = "tool/src/$file: there is no room $room";
        continue;
    }
    foreach (file($file, FILE_IGNORE_NEW_LINES) as $i => $line) {
        preg_match_all('~\bTemplateTool\\\\(\w+)\\\\~', $line, $names);
        foreach ($names[1] as $other) {
            if ($other !== $room && (TOOL_HEIGHTS[$other] ?? INF) >= TOOL_HEIGHTS[$room]) {
                $faults[] = "tool/src/$file:" . $i + 1 . ": $room must not use $other";
            }
        }
    }
}
echo implode("\n", $faults), $faults ? "\n" : '';
exit($faults ? 1 : 0);
