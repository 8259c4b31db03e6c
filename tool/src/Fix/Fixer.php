<?php

namespace TemplateTool\Fix;

use TemplateTool\Check\Finding;
use TemplateTool\Syntax\Documents;
use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Source;

/** Mends what has one right answer, and never makes an error of a page that renders. */
final class Fixer
{
    public function __construct(private Documents $documents = new Documents())
    {
    }

    /**
     * What the edits of these findings make of their files; none is written.
     *
     * @param list<Finding> $findings
     * @return list<Change>
     */
    public function changes(array $findings): array
    {
        $sources = [];
        $edits = [];
        foreach ($findings as $finding) {
            foreach ($finding->edits as $edit) {
                $sources[$finding->source->name] = $finding->source;
                $edits[$finding->source->name][] = $edit;
            }
        }
        $changes = [];
        foreach ($sources as $name => $source) {
            $taken = $this->harmless($source, self::apart($edits[$name]));
            if ($taken) {
                $changes[] = new Change($source, $taken);
            }
        }
        return $changes;
    }

    /** @param list<Edit> $edits @return list<Edit> in the order of the text, without those that overlap */
    private static function apart(array $edits): array
    {
        usort($edits, static fn(Edit $a, Edit $b): int => $a->offset <=> $b->offset);
        $end = -1;
        return array_values(array_filter($edits, static function (Edit $edit) use (&$end): bool {
            $isApart = $edit->offset >= $end;
            $end = $isApart ? $edit->offset + max(1, $edit->length) : $end;
            return $isApart;
        }));
    }

    /** @param list<Edit> $edits @return list<Edit> all when they add no error, else those that add none one by one */
    private function harmless(Source $source, array $edits): array
    {
        $errors = $this->errors($source);
        $isHarmless = fn(array $edits): bool => $this->errors((new Change($source, $edits))->after()) <= $errors;
        if ($isHarmless($edits)) {
            return $edits;
        }
        $taken = [];
        foreach ($edits as $edit) {
            $taken = $isHarmless([...$taken, $edit]) ? [...$taken, $edit] : $taken;
        }
        return $taken;
    }

    /** How many errors the engine would find in a text. */
    private function errors(Source $source): int
    {
        return count($this->documents->of($source)->problems);
    }
}
