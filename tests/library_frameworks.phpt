--TEST--
Bridges of the library in the frameworks themselves: pages, and errors that their own pages show in the template
--EXTENSIONS--
template
ctype
mbstring
--SKIPIF--
<?php
foreach ([
    'Symfony/Component/HttpKernel/autoload.php' => 'php-symfony-http-kernel',
    'Symfony/Component/DependencyInjection/autoload.php' => 'php-symfony-dependency-injection',
    'Symfony/Component/ErrorHandler/autoload.php' => 'php-symfony-error-handler',
    'Symfony/Component/Config/autoload.php' => 'php-symfony-config',
    'Illuminate/View/autoload.php' => 'php-illuminate-view',
    'Nyholm/Psr7/autoload.php' => 'php-nyholm-psr7',
] as $file => $package) {
    stream_resolve_include_path($file) || exit("skip needs Debian's $package");
}
?>
--FILE--
<?php
// Frameworks that are older than this PHP use what it deprecates.
error_reporting(E_ALL & ~E_DEPRECATED);
$libraries = get_include_path();
require __DIR__ . '/library.inc';

// What has been told lies in the folder for temporary files: here one of its own.
putenv('TMPDIR=' . ($temporary = exec('mktemp -d')));
folder();
register_shutdown_function(function () use ($temporary): void {
    chdir('/');
    exec('rm -r ' . escapeshellarg($temporary));
});
put([
    'templates/film.tpl' => "<h1>{htmlspecialchars film::title}</h1>{dynamic film::tags}{*} {/dynamic}{errors::title::0}\n",
    'templates/bad.tpl' => "<body>\n  <p>\n  {include parts/broken.tpl}\n",
    'templates/parts/broken.tpl' => "<ul>\n  {dynamic rows}\n  <li>{*::a::}\n  {/dynamic}\n</ul>\n",
    'other/only.tpl' => '{include film.tpl}{if x}',
    'other/also.tpl' => '{$x}',
]);
set_include_path($libraries);
foreach (['Symfony/Component/HttpKernel', 'Symfony/Component/DependencyInjection', 'Symfony/Component/ErrorHandler',
    'Symfony/Component/Config', 'Illuminate/View', 'Nyholm/Psr7'] as $library) {
    require_once "$library/autoload.php";
}

/** Remembers what is logged. */
final class Log extends Psr\Log\AbstractLogger
{
    public array $lines = [];

    public function log($level, $message, array $context = []): void
    {
        isset($context['finding']) && $this->lines[] = "$level " . str_replace(folder(), '', $message);
    }
}

$film = ['title' => 'Salt & Stone', 'tags' => ['drama', 'b/w']];

echo "Symfony\n";

final class FilmController
{
    public function __construct(private Template\Engine $engine)
    {
    }

    public function __invoke(string $name): Symfony\Component\HttpFoundation\Response
    {
        return new Template\Symfony\TemplateResponse($this->engine, $name, ['film' => $GLOBALS['film']], 202, ['X-Page' => $name]);
    }
}

final class SiteKernel extends Symfony\Component\HttpKernel\Kernel
{
    public array $config = [];

    public function registerBundles(): iterable
    {
        return [new Template\Symfony\TemplateBundle()];
    }

    public function getProjectDir(): string
    {
        return folder();
    }

    public function registerContainerConfiguration(Symfony\Component\Config\Loader\LoaderInterface $loader): void
    {
        $loader->load(function (Symfony\Component\DependencyInjection\ContainerBuilder $container): void {
            $this->config && $container->loadFromExtension('template', $this->config);
            $container->register('logger', Log::class)->setPublic(true);
            $container->register(FilmController::class, FilmController::class)->setAutowired(true)->setPublic(true);
        });
    }
}

foreach ([[false, []], [true, []], [true, ['folders' => ['%kernel.project_dir%/other', folder() . '/templates']]]] as [$isDebug, $config]) {
    $kernel = new SiteKernel($config ? 'configured' : 'test', $isDebug);
    $kernel->config = $config;
    $kernel->boot();
    $container = $kernel->getContainer();
    $response = $container->get(FilmController::class)($config ? 'only.tpl' : 'film.tpl');
    echo $response->getStatusCode(), ' ', $response->headers->get('X-Page'), ' ', $response->getContent(), "\n";
    echo implode(', ', $container->get('logger')->lines) ?: 'nothing logged', "\n";
    $kernel->shutdown();
}
try {
    $container->get(FilmController::class)('bad.tpl');
} catch (Template\TemplateError $error) {
    echo errorLine($error), "\n";
}
// The page shows the file around the line, and marks it.
$page = (new Symfony\Component\ErrorHandler\ErrorRenderer\HtmlErrorRenderer(true))->render($error)->getAsString();
getenv('ERROR_PAGE') && file_put_contents(getenv('ERROR_PAGE'), $page);
preg_match('~<li class="selected">.*?</li>~s', $page, $marked);
echo 'marked: ', trim(html_entity_decode(strip_tags($marked[0])), " \n\u{A0}"), "\n";
preg_match_all('~<span class="block trace-file-path">.*?</span>~s', $page, $files);
foreach (array_slice($files[0], 0, 2) as $file) {
    echo str_replace(folder() . '/', '', preg_replace('/\s+/', ' ', trim(strip_tags($file)))), "\n";
}

