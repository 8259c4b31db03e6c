<?php

// What a fuzzer's input means, and what has to hold for it. fuzz.cpp runs this for each input that libFuzzer makes up;
// the test suite runs it for the inputs of corpus/.
//
// An input has parts, separated by the byte 0x1f: the template, its data, options, then the files a, b, c, which a
// template includes as in://a, in://b, in://c, or through a filter: php://filter/read=deed/resource=in://a.
//
// Data: pairs of a key and a value. A key is one byte: a digit (integer key), "." (next index), "n" ("num"),
// "v" ("visible"), "e" (empty), "-" (-5), "#" (a large integer), "@" ("in://a"), or any other byte.
// A value is one of:
//   0..9 I J K integers   f g h j k floats   t T b s booleans   z null   "text"   u+byte a file name   H an open stream
//   (pairs) array   [values] list   Rvalue a reference   &byte one of the references again
//   o(pairs) object   P typed, private and unset properties   A(pairs) ArrayObject   Q(pairs) ArrayIterator
//   C closure   E enumeration   D DateTime
//   S+digit+"text" an object whose __toString does a deed before it returns the text
//   X+digit an object whose destructor does a deed
// Options: pairs of a letter and a digit, which is the number of a deed unless something else is said.
//   F in a Fiber   N in a Fiber that is left alone once it suspends   U when an error is handled
//   R+bytes a read   ! reads of included files fail at their end   O L Y when an included file is opened, read, closed

require_once __DIR__ . '/values.php';

/** The last three end the request: for the fuzzer only, which starts another. */
const DEEDS = ['nothing', 'throw', 'replace', 'unset', 'again', 'suspend', 'close', 'collect', 'warn', 'deeper',
    'exit', 'fatal', 'memory'];

/** The streams of the process itself: no deed closes them. */
define('OWN_STREAMS', get_resources('stream'));

class Input
{
    private const KEYS = ['n' => 'num', 'v' => 'visible', 'e' => '', '-' => -5, '#' => PHP_INT_MAX - 1, '@' => 'in://a'];

    public string $template;
    public array $files = [];
    public int $read_size = 8192;
    public bool $read_fails = false;
    public string $on_open = '';
    public string $on_read = '';
    public string $on_close = '';
    public string $on_error = '';
    /** Whether no user code runs but the reading of files. */
    public bool $tame = true;
    private bool $fiber = false;
    private bool $abandon = false;
    private bool $replacing = false;
    private string $shape;
    private int $position;
    private int $values;
    private int $nesting;
    private int $depth;
    private array $references;
    private array $objects;
    /** One for all, since its number is its text. */
    private static mixed $stream = null;
    private array $data;

    public function __construct(private string $bytes, private bool $survives)
    {
        $parts = explode("\x1f", $bytes, 6) + ['', '', '', '', '', ''];
        [$this->template, $this->shape, $options] = $parts;
        $this->files = ['main' => $parts[0], 'a' => $parts[3], 'b' => $parts[4], 'c' => $parts[5]];
        foreach (str_split($options, 2) as $option) {
            $digit = $option[1] ?? '0';
            match ($option[0] ?? '') {
                'F' => $this->fiber = true,
                'N' => $this->fiber = $this->abandon = true,
                'U' => $this->on_error = $this->deed($digit),
                'R' => $this->read_size = max(1, ord($digit) - 48),
                '!' => $this->read_fails = true,
                'O' => $this->on_open = $this->deed($digit),
                'L' => $this->on_read = $this->deed($digit),
                'Y' => $this->on_close = $this->deed($digit),
                default => null,
            };
        }
    }

    /** Runs the checks; returns what is wrong, or null. */
    public function check(): ?string
    {
        $first = $this->run(true);
        if ($this->run(true) !== $first) {
            return 'the same call gave another result';
        }
        // A file that includes itself is found out a level earlier than a text is.
        if (!str_contains($this->template, "\0") && !str_contains($this->bytes, 'main')) {
            $as_file = $this->run(false);
            // The message ends with the name, which is the text in one mode and the path in the other.
            if ($as_file[0] !== $first[0] || count($as_file[1]) !== count($first[1])) {
                return 'file and text differ';
            }
        }
        [$text] = explode("\0", $this->template);
        if (strpbrk($text, '{}') === false && $first[0] !== $text) {
            return 'text without tags was changed';
        }
        if ($this->tame && $this->leaks()) {
            return 'a call left memory behind';
        }
        return null;
    }

