<?php

namespace TemplateTool\Check;

/** Follows includes, and finds what depends on how a document is reached. */
final class Walker
{
    private const MOST_LINES = 12;

    /** @var array<string, Document> by path */
    private array $documents = [];

    /** @var array<string, true> documents and contexts that are done */
    private array $done = [];

    private DataRules $dataRules;

    /** @var array<string, true> the files that the check is about; what is wrong in them is no matter of includes */
    private array $targets = [];

    public function __construct(
        private Options $options,
        private Findings $findings,
        private Files $files,
        private Engine $engine,
        private TagReader $reader,
    ) {
        $this->dataRules = new DataRules($engine, $options->data ?? []);
    }

    /** @throws Unreadable */
    public function open(string $path): Document
    {
        $key = realpath($path) ?: $path;
        return $this->documents[$key] ??= new Document($this->files->read($path), $this->engine, $this->reader);
    }

    /** @throws Unreadable */
    public function openTarget(string $path): Document
    {
        $document = $this->open($path);
        $this->targets[$document->source->path] = true;
        return $document;
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
                $path = $this->files->find($this->includedName($node->tag), $document->source->name);
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
        $this->checkLoops($document, $context);
        foreach ($document->nodes as $node) {
            if ($node->tag->complaint !== null) {
                continue;
            }
            if ($node->tag->kind === Kind::Include) {
                $this->include($document, $node, $context);
            } elseif ($this->options->data !== null) {
                foreach ($this->dataRules->problems($document, $node, $context) as $problem) {
                    $this->findings->add($document, $problem, $context);
                }
            }
        }
        $this->done[$key] = true;
    }

    /** Reports what is wrong with a document however it is reached. */
    private function report(Document $document, Context $context): void
    {
        $way = isset($this->targets[$document->source->path]) ? null : $context;
        foreach ($document->problems as $problem) {
            $this->findings->add($document, $problem, $way);
        }
        foreach ($this->options->security ? (new SecurityRules())->problems($document) : [] as $node => $problem) {
            $isNumber = $problem->name === 'unescaped-value' && $this->options->data !== null
                && $this->dataRules->printsNumbers($document, $node, $context);
            if (!$isNumber) {
                $this->findings->add($document, $problem, $way);
            }
        }
    }

    /** Reports each loop that isn't there once, with all the lines that refer to it. */
    private function checkLoops(Document $document, Context $context): void
    {
        $missing = [];
        foreach ($document->nodes as $node) {
            foreach ($node->tag->complaint === null ? $node->tag->references : [] as $reference) {
                if (!$reference->isPath() && !$context->hasLoop($document, $node, $reference->namespace)) {
                    $missing[$reference->namespace][] = [$reference, $node->offset + $reference->offset];
                }
            }
        }
        foreach ($missing as $name => $places) {
            [[$reference, $offset]] = $places;
            $isOutside = (string) $name === '';
            $this->findings->add($document, new Problem(
                $isOutside ? 'outside-loop' : 'unknown-loop',
                $isOutside
                    ? "\"$reference->text\" stands outside of every loop, so it finds nothing"
                    : "\"$reference->text\" finds nothing: no loop around it is named \"$name\"",
                $offset,
                strlen($reference->text),
                $this->loopNotes($document, $context, array_slice($places, 1))
            ), $context);
        }
    }

    /** @return list<string> */
    private function loopNotes(Document $document, Context $context, array $more): array
    {
        $lines = [];
        foreach ($more as [, $offset]) {
            $lines[$document->source->position($offset)[0]] = true;
        }
        $shown = implode(', ', array_slice(array_keys($lines), 0, self::MOST_LINES));
        $notes = [];
        if ($more) {
            $count = count($more) === 1 ? 'so does one more reference' : 'so do ' . count($more) . ' more references';
            $notes[] = "$count, in line" . (count($lines) === 1 ? '' : 's') . " $shown"
                . (count($lines) > self::MOST_LINES ? ' and further down' : '');
        }
        if (!$context->isIncluded()) {
            $notes[] = 'if this template is included inside such a loop, check the one that includes it, or the folder';
        }
        return $notes;
    }

    private function include(Document $document, Node $node, Context $context): void
    {
        $tag = $node->tag;
        $name = $this->includedName($tag);
        if ($this->options->security && $this->isFromData($tag, $name, $context)) {
            $message = "the data decides which file is included: \"$tag->argument\" may name any file that PHP may read";
            $this->warn($document, $node, $context, 'include-from-data', $message);
        }
        if (isset($context->names[$name])) {
            $this->fail($document, $node, $context, $this->engine->circleComplaint($tag));
            return;
        }
        $path = $this->files->find($name, $context->page);
        if ($path === null) {
            // A path into the data: what it holds isn't known here.
            $isUnknown = $this->options->data === null && str_contains($name, '::');
            if ($name !== '' && !$isUnknown && !Files::isStream($name)) {
                $message = "there is no file \"$name\" in the include path, so nothing is included";
                $beside = dirname($document->source->name);
                $notes = $document->source->path !== '' && is_file("$beside/$name")
                    ? ["it lies beside this template, where it isn't looked for without --include-path $beside"]
                    : [];
                $this->warn($document, $node, $context, 'missing-include', $message, $notes);
            }
        } elseif (is_dir($path)) {
            $this->fail($document, $node, $context, $this->engine->fileComplaint($path));
        } else {
            $this->follow($document, $node, $context, $path, $name);
        }
    }

    private function follow(Document $document, Node $node, Context $context, string $path, string $name): void
    {
        try {
            $included = $this->open($path);
        } catch (Unreadable $problem) {
            $message = 'the included file can\'t be checked: ' . $problem->getMessage();
            $this->warn($document, $node, $context, 'missing-include', $message);
            return;
        }
        $inside = $context->through($document, $node, $name, $this->options->data !== null);
        if (!isset($this->done[$included->source->path . "\0" . $inside->key()])) {
            $this->walk($included, $inside);
        }
    }

    /** The name of the file that an include tag asks for: the data may hold it under the argument. */
    public function includedName(Tag $tag): string
    {
        $found = $this->options->data === null ? null : $tag->references[0]->find($this->options->data);
        return $found && is_string($found[0]) ? $found[0] : $tag->argument;
    }

    private function isFromData(Tag $tag, string $name, Context $context): bool
    {
        if ($this->options->data !== null) {
            return $name !== $tag->argument || $tag->references[0]->find($this->options->data) === [$name];
        }
        // A name without a dot is hardly that of a file.
        return str_contains($name, '::')
            || (!str_contains($name, '.') && $this->files->find($name, $context->page) === null);
    }

    private function fail(Document $document, Node $node, Context $context, ?string $complaint): void
    {
        if ($complaint !== null) {
            $problem = new Problem(null, $complaint, $node->offset, strlen($node->tag->source));
            $this->findings->add($document, $problem, $context);
        }
    }

    private function warn(
        Document $document,
        Node $node,
        Context $context,
        string $name,
        string $message,
        array $notes = []
    ): void {
        $offset = $node->offset + $node->tag->argumentOffset;
        $problem = new Problem($name, $message, $offset, strlen($node->tag->argument), $notes);
        $this->findings->add($document, $problem, $context);
    }
}