echo "\nLaravel\n";
// What Illuminate's view service wants of an application besides a container.
$app = new class extends Illuminate\Container\Container {
    public function terminating($callback): void
    {
    }
};
$log = new Log();
$app->instance('app', $app);
$app->instance('log', $log);
$app->instance('config', new ArrayObject(['view.paths' => [folder() . '/none', folder() . '/templates', folder() . '/other'], 'app.debug' => true,
    'view.compiled' => folder()]));
$app->instance('files', new Illuminate\Filesystem\Filesystem());
$app->instance('events', new Illuminate\Events\Dispatcher($app));
foreach ([Illuminate\View\ViewServiceProvider::class, Template\Laravel\TemplateServiceProvider::class] as $provider) {
    $providers[] = $provider = new $provider($app);
    $provider->register();
}
end($providers)->boot();
$views = $app['view'];
$bag = new Illuminate\Support\ViewErrorBag();
$bag->put('default', new Illuminate\Support\MessageBag(['title' => ['too short']]));
echo $views->make('film', ['film' => new Illuminate\Support\Collection($film), 'errors' => $bag])->render();
echo $views->make('only', ['film' => ['tags' => [], 'title' => new Illuminate\Support\Collection(['a', 'b'])]])->render(), "\n";
echo $views->make('also')->render(), "\n";
try {
    $views->make('bad')->render();
} catch (Template\TemplateError $error) {
    echo errorLine($error), "\n";
}
echo implode("\n", $log->lines), "\n";

echo "\nPSR-7, PSR-17, PSR-15\n";
// Debian has no package of PSR-15's two interfaces; this is the one that is implemented.
interface_exists(Psr\Http\Server\RequestHandlerInterface::class) || eval('namespace Psr\Http\Server; interface RequestHandlerInterface {
    public function handle(\Psr\Http\Message\ServerRequestInterface $request): \Psr\Http\Message\ResponseInterface; }');
$factory = new Nyholm\Psr7\Factory\Psr17Factory();
$handler = new Template\Psr\PageHandler(
    new Template\Psr\Renderer(new Template\Engine(folder() . '/templates'), $factory, $factory),
    'film.tpl',
    fn(Psr\Http\Message\ServerRequestInterface $request): array => ['film' => $request->getQueryParams()]
);
$response = $handler->handle($factory->createServerRequest('GET', '/?title=x')->withQueryParams(['title' => 'Two <b>']));
echo $response->getStatusCode(), ' ', $response->getHeaderLine('Content-Type'), ' ', $response->getBody();
$renderer = new Template\Psr\Renderer(new Template\Engine(folder() . '/templates'));
$given = $renderer->render($factory->createResponse(404)->withHeader('Content-Type', 'text/plain'), 'film.tpl', ['film' => ['title' => 'Lost']]);
echo $given->getStatusCode(), ' ', $given->getHeaderLine('Content-Type'), ' ', $given->getBody();
try {
    $renderer->respond('film.tpl');
} catch (LogicException $fault) {
    echo $fault->getMessage(), "\n";
}
?>
--EXPECT--
Symfony
202 film.tpl <h1>Salt &amp; Stone</h1>drama b/w {errors::title::0}

nothing logged
202 film.tpl <h1>Salt &amp; Stone</h1>drama b/w {errors::title::0}

nothing logged
202 only.tpl <h1>Salt &amp; Stone</h1>drama b/w {errors::title::0}
{if x}
notice /other/only.tpl:1:19: warning: "if" is no tag of this language: a section is "{optional name}...{/optional}" [foreign-tag]
Bad formated parameter'*::a::': too many : in parts/broken.tpl | templates/parts/broken.tpl:3 | 3:7 < templates/bad.tpl:3:3
marked: <li>{*::a::}
in templates/parts/broken.tpl (line 3)
in templates/bad.tpl (line 3)

Laravel
<h1>Salt &amp; Stone</h1>drama b/w too short
<h1></h1>{errors::title::0}
{if x}
{$x}
Bad formated parameter'*::a::': too many : in parts/broken.tpl | templates/parts/broken.tpl:3 | 3:7 < templates/bad.tpl:3:3
notice /other/also.tpl:1:2: warning: names are written without "$": write "{x}" [dollar-variable]

PSR-7, PSR-17, PSR-15
200 text/html; charset=utf-8 <h1>Two &lt;b&gt;</h1>{errors::title::0}
404 text/plain <h1>Lost</h1>{errors::title::0}
A new response needs the two factories of PSR-17