    /** One call with fresh data: its result and all that was reported. */
    private function run(bool $string_mode): array
    {
        $messages = [];
        set_error_handler(function (int $level, string $message) use (&$messages): bool {
            // PHP's own messages tell the numbers of resources.
            $messages[] = $this->tame ? $message : preg_replace('/\d+/', '#', $message);
            $this->do($this->on_error);
            return true;
        });
        $this->build();
        $before = $this->tame ? self::counted($this->data) : '';
        $text = null;
        try {
            $text = $this->fiber ? $this->callInFiber($string_mode) : $this->call($string_mode);
        } catch (Throwable $error) {
            $messages[] = get_class($error);
            unset($error);
        }
        restore_error_handler();
        if ($this->tame && self::counted($this->data) !== $before) {
            throw new LogicException('a call changed the data');
        }
        $this->drop();
        return [$text, $messages];
    }

    private static function counted(array $data): string
    {
        ob_start();
        debug_zval_dump($data);
        return ob_get_clean();
    }

    /** Whether each call leaves something. (PHP's own tables grow now and then.) */
    private function leaks(): bool
    {
        set_error_handler(fn() => true);
        $this->build();
        $used = 0;
        for ($round = 0; $round < 6; $round++) {
            $before = $used;
            foreach ([true, false] as $string_mode) {
                try {
                    $this->call($string_mode);
                } catch (Throwable $error) {
                    unset($error);
                }
            }
            $used = memory_get_usage();
            if ($used <= $before) {
                break;
            }
        }
        restore_error_handler();
        $this->drop();
        return $round === 6;
    }

    private function call(bool $string_mode): ?string
    {
        return $string_mode ? template($this->template, $this->data, true) : template('in://main', $this->data);
    }

    private function callInFiber(bool $string_mode): ?string
    {
        $fiber = new Fiber(fn() => $this->call($string_mode));
        $fiber->start();
        for ($i = 0; $i < 20 && $fiber->isSuspended() && !$this->abandon; $i++) {
            $fiber->resume();
        }
        return $fiber->isTerminated() ? $fiber->getReturn() : null;
    }

    private function build(): void
    {
        // What is built and at once replaced does no deed.
        Files::$input = null;
        $this->position = $this->values = $this->nesting = $this->depth = 0;
        $this->references = $this->objects = [];
        $this->data = $this->pairs();
        $this->data += ['file' => 'in://b'];
        Files::$input = $this;
    }

    private function drop(): void
    {
        // PHP itself can't stand a destructor that changes the variable which is being emptied.
        Files::$input = null;
        try {
            $this->data = $this->references = $this->objects = [];
            gc_collect_cycles();
        } catch (Throwable) {
            // A destructor's deed.
        }
    }

    private function deed(string $digit): string
    {
        $number = (ord($digit) - 48 + 16 * count(DEEDS)) % count(DEEDS);
        $deed = $number < count(DEEDS) - 3 || $this->survives ? DEEDS[$number] : 'throw';
        $this->tame = $this->tame && $deed === 'nothing';
        return $deed;
    }

    /** What user code does in the middle of a call. */
    public function do(string $deed): void
    {
        // Nor one that changes again what is being replaced.
        if ($this->replacing) {
            return;
        }
        $this->replacing = in_array($deed, ['replace', 'unset'], true);
        try {
            $this->doNow($deed);
        } finally {
            $this->replacing = false;
        }
    }

    private function doNow(string $deed): void
    {
        switch ($deed) {
            case 'throw':
                throw new RuntimeException('thrown');
            case 'replace':
                foreach ($this->references as &$reference) {
                    $reference = is_array($reference) ? 'replaced' : [[1, 'x' => 'y'], ['num' => [1]]];
                }
                break;
            case 'unset':
                foreach ($this->references as $i => &$reference) {
                    if (is_array($reference)) {
                        array_shift($reference);
                        $reference['new'] = [1];
                    }
                }
                foreach ($this->objects as $object) {
                    foreach (array_keys(get_object_vars($object)) as $name) {
                        unset($object->$name);
                    }
                    for ($i = 0; $i < 20; $i++) {
                        $object->{"p$i"} = [$i];
                    }
                }
                break;
            case 'again':
                if ($this->depth < 2) {
                    $this->depth++;
                    $this->call(true);
                    $this->depth--;
                }
                break;
            case 'suspend':
                Fiber::getCurrent() && Fiber::suspend();
                break;
            case 'close':
                set_error_handler(fn() => true);
                foreach (array_diff_key(get_resources(), OWN_STREAMS) as $stream) {
                    try {
                        $stream === self::$stream || fclose($stream) || pclose($stream);
                    } catch (TypeError) {
                        // It is no stream, or one that template() reads.
                    }
                }
                restore_error_handler();
                break;
            case 'collect':
                gc_collect_cycles();
                break;
            case 'warn':
                trigger_error('warned', E_USER_WARNING);
                break;
            case 'deeper':
                if ($this->depth < 8) {
                    $this->depth++;
                    template(
                        '{dynamic l}{*}{optional *}{include in://c}{/optional}{/dynamic}',
                        ['l' => [1, [], $this->depth]],
                        true
                    );
                    $this->depth--;
                }
                break;
            case 'exit':
                exit;
            case 'fatal':
                restore_error_handler();
                trigger_error('fatal', E_USER_ERROR);
                break;
            case 'memory':
                str_repeat('x', 1 << 40);
        }
    }

