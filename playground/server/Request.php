<?php

namespace Playground;

use TemplateTool\Console\Failure;
use TemplateTool\Console\JsonText;

/** The templates and the data that a browser sends: {"files": {"page.tpl": "…", …}, "data": "…"}. */
final class Request
{
    public const PAGE = 'page.tpl';
    public const LARGEST = 256 << 10;
    private const MOST_FILES = 40;
    private const NAME = '~^(?=.{1,80}\z)(?:[A-Za-z0-9_][A-Za-z0-9_.-]*/){0,4}[A-Za-z0-9_][A-Za-z0-9_.-]*\z~';

    /** @param array<string, string> $files */
    private function __construct(public readonly array $files, public readonly string $data)
    {
    }

    /** @throws Refusal */
    public static function read(): self
    {
        // Browsers ask the server before another site's page may send this type.
        if (!str_starts_with($_SERVER['CONTENT_TYPE'] ?? '', 'application/json')) {
            throw new Refusal(415, 'The request must be of the type application/json.');
        }
        $body = (int) ($_SERVER['CONTENT_LENGTH'] ?? 0) > self::LARGEST
            ? null
            : file_get_contents('php://input', false, null, 0, self::LARGEST + 1);
        if ($body === null || strlen($body) > self::LARGEST) {
            throw new Refusal(413, sprintf('That is too much: templates and data may have %d kB.', self::LARGEST >> 10));
        }
        $content = json_decode($body, true, 16);
        $files = $content['files'] ?? null;
        $data = $content['data'] ?? null;
        if (!is_array($files) || !is_string($data) || !isset($files[self::PAGE])) {
            throw new Refusal(400, 'The request holds no templates, or no data.');
        }
        if (count($files) > self::MOST_FILES) {
            throw new Refusal(413, sprintf('That is too much: there may be %d files.', self::MOST_FILES));
        }
        foreach ($files as $name => $text) {
            if (!is_string($text) || preg_match(self::NAME, $name) !== 1) {
                throw new Refusal(422, 'Names of files consist of letters, digits, "_", "-", "." and "/", and no part'
                    . ' of one begins with a dot.');
            }
        }
        self::checkData($data);
        return new self($files, $data);
    }

    /** @throws Refusal */
    private static function checkData(string $data): void
    {
        try {
            $value = JsonText::decode($data, 'data.json');
        } catch (Failure $failure) {
            throw new Refusal(422, $failure->getMessage());
        }
        if (!is_array($value)) {
            throw new Refusal(422, 'data.json:1:1: the data must be an object: {"name": "Ann"}');
        }
    }
}
