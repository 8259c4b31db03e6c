<?php

namespace TemplateTool\Report;

use TemplateTool\Check\Finding;
use TemplateTool\Rules\Catalogue;
use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Source;

/** Findings in SARIF 2.1.0, which code scanning services read. */
final class Sarif
{
    private const SCHEMA = 'https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json';
    private const ENGINE = 'engine';

    /** @param list<Finding> $findings */
    public static function make(array $findings): string
    {
        $rules = self::rules();
        $indexes = array_flip(array_column($rules, 'id'));
        return Report::json([
            '$schema' => self::SCHEMA,
            'version' => '2.1.0',
            'runs' => [[
                'tool' => ['driver' => [
                    'name' => 'template',
                    'version' => phpversion('template') ?: 'unknown',
                    'rules' => $rules,
                ]],
                'columnKind' => 'unicodeCodePoints',
                'results' => array_map(static fn(Finding $finding): array => self::result($finding, $indexes), $findings),
            ]],
        ]) . "\n";
    }

    /** @return list<array> */
    private static function rules(): array
    {
        $rules = [
            self::rule(self::ENGINE, 'an error of a template, with which no page is made'),
            self::rule(Finding::UNREADABLE, 'a file that can\'t be read'),
        ];
        foreach (Catalogue::all() as $warning) {
            $help = "$warning->why\n\nInstead of\n\n    $warning->bad\n\nwrite\n\n    $warning->good";
            $rules[] = self::rule($warning->name, $warning->summary) + ['help' => ['text' => $help]];
        }
        return $rules;
    }

    private static function rule(string $id, string $summary): array
    {
        return ['id' => $id, 'shortDescription' => ['text' => ucfirst($summary) . '.']];
    }

    private static function result(Finding $finding, array $indexes): array
    {
        $id = $finding->name ?? self::ENGINE;
        $result = [
            'ruleId' => $id,
            'ruleIndex' => $indexes[$id],
            'level' => $finding->severity,
            'message' => ['text' => implode("\n", [$finding->message, ...$finding->notes])],
            'locations' => [['physicalLocation' => self::place($finding->source->name, [
                'startLine' => $finding->line,
                'startColumn' => $finding->column,
                'endLine' => $finding->endLine,
                'endColumn' => $finding->endColumn,
            ])]],
        ];
        foreach ($finding->includedFrom as ['file' => $file, 'line' => $line, 'column' => $column]) {
            $result['relatedLocations'][] = [
                'message' => ['text' => 'included from here'],
                'physicalLocation' => self::place($file, ['startLine' => $line, 'startColumn' => $column]),
            ];
        }
        if ($finding->edits) {
            $result['fixes'] = [['artifactChanges' => [[
                'artifactLocation' => self::location($finding->source->name),
                'replacements' => array_map(
                    static fn(Edit $edit): array => self::replacement($finding->source, $edit),
                    $finding->edits
                ),
            ]]]];
        }
        return $result;
    }

    private static function place(string $file, array $region): array
    {
        return ['artifactLocation' => self::location($file), 'region' => $region];
    }

    private static function location(string $file): array
    {
        return ['uri' => implode('/', array_map(rawurlencode(...), explode('/', $file)))];
    }

    private static function replacement(Source $source, Edit $edit): array
    {
        [$line, $column] = $source->position($edit->offset);
        [$endLine, $endColumn] = $source->position($edit->offset + $edit->length);
        return [
            'deletedRegion' => [
                'startLine' => $line,
                'startColumn' => $column,
                'endLine' => $endLine,
                'endColumn' => $endColumn,
            ],
            'insertedContent' => ['text' => $edit->text],
        ];
    }
}
