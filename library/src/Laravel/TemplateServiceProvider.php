<?php

namespace Template\Laravel;

use Illuminate\Support\ServiceProvider;
use Template\Development;
use Template\Engine;

/**
 * Makes view('page') find page.tpl beside Blade's files. Templates and what they include are looked for in the folders of
 * config/view.php ("paths"). While "app.debug" is on, the log gets what the checker finds in them.
 */
final class TemplateServiceProvider extends ServiceProvider
{
    public function register(): void
    {
        $this->app->singleton(Engine::class, static fn($app): Engine => new Engine(
            array_values(array_filter($app['config']['view.paths'], 'is_dir')),
            $app['config']['app.debug'] ? new Development($app['log']) : null
        ));
    }

    public function boot(): void
    {
        $this->app['view']->addExtension('tpl', 'template', fn(): ViewEngine => new ViewEngine($this->app[Engine::class]));
    }
}
