<?php

namespace TemplateTool\Rules\Data;

use TemplateTool\Syntax\Context;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Engine;

/** The sample data of a check, and what it makes of the places in documents. */
final class Sample
{
    /** @var \WeakMap<Context, \ArrayObject<int, Reach>> for each document as it is reached, by the number of the block */
    private \WeakMap $known;

    private Reach $top;

    public function __construct(array $data, Engine $engine)
    {
        $this->known = new \WeakMap();
        $this->top = Reach::top($data, $engine);
    }

    /** Inside the block with this number; -1 is outside of all blocks of the document. */
    public function reach(Context $context, Document $document, int $block): Reach
    {
        $known = $this->known[$context] ??= new \ArrayObject();
        $path = [];
        for ($i = $block; $i >= 0 && !isset($known[$i]); $i = $document->nodes[$i]->parent) {
            $path[] = $i;
        }
        $reach = $i >= 0 ? $known[$i] : $known[-1] ??= $context->outer === null
            ? $this->top
            : $this->reach($context->outer, $context->document, $context->include->parent);
        foreach (array_reverse($path) as $i) {
            $reach = $known[$i] = $reach->inside($document->nodes[$i]->tag);
        }
        return $reach;
    }
}
