<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Output\OutputInterface;
use TemplateTool\Report\Paint;
use TemplateTool\Rules\Catalogue;
use TemplateTool\Rules\Warning;

final class ExplainCommand extends Command
{
    protected function configure(): void
    {
        $this->setName('explain')
            ->setDescription('Tells what a warning of "check" is about')
            ->addArgument('name', InputArgument::OPTIONAL, 'The name of the warning; without it, all are listed')
            ->setHelp('Tells what a warning is about, with an example of it and one of how to write it instead.');
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestArgumentValuesFor('name')) {
            $suggestions->suggestValues(Catalogue::names());
        }
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $paint = new Paint($output->isDecorated());
        $name = $input->getArgument('name');
        if ($name !== null && !isset(Catalogue::all()[$name])) {
            throw new Failure("explain $name: there is no such warning; " . Catalogue::suggestion($name));
        }
        $text = $name === null ? $this->list($paint) : $this->one($name, Catalogue::all()[$name], $paint);
        $output->write($text, false, OutputInterface::OUTPUT_RAW);
        return Start::GOOD;
    }

    private function list(Paint $paint): string
    {
        $width = max(array_map(strlen(...), Catalogue::names()));
        $text = '';
        foreach ($this->groups() as $title => $group) {
            $text .= ($text === '' ? '' : "\n") . $paint($title, '', 'bold') . "\n";
            foreach ($group as $name => $warning) {
                $text .= '  ' . $paint(str_pad($name, $width), 'yellow') . "  $warning->summary\n";
            }
        }
        return $text;
    }

    private function groups(): array
    {
        $groups = ['Always' => [], 'With --security' => [], 'With sample data' => []];
        foreach (Catalogue::all() as $name => $warning) {
            $groups[match (true) {
                $warning->isSecurity => 'With --security',
                $warning->data !== null => 'With sample data',
                default => 'Always',
            }][$name] = $warning;
        }
        return $groups;
    }

    private function one(string $name, Warning $warning, Paint $paint): string
    {
        $text = $paint($name, 'yellow', 'bold') . ": $warning->summary\n\n$warning->why\n\n"
            . $paint('Instead of', '', 'bold') . "\n\n    $warning->bad\n\n"
            . $paint('write', '', 'bold') . "\n\n    $warning->good\n";
        if ($warning->isSecurity) {
            $text .= "\nOnly \"template check --security\" looks for this.\n";
        }
        if ($warning->data !== null) {
            $json = json_encode($warning->data, JSON_UNESCAPED_SLASHES);
            $text .= "\nOnly \"template check --data\" looks for this. The data of the example: $json\n";
        }
        return $text;
    }
}
