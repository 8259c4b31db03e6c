<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\OutputInterface;
use TemplateTool\Files\Files;
use TemplateTool\Files\Given;
use TemplateTool\Json\Broken;

final class RenderCommand extends Command
{
    protected function configure(): void
    {
        $several = InputOption::VALUE_REQUIRED | InputOption::VALUE_IS_ARRAY;
        $this->setName('render')
            ->setDescription('Renders a page')
            ->addArgument('page', InputArgument::OPTIONAL, 'The template')
            ->addArgument('data', InputArgument::OPTIONAL, 'The data. ' . Data::JSON_HELP)
            ->addOption('output', 'o', InputOption::VALUE_REQUIRED, 'A file to write to, else the standard output')
            ->addOption('string', null, InputOption::VALUE_REQUIRED, 'A template given as text, in place of a page')
            ->addOption('include-path', 'I', $several, 'A folder in which included files are looked for (else that of'
                . ' the page)')
            ->addOption('watch', 'w', InputOption::VALUE_NONE, 'Renders again whenever a file that takes part changes')
            ->addOption('stats', null, InputOption::VALUE_NONE, 'Prints time, memory, bytes and files');
        Data::addOptions($this);
        $this->setHelp(<<<'HELP'
            Renders a template with data and prints the page:

              <info>template render page.tpl data.json -o page.html</info>
              <info>template render page.tpl --data-php data.php --watch -o page.html</info>
              <info>template render --string 'Hello {user::name}, {count}' --set user::name=Ann --set count:=3</info>

            Values of <info>--set</info> count more than those of <info>--data-php</info>, and these more than those of
            the JSON file. An error of a template is printed with its line and column, and nothing is written.

            The exit status is 0 when all went well, 1 for an error of a template, and 2 for wrong usage or data that
            can't be read.
            HELP);
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $page = $input->getArgument('page');
        $json = $input->getArgument('data');
        $text = $input->getOption('string');
        if ($text !== null && $page !== null) {
            // With --string the only argument is the data.
            if ($json !== null) {
                throw new Failure('render: give a page or --string, not both');
            }
            [$page, $json] = [null, $page];
        }
        if ($text === null && $page === null) {
            throw new Failure('render: give a page or --string');
        }
        if ($page !== null && Given::isStream($page)) {
            if ($input->getOption('watch')) {
                throw new Failure('render --watch: ' . Given::name($page) . ' is read once, and never changes');
            }
            $text = Given::text($page) ?? throw new Failure(Given::name($page) . ': reading failed');
            $page = null;
        }
        $problem = $page === null ? null : Files::problem($page) ?? (is_file($page) ? null : 'not a plain file');
        if ($problem !== null) {
            throw new Failure("$page: $problem");
        }
        $renderer = new Renderer(
            $page,
            $text,
            IncludePath::of($input, []),
            $output->isDecorated()
        );
        if ($input->getOption('watch')) {
            $this->watch($input, $renderer, $json);
        }
        return $this->once($input, $renderer, Data::read($input, $json) ?? []);
    }

    private function once(InputInterface $input, Renderer $renderer, array $data): int
    {
        $page = $renderer->render($data);
        if ($page === null) {
            return Start::FINDINGS;
        }
        $file = $input->getOption('output');
        $written = $file === null ? @fwrite(STDOUT, $page) : @file_put_contents($file, $page);
        if ($written !== strlen($page)) {
            throw new Failure(($file ?? 'standard output') . ': writing failed');
        }
        if ($input->getOption('stats')) {
            fwrite(STDERR, $renderer->stats($data));
        }
        return Start::GOOD;
    }

    /** Ends only with the program. */
    private function watch(InputInterface $input, Renderer $renderer, ?string $json): never
    {
        if ($json !== null && Given::isStream($json)) {
            throw new Failure('render --watch: the data can\'t come from the standard input, which is read once');
        }
        $files = Data::files($input, $json);
        Watch::forever([...$files, ...$renderer->watched([])], function () use ($input, $renderer, $json, $files): array {
            $data = [];
            try {
                $data = Data::read($input, $json) ?? [];
                $status = $this->once($input, $renderer, $data);
            } catch (Failure | Broken $failure) {
                $status = Start::FAILURE;
                fwrite(STDERR, 'template: ' . $failure->getMessage() . "\n");
            }
            $watched = array_values([...$files, ...$renderer->watched($data)]);
            if ($status === Start::GOOD) {
                $count = count(array_filter($watched, is_file(...)));
                fwrite(STDERR, sprintf("%s rendered; watching %d files, Ctrl-C ends\n", date('H:i:s'), $count));
            }
            return $watched;
        });
    }
}
