--TEST--
Where templates are read from: include path, stream wrappers, short reads, folders, failing reads
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

/** Hands out the given pieces, one a read; false is a failing read. */
class Pieces
{
    public static array $next = [];
    public static int $closed = 0;
    public $context;
    private array $pieces;

    public function stream_open(string $path, string $mode): bool
    {
        $this->pieces = self::$next;
        return $mode === 'rb';
    }

    public function stream_read(int $count): string|false
    {
        return array_shift($this->pieces);
    }

    public function stream_eof(): bool
    {
        return !$this->pieces;
    }

    public function stream_close(): void
    {
        self::$closed++;
    }

    public function url_stat(string $path): array|false
    {
        return $path === 'pieces://folder/x.tpl' ? [] : false;
    }
}
stream_wrapper_register('pieces', Pieces::class);

function pieces(string|false ...$pieces): Closure
{
    return function () use ($pieces): ?string {
        Pieces::$next = $pieces;
        return template('pieces://x', ['v' => 'V', 'name' => 'N']);
    };
}

put(['a/one.tpl' => '[{include two.tpl}{include three.tpl}]', 'a/two.tpl' => 'beside', 'b/two.tpl' => 'second', 'two.tpl' => 'here',
    'sub/up.tpl' => '{include ../two.tpl}{include ./two.tpl}']);
$folder = folder();
$searched = function (string $path, string $name) use ($folder): ?string {
    set_include_path(str_replace('~', $folder, $path));
    try {
        return template($name, []);
    } finally {
        set_include_path($folder);
    }
};
$piped = function (string $text): ?string {
    exec('mkfifo pipe');
    put(['text' => $text]);
    exec('(cat text >pipe) >/dev/null 2>&1 &');
    try {
        return template('pipe', ['v' => 'V']);
    } finally {
        unlink('pipe');
    }
};
$outside = 'template(): open_basedir restriction in effect. File(' . __FILE__ . ") is not within the allowed path(s): ($folder)";
$read_error = 'level 8: template(): Read of 8192 bytes failed with errno=21 Is a directory';
$long = 'a{{b}}{v}c} {name}}}{x \'y\'}{ ';

table([
    ['missing file', fn() => template('none.tpl', []), null, fails('Could not open file none.tpl')],
    ['empty path', fn() => template('', []), null, fails('Could not open file ')],
    ['folder', fn() => template($folder, []), null, fails($read_error, 'basic_string::append')],
    ['folder included', fn() => template('x{include sub}y', [], true), null, fails($read_error, 'basic_string::append')],
    ['absolute path', fn() => template("$folder/two.tpl", []), null, 'here'],
    ['include path, not the folder of the including file', fn() => $searched('~/b:~/a', 'one.tpl'), null, '[second]'],
    ['first folder wins', fn() => $searched('~/a:~/b', 'one.tpl'), null, '[beside]'],
    ['a dot path starts at the current folder', fn() => $searched('~/a', './two.tpl'), null, 'here'],
    ['dot paths in an included file', fn() => template('{include sub/up.tpl}', [], true), null, 'here'],
    ['data URL', fn() => template('data://text/plain,<{v}>', ['v' => 'V']), null, '<V>'],
    ['data URL included', fn() => template('{include data:,a}{include url}', ['url' => 'data:,b'], true), null, 'ab'],

    ['byte by byte', pieces(...str_split($long)), null, 'a{b}Vc} N}y{ '],
    ['empty reads', pieces('', 'a{', '', '{b', '', '}', '', '}{', '', 'v', '', '}', '', ''), null, 'a{b}V'],
    ['nothing at all', pieces(''), null, ''],
    ['brace inside a tag, in pieces', pieces('{x', '{', 'y', '}', 'z'), null, '{x{{{{}'],
    ['failing read in text', pieces('ab', false), null, fails('basic_string::append')],
    ['failing first read', pieces(false), null, fails('basic_string::append')],
    ['failing read in a tag', pieces('{na', false, 'me}'), null, fails('basic_string::append')],
    ['failing read behind an open brace', pieces('a{', false, 'name}'), null, 'aN'],
    ['failing read behind a closing brace', pieces('a}', false, '}b'), null, 'a}b'],
    ['all of them closed', fn() => Pieces::$closed, null, 9],

    ['a wrapper in the include path', function () use ($searched): ?string {
        Pieces::$next = ['pieces'];
        return $searched('~/b:pieces://folder', 'x.tpl');
    }, null, 'pieces'],
    ['a wrapper for files', function (): ?string {
        stream_wrapper_unregister('file');
        stream_wrapper_register('file', Pieces::class);
        try {
            return template('two.tpl', []);
        } finally {
            stream_wrapper_restore('file');
        }
    }, null, 'pieces'],
    ['file URL', fn() => template("file://$folder/two.tpl", []), null, 'here'],
    ['pipe', fn() => $piped('a{v}b'), null, 'aVb'],
    ['pipe with more than a chunk', fn() => $piped(str_repeat('{v}x', 3000)), null, str_repeat('Vx', 3000)],

    // From here on nothing outside the folder can be opened.
    ['outside of open_basedir', fn() => [ini_set('open_basedir', $folder), template(__FILE__, [])][1], null,
        fails($outside, 'Could not open file ' . __FILE__)],
    ['an include outside', fn() => template('a{include ' . __FILE__ . '}b', [], true), null, noted('ab', $outside)],
    ['an include inside', fn() => template('a{include two.tpl}b', [], true), null, 'ahereb'],
]);
?>
--EXPECT--
29 rows
