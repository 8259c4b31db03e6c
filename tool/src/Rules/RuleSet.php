<?php

namespace TemplateTool\Rules;

use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Node;
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

    /** @var array<string, true> the names of the warnings of habits */
    private array $habits = [];

    /** @var \WeakMap<Tag, \ArrayObject<int, list<Problem>>> for text, and for scripts and style sheets */
    private \WeakMap $known;

    /** @param list<string> $off names of warnings that aren't wanted */
    public function __construct(array $off, bool $security, private bool $hasData)
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
            $this->habits += $rule instanceof Habit ? array_fill_keys(array_column($class::warnings(), 'name'), true) : [];
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
            $offset = $document->offsets[$i];
            foreach ($this->inTag($tag, $document->code->has($offset)) as $problem) {
                if (!$problem->unless || !$this->hasData) {
                    yield $problem->movedBy($offset);
                }
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
        foreach ($this->hasData ? $view->document->nodes : [] as $node) {
            foreach ($this->inTag($node->tag, $view->document->code->has($node->offset)) as $problem) {
                if ($problem->unless && !$view->hasOneOf($node, $problem->unless)) {
                    yield $problem->movedBy($node->offset);
                }
            }
        }
    }

    /** Whether a tag has been explained as one of another language, so that nothing else about it is worth a word. */
    public function isForeign(Document $document, Node $node): bool
    {
        $problems = $this->inTag($node->tag, $document->code->has($node->offset));
        return $problems && isset($this->habits[end($problems)->name]);
    }

    /** What is to be said of a page and all that it includes. @return \Generator<array{View, Problem}> */
    public function inPage(View $page): \Generator
    {
        foreach ($this->pageRules as $rule) {
            yield from $rule->inPage($page);
        }
    }

    /** @return list<Problem> */
    private function inTag(Tag $tag, bool $isInCode): array
    {
        $known = $this->known[$tag] ??= new \ArrayObject();
        return $known[(int) $isInCode] ??= $this->ask($tag, $isInCode && $tag->kind === Kind::Plain);
    }

    /** @return list<Problem> */
    private function ask(Tag $tag, bool $isCode): array
    {
        $problems = [];
        foreach ($this->tagRules as $rule) {
            $isHabit = $rule instanceof Habit;
            $found = $isHabit && $isCode ? [] : [...$rule->inTag($tag)];
            array_push($problems, ...$found);
            if ($isHabit && $found) {
                break;
            }
        }
        return $problems;
    }
}
