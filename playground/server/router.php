<?php

// php -S runs this file for each request; start.php tells it by the environment where things are.

namespace Playground;

require_once __DIR__ . '/../../tool/autoload.php';
foreach (['Refusal', 'Request', 'Sandbox'] as $class) {
    require_once __DIR__ . "/$class.php";
}

const STATIC_FILES = [
    '/' => ['index.html', 'text/html'],
    '/main.js' => ['main.js', 'text/javascript'],
    '/style.css' => ['style.css', 'text/css'],
    '/examples.json' => ['examples.json', 'application/json'],
];

// The page's frame inherits this policy: what is shown there can load nothing either.
const POLICY = "default-src 'none'; script-src 'self'; connect-src 'self'; style-src 'self' 'unsafe-inline';"
    . " img-src data:; font-src data:; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

function answer(int $status, string $type, string $text): void
{
    http_response_code($status);
    header("Content-Type: $type; charset=utf-8");
    header('Content-Security-Policy: ' . POLICY);
    header('X-Content-Type-Options: nosniff');
    header('Referrer-Policy: no-referrer');
    header('Cache-Control: no-store');
    echo $text;
}

function answerError(int $status, string $sentence): void
{
    answer($status, 'application/json', json_encode(['error' => $sentence], JSON_INVALID_UTF8_SUBSTITUTE));
}

/** Other sites' pages reach this server by their visitor's browser, under names that lead to the loopback address. */
function refuseStrangers(): void
{
    $host = $_SERVER['HTTP_HOST'] ?? '';
    $port = $_SERVER['SERVER_PORT'];
    if (!in_array($host, ["127.0.0.1:$port", "localhost:$port"], true)) {
        throw new Refusal(403, "Open the playground as http://127.0.0.1:$port/.");
    }
    if (isset($_SERVER['HTTP_ORIGIN']) && $_SERVER['HTTP_ORIGIN'] !== "http://$host") {
        throw new Refusal(403, 'Another site may not use the playground.');
    }
}

function serve(): void
{
    refuseStrangers();
    $path = parse_url($_SERVER['REQUEST_URI'], PHP_URL_PATH);
    $isPost = $_SERVER['REQUEST_METHOD'] === 'POST';
    if ($path === '/api/render' && $isPost) {
        $request = Request::read();
        $sandbox = new Sandbox(getenv('PLAYGROUND_REQUESTS'), getenv('PLAYGROUND_MODULE'));
        $result = $sandbox->run($request->files, $request->data);
        answer(200, 'application/json', json_encode($result, JSON_INVALID_UTF8_SUBSTITUTE, 1200));
    } elseif (isset(STATIC_FILES[$path]) && in_array($_SERVER['REQUEST_METHOD'], ['GET', 'HEAD'], true)) {
        [$file, $type] = STATIC_FILES[$path];
        answer(200, $type, file_get_contents("$_SERVER[DOCUMENT_ROOT]/$file"));
    } else {
        throw new Refusal(404, 'There is no such page here.');
    }
}

register_shutdown_function(static function (): void {
    if (in_array(error_get_last()['type'] ?? 0, [E_ERROR, E_CORE_ERROR, E_COMPILE_ERROR], true) && !headers_sent()) {
        ob_get_level() && ob_clean();
        answerError(500, 'The server could not finish this request.');
    }
});

try {
    serve();
} catch (Refusal $refusal) {
    answerError($refusal->status, $refusal->getMessage());
} catch (\Throwable $error) {
    error_log((string) $error);
    answerError(500, 'The server could not finish this request.');
}
