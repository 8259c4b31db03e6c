<?php

namespace Template\Laravel;

use Illuminate\Contracts\Support\Arrayable;
use Illuminate\Contracts\Support\MessageProvider;
use Illuminate\Contracts\View\Engine as Contract;
use Illuminate\Support\ViewErrorBag;
use Template\Engine;

/**
 * Renders the views that end in ".tpl". Models, collections and whatever else is Arrayable become arrays, at any depth;
 * "errors" becomes the messages of the default bag, lists of texts by field.
 */
final class ViewEngine implements Contract
{
    public function __construct(private Engine $engine)
    {
    }

    /**
     * @param string $path of the file
     * @return string
     * @throws \Template\TemplateError
     */
    public function get($path, array $data = [])
    {
        return $this->engine->render($this->engine->nameOf($path), self::plain($data));
    }

    private static function plain(array $data): array
    {
        foreach ($data as $key => $value) {
            $value = match (true) {
                $value instanceof ViewErrorBag => $value->getBag('default')->getMessages(),
                $value instanceof MessageProvider => $value->getMessageBag()->getMessages(),
                $value instanceof Arrayable => $value->toArray(),
                default => $value,
            };
            $data[$key] = is_array($value) ? self::plain($value) : $value;
        }
        return $data;
    }
}
