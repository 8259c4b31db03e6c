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
]);
?>
--EXPECT--
21 rows
