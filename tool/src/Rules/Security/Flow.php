<?php

namespace TemplateTool\Rules\Security;

use TemplateTool\Page\Escaping as Given;
use TemplateTool\Page\Html;
use TemplateTool\Page\Risk;
use TemplateTool\Rules\View;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Node;

/** Follows pages through sections, loops and included files, and looks at each value in its place. */
final class Flow
{
    /** What is nested deeper isn't looked at. */
    private const DEEPEST = 300;
    private const MOST_ROUNDS = 4;

    /** From so many tags on, the rounds of nested loops counted, a loop is followed once only. */
    private const MOST_STEPS = 200000;

    /** How much of the text behind a value may decide about it. */
    private const FOLLOWING = 300;

    /** @var array<string, States> how included files end, by file and the state in which they begin */
    private array $ends = [];

    /** @var array<string, array{View, Node, Risk}> by place */
    private array $found = [];

    private int $steps = 0;

    /** @return list<array{View, Node, Risk}> what isn't known already from other pages */
    public function risks(View $page): array
    {
        $this->found = [];
        $this->steps = 0;
        $this->document($page, States::of(Html::ofFile($page->document->source->name)));
        return array_values($this->found);
    }

    private function document(View $view, States $states): States
    {
        $next = 0;
        return $this->part($view, $next, 0, strlen($view->document->source->text), $states);
    }

    /** Follows a part of a document; $next: the number of the first node in it, then of the first behind it. */
    private function part(View $view, int &$next, int $start, int $end, States $states): States
    {
        $nodes = $view->document->nodes;
        while (isset($nodes[$next]) && $nodes[$next]->offset < $end) {
            $node = $nodes[$next];
            $states = $states->read($this->text($view->document, $start, $node->offset));
            $this->steps++;
            if ($node->tag->swallows) {
                $next = count($nodes);
                return $states;
            }
            $start = $node->offset + strlen($node->tag->source);
            if ($node->tag->kind->end()) {
                $states = $this->block($view, $next, $node->endOffset ?? $end, $states);
                $start = $node->end ?? $end;
            } else {
                $states = $this->tag($view, $next, $states);
                $next++;
            }
        }
        return $states->read($this->text($view->document, $start, $end));
    }

    /** Literal text as the engine prints it. */
    private function text(Document $document, int $start, int $end): string
    {
        return strtr(substr($document->source->text, $start, max(0, $end - $start)), ['{{' => '{', '}}' => '}']);
    }

    private function block(View $view, int &$next, int $end, States $states): States
    {
        $node = $view->document->nodes[$next];
        $body = $node->offset + strlen($node->tag->source);
        $first = ++$next;
        if ($node->depth >= self::DEEPEST || ($node->tag->kind === Kind::Optional && $node->tag->argument === '')) {
            while (isset($view->document->nodes[$next]) && $view->document->nodes[$next]->offset < $end) {
                $next++;
            }
            return $states;
        }
        if ($node->tag->kind->isOptional()) {
            $holds = $node->tag->kind === Kind::Optional;
            $hidden = $states->assuming($node->tag->argument, !$holds);
            $shown = $states->assuming($node->tag->argument, $holds);
            return $hidden->with($this->part($view, $next, $body, $end, $shown));
        }
        $new = $states;
        $rounds = $this->steps < self::MOST_STEPS ? self::MOST_ROUNDS : 1;
        for ($round = 0; $round < $rounds && !$new->isEmpty(); $round++) {
            $next = $first;
            $new = $this->part($view, $next, $body, $end, $new->inNextRound())->inNextRound()->without($states);
            $states = $states->with($new);
        }
        if ($round === 0) {
            $this->part($view, $next, $body, $end, $new);
        }
        return $states;
    }

    private function tag(View $view, int $number, States $states): States
    {
        $node = $view->document->nodes[$number];
        $tag = $node->tag;
        if ($tag->complaint !== null) {
            return $states;
        }
        if ($tag->kind === Kind::Include) {
            return $this->include($view, $node, $states);
        }
        if ($tag->references) {
            $this->look($view, $number, $states);
        }
        $printed = $tag->references ? $states->value() : new States();
        if ($tag->kind === Kind::Plain && ($tag->fallback !== null || !$tag->references)) {
            $printed = $printed->with($states->read($tag->fallback ?? $tag->source));
        }
        return $printed;
    }

    private function look(View $view, int $number, States $states): void
    {
        $node = $view->document->nodes[$number];
        $place = $view->document->source->name . "\0" . $node->offset;
        if (isset($this->found[$place])) {
            return;
        }
        $given = Given::of($node->tag->kind->value);
        $behind = $node->offset + strlen($node->tag->source);
        $following = substr($view->document->source->text, $behind, self::FOLLOWING);
        foreach ($states->pages() as $html) {
            $risk = $html->risk($given, $following);
            if ($risk) {
                $isHarmless = Vouching::has($view, $number)
                    || ($risk->name !== 'value-as-name' && $view->printsNumbers($node));
                if (!$isHarmless) {
                    $this->found[$place] = [$view, $node, $risk];
                }
                return;
            }
        }
    }

    private function include(View $view, Node $node, States $states): States
    {
        $included = $view->included($node);
        if (!$included) {
            return $states;
        }
        $after = new States();
        foreach ($states->byKey() as $key => [$html, $conditions]) {
            $key = "{$included->document->source->path}\0" . dirname($view->context->page) . "\0$key";
            if (!isset($this->ends[$key])) {
                $this->ends[$key] = States::of($html);
                $this->ends[$key] = $this->document($included, $this->ends[$key]);
            }
            foreach ($this->ends[$key]->pages() as $end) {
                $after = $after->with(States::of($end, $conditions));
            }
        }
        return $after;
    }
}