    private function next(): string
    {
        return $this->shape[$this->position++] ?? ')';
    }

    private function pairs(): array
    {
        $array = [];
        for ($key = $this->next(); $key !== ')'; $key = $this->next()) {
            if ($key === '.') {
                $array[] = null;
                $key = array_key_last($array);
            } else {
                $key = self::KEYS[$key] ?? $key;
                $array[$key] = null;
            }
            $this->fill($array, $key);
        }
        return $array;
    }

    private function values(): array
    {
        $array = [];
        while (($this->shape[$this->position] ?? ']') !== ']') {
            $array[] = null;
            $this->fill($array, count($array) - 1);
        }
        $this->position++;
        return $array;
    }

    private function fill(array &$array, int|string $key): void
    {
        if (++$this->values > 300 || $this->nesting > 30) {
            return;
        }
        $this->nesting++;
        $kind = $this->next();
        if ($kind === 'R') {
            $cell = [null];
            $this->fill($cell, 0);
            $this->references[] = &$cell[0];
            $array[$key] = &$cell[0];
        } elseif ($kind === '&') {
            $which = ord($this->next());
            if ($this->references) {
                $array[$key] = &$this->references[$which % count($this->references)];
            }
        } else {
            $array[$key] = $this->value($kind);
        }
        $this->nesting--;
    }

    private function text(): string
    {
        $end = strpos($this->shape, '"', min($this->position, strlen($this->shape)));
        $end = $end === false ? strlen($this->shape) : $end;
        $text = substr($this->shape, $this->position, $end - $this->position);
        $this->position = $end + 1;
        return $text;
    }

    /** A boolean made of a number keeps the number in its value word, which an optional tag may read. */
    private static function boolean(int|float $word): bool
    {
        settype($word, 'bool');
        return $word;
    }

    private function object(object $object): object
    {
        return $this->objects[] = $object;
    }

    private function value(string $kind): mixed
    {
        return match ($kind) {
            '0', '1', '2', '3', '4', '5', '6', '7', '8', '9' => (int) $kind,
            'I' => PHP_INT_MIN,
            'J' => - 1,
            'K' => 1234567,
            'f' => 1.5,
            'g' => - 0.0,
            'h' => 1e100,
            'j' => NAN,
            'k' => 1 / 3,
            't' => self::boolean(5),
            'T' => self::boolean(0.1),
            'b' => self::boolean(0),
            's' => self::boolean(-0.0),
            'z' => null,
            '"' => $this->text(),
            'u' => 'in://' . $this->next(),
            'H' => self::$stream ??= fopen('php://memory', 'r'),
            '(' => $this->pairs(),
            '[' => $this->values(),
            'o' => $this->object((object) $this->pairsInBrackets()),
            'P' => $this->object(new Typed()),
            'A' => new ArrayObject($this->pairsInBrackets()),
            'Q' => new ArrayIterator($this->pairsInBrackets(), ArrayObject::ARRAY_AS_PROPS),
            'C' => static fn() => 1,
            'E' => Suit::Spades,
            'D' => new DateTime('2020-01-01 UTC'),
            'S' => $this->object(new Deed($this->deed($this->next()), $this->quoted(), false)),
            'X' => new Deed($this->deed($this->next()), 'late', true),
            default => $kind,
        };
    }

    private function quoted(): string
    {
        $this->next();
        return $this->text();
    }

    private function pairsInBrackets(): array
    {
        return $this->next() === '(' ? $this->pairs() : [];
    }
}

/** Checks one input; returns what is wrong, or null. `$survives` says whether deeds may end the process. */
function check(string $bytes, bool $survives = false): ?string
{
    try {
        return (new Input($bytes, $survives))->check();
    } catch (Throwable $error) {
        return "an exception got out: $error";
    }
}
