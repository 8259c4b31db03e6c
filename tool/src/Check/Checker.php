<?php

namespace TemplateTool\Check;

use TemplateTool\Files\Files;
use TemplateTool\Files\Unreadable;
use TemplateTool\Syntax\Context;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Documents;
use TemplateTool\Syntax\Source;

/**
 * Finds what is wrong in templates.
 *
 *     $findings = (new Checker(new Options(security: true)))->checkText('Hello {name');
 *     foreach ($findings as $finding) {
 *         echo "$finding->line:$finding->column: $finding->severity: $finding->message\n";
 *     }
 *
 * It never opens a file but those that lie in the include path or are named with their path in an include tag, and
 * never a stream. Needs the extension.
 */
final class Checker
{
    private Files $files;

    /** @var array<string, Source> */
    private array $sources = [];

    /**
     * $documents: to be shared by checkers that follow each other, so that nothing is cut twice.
     * $texts: those that count in place of what is in the files, by path with all links resolved.
     *
     * @param array<string, string> $texts
     */
    public function __construct(
        private Options $options = new Options(),
        private Documents $documents = new Documents(),
        array $texts = [],
    ) {
        $this->files = new Files($options->includePath, $texts, $options->memory);
    }

    /**
     * Checks a template given as text, and the files that it includes. $name is what findings call it.
     *
     * @return list<Finding> by file and place
     */
    public function checkText(string $text, string $name = 'template'): array
    {
        $findings = new Findings($this->options);
        $walker = $this->walker($findings);
        $walker->walk($this->documents->of(new Source($name, $text)), Context::top([$text]));
        $this->sources = $walker->sources();
        return $findings->sorted();
    }

    /**
     * Checks template files and what they include. Those that another one includes are looked at from there, inside
     * the loops of that place. $onFile is called for each file that has been read. $more: files that the check is about
     * as well, though they are looked at only from where they are included.
     *
     * @param list<string> $paths
     * @param list<string> $more with all links resolved
     * @return list<Finding> by file and place
     */
    public function checkFiles(array $paths, ?callable $onFile = null, array $more = []): array
    {
        $findings = new Findings($this->options);
        $walker = $this->walker($findings);
        $walker->addTargets($more);
        $documents = [];
        $included = [];
        foreach ($paths as $path) {
            try {
                $document = $walker->openTarget($path);
                $documents[] = $document;
                $included += array_fill_keys(array_diff($walker->included($document), [$document->source->path]), true);
            } catch (Unreadable $problem) {
                $findings->addUnreadable($problem);
            }
            $onFile && $onFile($path);
        }
        $pages = array_filter($documents, static fn(Document $each): bool => !isset($included[$each->source->path]));
        foreach ([...$pages, ...$documents] as $document) {
            // Files that include each other in a circle are left for the second round.
            if (!$walker->isDone($document)) {
                $page = $document->source;
                $walker->walk($document, Context::top($this->files->namesOf($page->path), $page->name));
            }
        }
        $this->sources = $walker->sources();
        return $findings->sorted();
    }

    /** The structure of a template given as text; see Tree. */
    public function treeOfText(string $text, string $name = 'template'): array
    {
        $walker = $this->walker(new Findings($this->options));
        $tree = new Tree($this->documents->engine, $walker, $this->files, $this->options->data);
        return $tree->of($this->documents->of(new Source($name, $text)), Context::top([$text]));
    }

    /**
     * The structure of a template file; see Tree.
     *
     * @throws Unreadable
     */
    public function treeOfFile(string $path): array
    {
        $walker = $this->walker(new Findings($this->options));
        $document = $walker->openTarget($path);
        $tree = new Tree($this->documents->engine, $walker, $this->files, $this->options->data);
        return $tree->of($document, Context::top($this->files->namesOf($document->source->path), $path));
    }

    /** @return array<string, Source> by path: the files that have been read */
    public function sources(): array
    {
        return $this->sources;
    }

    /** @return list<string> all paths at which included files were looked for */
    public function looked(): array
    {
        return $this->files->looked();
    }

    private function walker(Findings $findings): Walker
    {
        return new Walker($this->options, $findings, $this->files, $this->documents);
    }
}
