<?php

namespace TemplateTool\Rules;

use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

/** The rules that one check follows. */
final class RuleSet
{
    /** @var list<TagRule> */
    private array $tagRules = [];

    /** @var list<DocumentRule> */
    private array $documentRules = [];

    /** @var list<ViewRule> */
    private array $viewRules = [];

    /** @var list<PageRule> */
    private array $pageRules = [];

    /** @var \WeakMap<Tag, list<Problem>> */
    private \WeakMap $known;

    /** @param list<string> $off names of warnings that aren't wanted */
    public function __construct(array $off, bool $security, bool $hasData)
    {
        $this->known = new \WeakMap();
        $isWanted = static fn(Warning $warning): bool => !in_array($warning->name, $off, true)
            && ($security || !$warning->isSecurity)
            && ($hasData || $warning->data === null);
        foreach (Catalogue::RULES as $class) {
            if (!array_filter($class::warnings(), $isWanted)) {
                continue;
            }
            $rule = new $class();
            match (true) {
                $rule instanceof TagRule => $this->tagRules[] = $rule,
                $rule instanceof DocumentRule => $this->documentRules[] = $rule,
                $rule instanceof ViewRule => $this->viewRules[] = $rule,
                $rule instanceof PageRule => $this->pageRules[] = $rule,
            };
        }
    }

    /** What is to be said of a document however it is reached. @return \Generator<Problem> */
    public function inDocument(Document $document): \Generator
    {
        foreach ($document->tags as $i => $tag) {
            foreach ($this->inTag($tag) as $problem) {
                yield $problem->movedBy($document->offsets[$i]);
            }
        }
        foreach ($this->documentRules as $rule) {
            yield from $rule->inDocument($document);
        }
    }

    /** What is to be said of it as it is reached here. @return \Generator<Problem> */
    public function inView(View $view): \Generator
    {
        foreach ($this->viewRules as $rule) {
            yield from $rule->inView($view);
        }
    }

    /** What is to be said of a page and all that it includes. @return \Generator<array{View, Problem}> */
    public function inPage(View $page): \Generator
    {
        foreach ($this->pageRules as $rule) {
            yield from $rule->inPage($page);
        }
    }

    /** @return list<Problem> */
    private function inTag(Tag $tag): array
    {
        if (!isset($this->known[$tag])) {
            $problems = [];
            foreach ($this->tagRules as $rule) {
                array_push($problems, ...$rule->inTag($tag));
            }
            $this->known[$tag] = $problems;
        }
        return $this->known[$tag];
    }
}
