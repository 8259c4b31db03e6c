<?php

/**
 * Median nanoseconds of a whole request to PHP's built-in server, by page and engine, and of what each takes beyond one that
 * prints the finished page: the engines take turns, and each is compared with the request of the same turn.
 */
function measureWeb(array $engines, int $rounds): array
{
    $servers = $addresses = $result = [];
    foreach ($engines as $engine) {
        $socket = stream_socket_server('tcp://127.0.0.1:0');
        $addresses[$engine] = stream_socket_get_name($socket, false);
        fclose($socket);
        $command = [...phpCommand(engineModules($engine)), '-S', $addresses[$engine], dirname(__DIR__) . '/once.php'];
        $servers[$engine] = proc_open($command, [1 => ['file', '/dev/null', 'w'], 2 => ['file', '/dev/null', 'w']], $pipes, null, pageEnvironment($engine));
    }
    try {
        foreach (REQUESTED as $page) {
            foreach ($engines as $engine) {
                warmServer($engine, $addresses[$engine], $page);
            }
            $samples = $beyond = [];
            for ($round = 0; $round < $rounds; $round++) {
                $times = [];
                foreach ($engines as $engine) {
                    $start = hrtime(true);
                    requestPage($addresses[$engine], $page);
                    $samples[$engine][] = $times[$engine] = hrtime(true) - $start;
                }
                foreach ($times as $engine => $time) {
                    $beyond[$engine][] = $time - $times['fixed'];
                }
            }
            $result['web'][$page] = array_map('median', $samples);
            $result['beyond'][$page] = array_map('median', array_diff_key($beyond, ['fixed' => 0, 'nothing' => 0]));
        }
    } finally {
        array_map('proc_terminate', $servers);
    }
    return $result;
}

/** Waits for a server and has it render the page until its caches are warm. */
function warmServer(string $engine, string $address, string $page): void
{
    for ($tries = 0; !@stream_socket_client("tcp://$address"); $tries++) {
        $tries < 500 ? usleep(10000) : fail("the web server of $engine did not start");
    }
    for ($i = 0; $i < 20; $i++) {
        $text = requestPage($address, $page);
    }
    if ($engine !== 'nothing' && preg_replace('/\s+/', '', explode("\r\n\r\n", $text)[1] ?? '') !== preg_replace('/\s+/', '', file_get_contents(BUILD . "/out/$page.template"))) {
        fail("the web server of $engine answers: " . substr($text, 0, 300));
    }
}

function requestPage(string $address, string $page): string
{
    $connection = stream_socket_client("tcp://$address");
    fwrite($connection, "GET /?$page HTTP/1.0\r\n\r\n");
    return stream_get_contents($connection);
}

function pageEnvironment(string $engine): array
{
    return ['BENCH_ENGINE' => $engine, 'BENCH_BUILD' => BUILD] + getenv();
}

/** Median nanoseconds of a fresh process that renders the shop page once; opcache, as usual there, is off. */
function measureCold(array $engines, int $rounds): array
{
    $samples = [];
    for ($round = 0; $round < $rounds; $round++) {
        foreach ($engines as $engine) {
            $start = hrtime(true);
            output([...phpCommand(engineModules($engine), false), dirname(__DIR__) . '/once.php'], pageEnvironment($engine));
            $samples[$engine][] = hrtime(true) - $start;
        }
    }
    return array_map('median', $samples);
}

/** What a large result takes at the peak, by engine. */
function measureMemory(array $engines): array
{
    $result = [];
    foreach ($engines as $engine) {
        $command = [...phpCommand(engineModules($engine)), dirname(__DIR__) . '/memory.php', $engine, BUILD, '200'];
        $memory = json_decode(output($command), true);
        $result[$engine] = $memory + ['peak' => max($memory['php'], $memory['process'])];
    }
    return $result;
}

/** What large results cost, with the pages that PHP asks for by itself and with huge ones: medians of processes that take turns. */
function measureLarge(bool $quick): array
{
    $runs = [];
    for ($i = 0; $i < ($quick ? 1 : 5); $i++) {
        foreach (['0', '1'] as $huge) {
            $command = [...phpCommand([MODULE]), dirname(__DIR__) . '/large.php', BUILD . '/growth'];
            foreach (json_decode(output($command, ['USE_ZEND_ALLOC_HUGE_PAGES' => $huge]), true) as $name => $costs) {
                $runs[$name][$huge][] = $costs;
            }
        }
    }
    $median = fn (array $costs) => array_map(fn ($key) => median(array_column($costs, $key)), ['bytes' => 'bytes', 'time' => 'time', 'faults' => 'faults']);
    return array_map(fn ($sizes) => array_map($median, $sizes), $runs);
}

/** Nanoseconds per unit while one thing grows, by series and size. */
function measureGrowth(bool $quick): array
{
    return json_decode(output([...phpCommand([MODULE]), dirname(__DIR__) . '/growth.php', BUILD . '/growth', $quick ? '1' : '']), true);
}
