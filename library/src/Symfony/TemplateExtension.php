<?php

namespace Template\Symfony;

use Symfony\Component\DependencyInjection\ContainerBuilder;
use Symfony\Component\DependencyInjection\ContainerInterface;
use Symfony\Component\DependencyInjection\Definition;
use Symfony\Component\DependencyInjection\Extension\Extension;
use Symfony\Component\DependencyInjection\Reference;
use Template\Development;
use Template\Engine;

/**
 * The bundle's configuration: "template", with the list "folders". Without one it is "templates" in the project's folder.
 * In a kernel with debugging the logger gets what the checker finds.
 */
final class TemplateExtension extends Extension
{
    public function load(array $configs, ContainerBuilder $container): void
    {
        $folders = array_merge(...array_map(static fn(array $config): array => (array) ($config['folders'] ?? []), $configs));
        $arguments = [$folders ?: ['%kernel.project_dir%/templates']];
        if ($container->getParameter('kernel.debug')) {
            $arguments[] = new Definition(Development::class, [
                new Reference('logger', ContainerInterface::NULL_ON_INVALID_REFERENCE),
            ]);
        }
        $container->setDefinition(Engine::class, new Definition(Engine::class, $arguments));
    }
}
