<?php

// The classes of the values and streams that an input speaks of; input.php tells what they are for.

class Typed
{
    public int $a = 1;
    public string $unset;
    protected array $b = ['x' => 1];
    private ?Typed $c = null;
    public array|string $d = [[1], [2]];
}

enum Suit: string
{
    case Hearts = 'H';
    case Spades = 'S';
}

class Deed
{
    public array $x = [1, 2];

    public function __construct(private string $deed, private string $text, private bool $late)
    {
    }

    public function __toString(): string
    {
        $this->late || Files::$input->do($this->deed);
        return $this->text;
    }

    public function __destruct()
    {
        if ($this->late) {
            Files::$input?->do($this->deed);
        }
    }
}

/** in://a and its like: the files of the input under test. */
class Files
{
    public static ?Input $input = null;
    public $context;
    private string $text;
    private int $position = 0;
    private bool $main;

    public function stream_open(string $path): bool
    {
        $name = substr($path, 5);
        $this->main = $name === 'main';
        if (!isset(self::$input->files[$name])) {
            return false;
        }
        $this->text = self::$input->files[$name];
        $this->main || self::$input->do(self::$input->on_open);
        return true;
    }

    public function stream_read(int $count): string|false
    {
        $this->main || self::$input->do(self::$input->on_read);
        $piece = substr($this->text, $this->position, min($count, self::$input->read_size));
        if ($piece === '' && self::$input->read_fails && !$this->main) {
            return false;
        }
        $this->position += strlen($piece);
        return $piece;
    }

    public function stream_eof(): bool
    {
        return $this->position >= strlen($this->text);
    }

    public function stream_close(): void
    {
        $this->main || self::$input->do(self::$input->on_close);
    }
}
stream_wrapper_register('in', Files::class);

/** php://filter/read=deed/resource=in://a and its like are read through this. */
class Filter extends php_user_filter
{
    public function filter($in, $out, &$consumed, bool $closing): int
    {
        while ($bucket = stream_bucket_make_writeable($in)) {
            $consumed += $bucket->datalen;
            stream_bucket_append($out, $bucket);
        }
        Files::$input->do(Files::$input->on_read);
        if ($closing && is_resource($this->stream)) {
            stream_bucket_append($out, stream_bucket_new($this->stream, '{'));
        }
        return PSFS_PASS_ON;
    }
}
stream_filter_register('deed', Filter::class);
