<?php

namespace Template\Symfony;

use Symfony\Component\DependencyInjection\Extension\ExtensionInterface;
use Symfony\Component\HttpKernel\Bundle\Bundle;

/** Makes Template\Engine a service, which controllers get by its type. */
final class TemplateBundle extends Bundle
{
    public function getContainerExtension(): ?ExtensionInterface
    {
        return new TemplateExtension();
    }
}
