<?php

namespace TemplateTool\Page;

/** What is done to a value before it stands in a page; the value is the keyword of the tag. */
enum Escaping: string
{
    case None = '';
    case Addslashes = 'addslashes';
    case Html = 'htmlspecialchars';
    case Url = 'rawurlencode';

    public static function of(string $keyword): self
    {
        return $keyword === 'htmlentities' ? self::Html : self::from($keyword);
    }
}
