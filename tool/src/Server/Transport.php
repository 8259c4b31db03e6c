<?php

namespace TemplateTool\Server;

/**
 * Messages of the Language Server Protocol over two streams: JSON behind a header that gives its length in bytes.
 * What is no message is skipped up to the next header; the other side is told.
 */
final class Transport
{
    private const HEADER = 'Content-Length:';
    private const LONGEST_HEADER = 4096;
    private const LARGEST = 256 << 20;
    private const CHUNK = 1 << 16;

    private string $buffer = '';
    private bool $isOver = false;

    /** How many bytes the buffer must hold before it is worth another look. */
    private int $wanted = 0;

    /** @param resource $input @param resource $output */
    public function __construct(private $input, private $output)
    {
        stream_set_blocking($input, false);
        stream_set_read_buffer($input, 0);
    }

    /** Whether the other side has closed its end, and all that it sent was received. */
    public function isOver(): bool
    {
        return $this->isOver;
    }

    /** The next message. Waits for it, for ever when $seconds is null; null when none has come, or the end. */
    public function receive(?float $seconds): ?array
    {
        $until = $seconds === null ? null : microtime(true) + $seconds;
        while (true) {
            $message = $this->take();
            if ($message !== null) {
                return $message;
            }
            if ($this->isOver || !$this->fill($until)) {
                return null;
            }
        }
    }

    /** @throws Closed when nobody reads any more */
    public function send(array $message): void
    {
        $flags = JSON_UNESCAPED_SLASHES | JSON_UNESCAPED_UNICODE | JSON_INVALID_UTF8_SUBSTITUTE | JSON_THROW_ON_ERROR;
        $text = json_encode(['jsonrpc' => '2.0'] + $message, $flags);
        $text = self::HEADER . ' ' . strlen($text) . "\r\n\r\n$text";
        for ($sent = 0; $sent < strlen($text); $sent += $count) {
            $count = @fwrite($this->output, $sent === 0 ? $text : substr($text, $sent));
            if ($count === false || $count === 0) {
                throw new Closed();
            }
        }
        fflush($this->output);
    }

    /** Reads what is there, or waits for it until then. Returns whether something came. */
    private function fill(?float $until): bool
    {
        $left = $until === null ? null : max(0.0, $until - microtime(true));
        $read = [$this->input];
        $none = null;
        $seconds = $left === null ? null : (int) $left;
        $micros = $left === null ? null : (int) (($left - $seconds) * 1e6);
        $ready = @stream_select($read, $none, $none, $seconds, $micros);
        if (!$ready) {
            // A signal interrupts the wait.
            return $ready === false && ($until === null || microtime(true) < $until);
        }
        $part = @fread($this->input, self::CHUNK);
        if ($part === false || ($part === '' && feof($this->input))) {
            $this->isOver = true;
            return false;
        }
        $this->buffer .= $part;
        return true;
    }

    /** Takes a message out of the buffer. */
    private function take(): ?array
    {
        while (strlen($this->buffer) >= max(1, $this->wanted)) {
            $start = stripos($this->buffer, self::HEADER);
            if ($start === false) {
                $this->buffer = substr($this->buffer, -strlen(self::HEADER));
                $this->wanted = strlen($this->buffer) + 1;
                return null;
            }
            $end = strpos($this->buffer, "\r\n\r\n", $start);
            if ($end === false || $end - $start > self::LONGEST_HEADER) {
                if ($end === false && strlen($this->buffer) - $start <= self::LONGEST_HEADER) {
                    return null;
                }
                $this->buffer = substr($this->buffer, $start + strlen(self::HEADER));
                continue;
            }
            $length = trim(strtok(substr($this->buffer, $start + strlen(self::HEADER), self::LONGEST_HEADER), "\r\n"));
            $body = $end + 4;
            if (!ctype_digit($length) || (int) $length > self::LARGEST) {
                $this->buffer = substr($this->buffer, $body);
                $this->refuse('the length of a message is not a number, or too large');
                continue;
            }
            $this->wanted = $body + (int) $length;
            if (strlen($this->buffer) < $this->wanted) {
                return null;
            }
            $text = substr($this->buffer, $body, (int) $length);
            $this->buffer = substr($this->buffer, $this->wanted);
            $this->wanted = 0;
            $message = json_decode($text, true) ?? json_decode(self::whole($text), true);
            if (is_array($message) && !array_is_list($message)) {
                return $message;
            }
            // A message that was cut short has taken in the beginning of the next one.
            $next = stripos($text, self::HEADER);
            $this->buffer = ($next === false ? '' : substr($text, $next)) . $this->buffer;
            $this->refuse('this is no JSON object');
        }
        return null;
    }

    /** With replacements for halves of characters, which a client may send when somebody edits between them. */
    private static function whole(string $json): string
    {
        $pair = '\\\\u[dD][89abAB][0-9a-fA-F]{2}\\\\u[dD][c-fC-F][0-9a-fA-F]{2}';
        $half = '\\\\u[dD][89a-fA-F][0-9a-fA-F]{2}';
        return preg_replace("~(?:$pair|\\\\[^u])(*SKIP)(*FAIL)|$half~", '\ufffd', $json) ?? $json;
    }

    private function refuse(string $why): void
    {
        $this->send(['id' => null, 'error' => (new ResponseError(ResponseError::PARSE, $why))->toArray()]);
    }
}
