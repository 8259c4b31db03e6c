<?php

namespace TemplateTool\Check;

use TemplateTool\Files\Files;
use TemplateTool\Files\Unreadable;
use TemplateTool\Rules\Data\Sample;
use TemplateTool\Rules\Code\Pasted;
use TemplateTool\Rules\RuleSet;
use TemplateTool\Rules\View;
use TemplateTool\Syntax\Context;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Documents;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Node;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Source;

/** Follows includes, and finds what depends on how a document is reached. */
final class Walker
{
    /** @var array<string, Document> by path */
    private array $documents = [];

    /** @var array<string, true> documents and contexts that are done */
    private array $done = [];

    private RuleSet $rules;
    private ?Sample $sample;

    /** @var array<string, true> the files that the check is about; what is wrong in them is no matter of includes */
    private array $targets = [];

    public function __construct(
        private Options $options,
        private Findings $findings,
        private Files $files,
        private Documents $store,
    ) {
        $this->sample = $options->data === null ? null : new Sample($options->data, $store->engine);
        $this->rules = new RuleSet($options->off, $options->security, $options->data !== null);
    }

    /** @throws Unreadable */
    public function open(string $path): Document
    {
        $key = realpath($path) ?: $path;
        return $this->documents[$key] ??= $this->store->of($this->files->read($path));
    }

    /** What the command line names. @throws Unreadable */
    public function openTarget(string $path): Document
    {
        $key = realpath($path) ?: $path;
        $document = $this->documents[$key] ??= $this->store->of($this->files->readGiven($path));
        $this->targets[$document->source->path] = true;
        return $document;
    }

    /** @param list<string> $paths with all links resolved */
    public function addTargets(array $paths): void
    {
        $this->targets += array_fill_keys($paths, true);
    }

    /** @return array<string, Source> by path */
    public function sources(): array
    {
        return array_map(static fn(Document $document): Source => $document->source, $this->documents);
    }

    public function isDone(Document $document): bool
    {
        return isset($this->done[$document->source->path]);
    }

    /** @return list<string> the paths of the files that a document includes itself */
    public function included(Document $document): array
    {
        $paths = [];
        foreach ($document->nodes as $node) {
            if ($node->tag->kind === Kind::Include && $node->tag->complaint === null) {
                $path = $this->files->find($node->tag->includedName($this->options->data), $document->source->name);
                if ($path !== null && is_file($path)) {
                    $paths[] = realpath($path);
                }
            }
        }
        return $paths;
    }

    public function walk(Document $document, Context $context): void
    {
        $path = $document->source->path;
        $key = $path . "\0" . $context->key();
        if (!isset($this->done[$path])) {
            $this->done[$path] = true;
            $this->report($document, $context);
        }
        foreach ($this->rules->inView($this->view($document, $context)) as $problem) {
            $this->findings->add($document, $problem, $context);
        }
        foreach ($context->isIncluded() ? [] : $this->rules->inPage($this->view($document, $context)) as [$view, $problem]) {
            $this->findings->add($view->document, $problem, $this->wayTo($view->document, $view->context));
        }
        foreach ($document->nodes as $node) {
            if ($node->tag->kind === Kind::Include && $node->tag->complaint === null && !$node->isCut()) {
                $this->include($document, $node, $context);
            }
        }
        $this->done[$key] = true;
    }

    private function view(Document $document, Context $context): View
    {
        $open = function (string $path): ?Document {
            try {
                return $this->open($path);
            } catch (Unreadable) {
                return null;
            }
        };
        $options = $this->options;
        return new View(
            $document,
            $context,
            $this->store->engine,
            $options->data,
            $options->vouched,
            $this->sample,
            $this->files,
            $open,
            $this->rules->isForeign(...)
        );
    }

    /** Reports what is wrong with a document however it is reached. */
    private function report(Document $document, Context $context): void
    {
        $way = $this->wayTo($document, $context);
        foreach (Pasted::noted($document) as $problem) {
            $this->findings->add($document, $problem, $way);
        }
        foreach ($this->rules->inDocument($document) as $problem) {
            $this->findings->add($document, $problem, $way);
        }
    }

    /** What is wrong in a file that the check is about is no matter of how it is reached. */
    private function wayTo(Document $document, Context $context): ?Context
    {
        return isset($this->targets[$document->source->path]) ? null : $context;
    }

    private function include(Document $document, Node $node, Context $context): void
    {
        $tag = $node->tag;
        $name = $tag->includedName($this->options->data);
        if (isset($context->names[$name])) {
            $this->fail($document, $node, $context, $this->store->engine->circleComplaint($tag));
            return;
        }
        $path = $this->files->find($name, $context->page);
        if ($path !== null && is_dir($path)) {
            $note = "\"$path\" is a folder: it can be opened as a file can, but there is no text to read in it";
            $this->fail($document, $node, $context, $this->store->engine->fileComplaint($path), [$note]);
        } elseif ($path !== null) {
            $this->follow($document, $node, $context, $path, $name);
        }
    }

    private function follow(Document $document, Node $node, Context $context, string $path, string $name): void
    {
        try {
            $included = $this->open($path);
        } catch (Unreadable $problem) {
            $message = 'the included file can\'t be checked: ' . $problem->getMessage();
            $offset = $node->offset + $node->tag->argumentOffset;
            $problem = new Problem('missing-include', $message, $offset, strlen($node->tag->argument));
            $this->findings->add($document, $problem, $context);
            return;
        }
        $inside = $context->through($document, $node, $name, $this->options->data !== null);
        if (!isset($this->done[$included->source->path . "\0" . $inside->key()])) {
            $this->walk($included, $inside);
        }
    }

    /** @param list<string> $notes */
    private function fail(
        Document $document,
        Node $node,
        Context $context,
        ?string $complaint,
        array $notes = []
    ): void {
        if ($complaint !== null) {
            $problem = new Problem(null, $complaint, $node->offset, strlen($node->tag->source), $notes);
            $this->findings->add($document, $problem, $context);
        }
    }
}
