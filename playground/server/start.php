<?php

// Serves the playground on the loopback address until it is interrupted:
//   php start.php --port=N --module=template.so --static=FOLDER --scratch=FOLDER
// Port 0 is any that is free. What requests leave in the scratch folder is removed at the end.

const WORKERS = 4;

function fail(string $message): never
{
    fwrite(STDERR, "playground: $message\n");
    exit(1);
}

function freePort(int $wanted): int
{
    $socket = @stream_socket_server("tcp://127.0.0.1:$wanted", $code, $message);
    if (!$socket) {
        fail("port $wanted can't be used ($message); take another one, or leave out --port");
    }
    return (int) substr(strrchr(stream_socket_get_name($socket, false), ':'), 1);
}

function answers(int $port): bool
{
    $socket = @fsockopen('127.0.0.1', $port, $code, $message, 0.1);
    return $socket && fclose($socket);
}

$options = getopt('', ['port:', 'module:', 'static:', 'scratch:']);
$requests = "$options[scratch]/requests." . getmypid();
$port = freePort((int) $options['port']);
is_dir($requests) || mkdir($requests, 0700, true);

$settings = [
    'open_basedir' => implode(PATH_SEPARATOR, [dirname(__DIR__), dirname(__DIR__, 2) . '/tool', $options['static'], $requests]),
    'allow_url_fopen' => '0',
    'enable_post_data_reading' => '0',
    'memory_limit' => '128M',
    'max_execution_time' => '10',
    'display_errors' => '0',
    'log_errors' => '1',
    'error_log' => '',
    'expose_php' => '0',
    'output_buffering' => '1',
];
// A process group of its own, so that at the end all of the server's processes are reached.
$command = ['setsid', PHP_BINARY, '-n'];
foreach ($settings as $name => $value) {
    array_push($command, '-d', "$name=$value");
}
array_push($command, '-S', "127.0.0.1:$port", '-t', $options['static'], __DIR__ . '/router.php');
$log = "$options[scratch]/server.log";
$server = proc_open($command, [['null'], ['file', $log, 'w'], ['file', $log, 'a']], $pipes, $requests, [
    'PATH' => getenv('PATH'),
    'PHP_CLI_SERVER_WORKERS' => (string) WORKERS,
    'PLAYGROUND_REQUESTS' => $requests,
    'PLAYGROUND_MODULE' => realpath($options['module']),
]);

$isInterrupted = false;
pcntl_async_signals(true);
foreach ([SIGINT, SIGTERM, SIGHUP] as $signal) {
    pcntl_signal($signal, static function () use (&$isInterrupted): void {
        $isInterrupted = true;
    });
}
while (!$isInterrupted && !answers($port) && proc_get_status($server)['running']) {
    usleep(20000);
}
if (proc_get_status($server)['running']) {
    echo "The playground is at http://127.0.0.1:$port/ (Ctrl-C ends it)\n";
}
while (!$isInterrupted && proc_get_status($server)['running']) {
    usleep(200000);
}

// Also when the first process has ended by itself: the others, which share its socket, may be left.
$group = proc_get_status($server)['pid'];
exec("kill -s TERM -- -$group 2>&1");
proc_close($server);
for ($tries = 0; $tries < 100 && exec("kill -s 0 -- -$group 2>&1 && echo alive") === 'alive'; $tries++) {
    usleep(20000);
}
$inside = new RecursiveDirectoryIterator($requests, FilesystemIterator::SKIP_DOTS);
foreach (new RecursiveIteratorIterator($inside, RecursiveIteratorIterator::CHILD_FIRST) as $file) {
    $file->isDir() ? rmdir($file) : unlink($file);
}
rmdir($requests);
$isInterrupted || fail("the server has ended; the reason is in $log");
