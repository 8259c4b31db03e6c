<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\InputOption;
use TemplateTool\Project\Project;
use TemplateTool\Rules\Catalogue;

/** The man page, made from what the commands say about themselves. */
final class ManPage
{
    private const COMMANDS = ['render', 'check', 'tree', 'needs', 'explain', 'literal', 'lsp', 'completion'];

    public static function make(): string
    {
        $application = new Application();
        $version = $application->getVersion();
        $page = ".\\\" Made by scripts/manpage from the help of the commands.\n"
            . ".TH TEMPLATE 1 \"\" \"template $version\" \"User Commands\"\n"
            . ".SH NAME\ntemplate \\- render and check templates\n.SH SYNOPSIS\n";
        $commands = array_map($application->get(...), self::COMMANDS);
        foreach ($commands as $command) {
            $page .= '.B template ' . self::escape($command->getName()) . "\n"
                . self::escape(trim(substr($command->getSynopsis(true), strlen($command->getName())))) . "\n.br\n";
        }
        $description = 'Renders the templates of the PHP extension "template" and finds what is wrong in them.';
        $page .= ".SH DESCRIPTION\n" . self::text($description) . ".SH COMMANDS\n";
        foreach ($commands as $command) {
            $page .= self::command($command);
        }
        $page .= ".SH WARNINGS\n" . self::text('What "template check" warns about. "template explain" tells more.');
        foreach (Catalogue::all() as $name => $warning) {
            $condition = $warning->isSecurity ? ' (with --security)' : '';
            $page .= ".TP\n.B " . self::escape((string) $name) . "\n" . self::escape($warning->summary . $condition) . "\n";
        }
        $page .= ".SH OPTIONS\n" . self::text('All commands know --help, --quiet, --ansi and --no-ansi.')
            . ".SH PROJECT FILE\n" . self::text(<<<'TEXT'
                "template check", "needs" and "lsp" look for a file template.json in the folder of the templates and above it.
                It is a JSON object with any of these settings. Paths count from its folder; template.schema.json, beside the
                tool's classes, is its JSON Schema.
                TEXT);
        foreach (Project::schema()['properties'] as $name => $property) {
            $page .= self::item($name, $property['description']);
        }
        $statuses = [
            'All is well.',
            'A template has an error, or a check has found something: with --fail-on=error an error, else anything.',
            'Wrong usage, a broken project file, or a file that can\'t be read.',
        ];
        $page .= ".SH EXIT STATUS\n" . implode('', array_map(self::item(...), array_keys($statuses), $statuses));
        $page .= ".SH ENVIRONMENT\n" . self::item('NO_COLOR', 'When it is not empty, nothing is coloured. --ansi counts more')
            . self::item('COLUMNS', 'How wide the help is printed, else as wide as the terminal')
            . ".SH FILES\n" . self::item(Project::FILE, 'The project file')
            . self::item(Project::BASELINE, 'Findings that are known and left out; "template check --write-baseline" makes it');
        return $page . ".SH SEE ALSO\n.BR php (1)\n";
    }

    private static function command(Command $command): string
    {
        $page = '.SS template ' . self::escape($command->getName()) . "\n"
            . self::text($command->getDescription() . '.') . self::text($command->getHelp());
        $definition = $command->getNativeDefinition();
        foreach ($definition->getArguments() as $argument) {
            $page .= self::item(strtoupper($argument->getName()), $argument->getDescription());
        }
        foreach ($definition->getOptions() as $option) {
            $page .= self::item(self::option($option), $option->getDescription());
        }
        return $page;
    }

    private static function option(InputOption $option): string
    {
        $names = $option->getShortcut() === null ? '' : "-{$option->getShortcut()}, ";
        return $names . "--{$option->getName()}" . ($option->acceptValue() ? '=' . strtoupper($option->getName()) : '');
    }

    private static function item(string|int $name, string $text): string
    {
        return ".TP\n.B " . self::escape((string) $name) . "\n" . self::escape(rtrim($text, '.') . '.') . "\n";
    }

    /** Paragraphs, and examples, which are indented. */
    private static function text(string $text): string
    {
        $page = '';
        foreach (preg_split('/\n\s*\n/', $text, -1, PREG_SPLIT_NO_EMPTY) as $paragraph) {
            $isExample = $paragraph[0] === ' ';
            $paragraph = self::escape($isExample ? preg_replace('/^ +/m', '', $paragraph) : $paragraph);
            $page .= ".PP\n" . ($isExample ? ".RS 4\n.nf\n$paragraph\n.fi\n.RE\n" : "$paragraph\n");
        }
        return $page;
    }

    private static function escape(string $text): string
    {
        $text = strtr(preg_replace('~</?(?:info|comment)>~', '', $text), ['\\' => '\\e', '-' => '\\-']);
        return preg_replace('/^(?=[.\'])/m', '\\\\&', $text);
    }
}
