--TEST--
The library in Slim: pages, and errors that its own page shows in the template
--EXTENSIONS--
template
ctype
mbstring
--SKIPIF--
<?php stream_resolve_include_path('Slim/autoload.php') || exit("skip needs Debian's php-slim"); ?>
--FILE--
<?php
// This Slim is older than PHP 8.2 and uses what that deprecates.
error_reporting(E_ALL & ~E_DEPRECATED);
require_once 'Slim/autoload.php';
require __DIR__ . '/library.inc';

put(['film.tpl' => '<h1>{htmlspecialchars title}</h1>', 'bad.tpl' => "<body>\n  {include part.tpl}", 'part.tpl' => "\n\n{title::}"]);
$renderer = new Template\Psr\Renderer(new Template\Engine(folder()));
foreach (['film.tpl', 'bad.tpl'] as $name) {
    $slim = new Slim\App(['settings' => ['displayErrorDetails' => true]]);
    $slim->get('/{name}', fn($request, $response, array $arguments) => $renderer->render($response, $arguments['name'], ['title' => '<b>']));
    $request = Slim\Http\Request::createFromEnvironment(Slim\Http\Environment::mock(['REQUEST_URI' => "/$name"]));
    $response = $slim->process($request, new Slim\Http\Response());
    $body = (string) $response->getBody();
    $isError = preg_match_all('~<strong>(?:Message|File|Line):</strong> (.*?)</div>~', $body, $details) > 0;
    echo $response->getStatusCode(), ' ', $response->getHeaderLine('Content-Type'), ' ', $isError
        ? str_replace(folder() . '/', '', html_entity_decode(implode(' | ', $details[1]), ENT_QUOTES))
        : $body, "\n";
}
?>
--EXPECT--
200 text/html; charset=utf-8 <h1>&lt;b&gt;</h1>
500 text/html Bad formated parameter'title::': too many : in part.tpl | part.tpl | 3
