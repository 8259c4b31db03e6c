<?php

namespace TemplateTool\Rules\Code;

use TemplateTool\Page\Html;
use TemplateTool\Page\State;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Problem;

/** Style sheets and scripts that stand in a template as they were, with braces that tags begin with. */
final class Pasted
{
    public const ADVICE = '"template literal" writes the braces of a style sheet or a script twice';

    /** Whether a script or a style sheet stands here. Files of these are told by their names. */
    public static function isAt(Document $document, int $offset): bool
    {
        return $document->code->has($offset) || Html::ofFile($document->source->name)->place()[0] === State::Raw;
    }

    /** What the engine says against a document, with a note at the first place that comes from pasted code. @return list<Problem> */
    public static function noted(Document $document): array
    {
        $problems = $document->problems;
        foreach ($problems as $i => $each) {
            if (self::isAt($document, $each->offset)) {
                $notes = [...$each->notes, self::ADVICE];
                $problems[$i] = new Problem($each->name, $each->message, $each->offset, $each->length, $notes);
                break;
            }
        }
        return $problems;
    }
}
