<?php

/** Median nanoseconds of a whole request of the shop page to PHP's built-in server, by engine. */
function measureWeb(array $engines, int $rounds): array
{
    $servers = $addresses = $samples = [];
    foreach ($engines as $engine) {
        $socket = stream_socket_server('tcp://127.0.0.1:0');
        $addresses[$engine] = stream_socket_get_name($socket, false);
        fclose($socket);
        $command = [...phpCommand(engineModules($engine)), '-S', $addresses[$engine], dirname(__DIR__) . '/once.php'];
        $servers[$engine] = proc_open($command, [1 => ['file', '/dev/null', 'w'], 2 => ['file', '/dev/null', 'w']], $pipes, null, pageEnvironment($engine));
    }
    try {
        foreach ($engines as $engine) {
            for ($tries = 0; !@stream_socket_client("tcp://$addresses[$engine]"); $tries++) {
                $tries < 500 ? usleep(10000) : fail("the web server of $engine did not start");
            }
            for ($i = 0; $i < 20; $i++) {
                $text = requestPage($addresses[$engine]);
            }
            if ($engine !== 'nothing' && !str_contains($text, '</html>')) {
                fail("the web server of $engine answers: " . substr($text, 0, 300));
            }
        }
        for ($round = 0; $round < $rounds; $round++) {
            foreach ($engines as $engine) {
                $start = hrtime(true);
                requestPage($addresses[$engine]);
                $samples[$engine][] = hrtime(true) - $start;
            }
        }
    } finally {
        array_map('proc_terminate', $servers);
    }
    return array_map('median', $samples);
}

function requestPage(string $address): string
{
    $connection = stream_socket_client("tcp://$address");
    fwrite($connection, "GET / HTTP/1.0\r\n\r\n");
    return stream_get_contents($connection);
}

function pageEnvironment(string $engine): array
{
    return ['BENCH_ENGINE' => $engine, 'BENCH_PAGE' => 'shop', 'BENCH_BUILD' => BUILD] + getenv();
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

/** Nanoseconds per unit while one thing grows, by series and size. */
function measureGrowth(bool $quick): array
{
    return json_decode(output([...phpCommand([MODULE]), dirname(__DIR__) . '/growth.php', BUILD . '/growth', $quick ? '1' : '']), true);
}
