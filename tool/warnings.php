<?php

// The warnings of "template check", as "template explain" tells about them. Each bad example gives exactly this
// warning, each good one none.

return [
    'keyword-prefix' => [
        'summary' => 'a name that begins with a keyword',
        'why' => <<<'TEXT'
            A tag is recognised by how its text begins, and nothing has to separate the keyword from what follows. So
            "{includes}" isn't a value named "includes": it includes the file "s". A plain tag can't print a value
            whose name begins with a keyword; keep such values inside an array. When the keyword is meant, write a
            blank behind it.
            TEXT,
        'bad' => '<p>{dynamics_title}</p>{/dynamic}',
        'good' => '<p>{page::dynamics_title}</p>',
    ],
    'misspelt-keyword' => [
        'summary' => 'a word that looks like a keyword with a slip in it',
        'why' => <<<'TEXT'
            A tag that begins with no keyword is a plain tag. It prints the first of its references that exists, so a
            misspelt escaping tag prints the value without escaping it. Keywords are written in lower case.
            TEXT,
        'bad' => '<p>{htmlspecialchar user::name}</p>',
        'good' => '<p>{htmlspecialchars user::name}</p>',
    ],
    'brace-in-tag' => [
        'summary' => 'a "{" inside a tag',
        'why' => <<<'TEXT'
            A "{" inside a tag swallows all that follows it, up to the end of the file. Most often the "}" of the tag
            is missing, or a brace of CSS or JavaScript is not written twice.
            TEXT,
        'bad' => '<b>{name</b> <i>{city}</i>',
        'good' => '<b>{name}</b> <i>{city}</i> <style>b{{color:red}} i { color: blue }</style>',
    ],
    'cut-off-tag' => [
        'summary' => 'the template ends inside a tag',
        'why' => <<<'TEXT'
            The engine takes a tag that the end of the file cuts off for a whole one. It is likely that a "}" or the
            end of the file is missing.
            TEXT,
        'bad' => 'Yours, {name',
        'good' => 'Yours, {name}',
    ],
    'blank-at-comma' => [
        'summary' => 'a blank beside the comma of a loop',
        'why' => <<<'TEXT'
            Between the name of a loop and its reference stands a comma and nothing else. A blank behind it belongs to
            the reference, which then finds nothing; a blank in front of it belongs to the name.
            TEXT,
        'bad' => '{dynamic row, rows}{row::*}{/dynamic}',
        'good' => '{dynamic row,rows}{row::*}{/dynamic}',
    ],
    'integer-index' => [
        'summary' => 'a path that begins with an integer',
        'why' => <<<'TEXT'
            A reference that isn't about a loop begins at the top of the data, and there an integer is never found,
            whether the data has such a key or not. Put the list under a name. To print something like {3} as text,
            for instance in a regular expression, write the braces twice.
            TEXT,
        'bad' => '{0::title}',
        'good' => '{list::0::title} [a-z]{{3}}',
    ],
    'blank-in-reference' => [
        'summary' => 'a blank inside the reference of an escaping tag or a loop',
        'why' => <<<'TEXT'
            Only a plain tag takes alternatives and a text in quotes. An escaping tag and a loop take one reference,
            and a blank inside it belongs to a name. For alternatives with escaping, use sections.
            TEXT,
        'bad' => '{htmlspecialchars name \'nobody\'}',
        'good' => '{optional name}{htmlspecialchars name}{/optional}{!optional name}nobody{/optional}',
    ],
    'blank-in-comparison' => [
        'summary' => 'a blank too many in a section that compares',
        'why' => <<<'TEXT'
            Exactly one blank separates the reference from the value to compare with. What follows belongs to the
            value, further blanks included, and a text with blanks in front equals no text without them. A tab or a
            line break doesn't separate at all.
            TEXT,
        'bad' => '{optional colour  red}stop{/optional}',
        'good' => '{optional colour red}stop{/optional}',
    ],
    'quoted-key' => [
        'summary' => 'quotes around a key that is compared',
        'why' => <<<'TEXT'
            When a section compares a value, quotes around the text are taken off. When it compares a key, they aren't:
            '3' with quotes equals no key 3.
            TEXT,
        'bad' => '{dynamic rows}{optional [*] \'first\'}!{/optional}{*}{/dynamic}',
        'good' => '{dynamic rows}{optional [*] first}!{/optional}{*}{/dynamic}',
    ],
    'outside-loop' => [
        'summary' => 'a reference with a star, or to a key, outside of every loop',
        'why' => <<<'TEXT'
            "*" is the element and "[*]" the key of the loop around the tag. Where there is none, such a reference finds
            nothing. Loops around an include tag count for the included file: check the template that includes it, or
            the whole folder.
            TEXT,
        'bad' => '{htmlspecialchars *::title}{dynamic rows}{*::title}{/dynamic}',
        'good' => '{dynamic rows}{htmlspecialchars *::title}{/dynamic}',
    ],
    'unknown-loop' => [
        'summary' => 'a reference to a loop that isn\'t there',
        'why' => <<<'TEXT'
            In "row::*::title" the word in front of the star is the name of a loop around the tag, as in
            {dynamic row,rows}. It isn't the name of the list. Loops around an include tag count for the included file:
            check the template that includes it, or the whole folder.
            TEXT,
        'bad' => '{dynamic row,rows}{rows::*::title}{/dynamic}',
        'good' => '{dynamic row,rows}{row::*::title}{/dynamic}',
    ],
    'missing-include' => [
        'summary' => 'an included file that doesn\'t exist',
        'why' => <<<'TEXT'
            A file that can't be opened is left out in silence. Names are looked up in PHP's include path, never beside
            the including template: --include-path says where to look. When the name is a key of the data that holds
            the file's name, give sample data with --data.
            TEXT,
        'bad' => '{include no-such-file.tpl}',
        'good' => '{include page::footer}',
    ],
    'unescaped-value' => [
        'security' => true,
        'summary' => 'a value that is printed into HTML without an escaping tag',
        'why' => <<<'TEXT'
            A plain tag prints the value as it is. If a visitor can have a say in it, it may hold a script. Use
            {htmlspecialchars ...} in text and in attributes with double quotes. Numbers, and HTML that you trust, need
            no escaping. With --data, values that are numbers there are left out.
            TEXT,
        'bad' => '<p title="{user::name}">',
        'good' => '<p title="{htmlspecialchars user::name}">',
    ],
    'single-quoted-attribute' => [
        'security' => true,
        'summary' => 'an escaped value inside an attribute with single quotes',
        'why' => <<<'TEXT'
            "htmlspecialchars" and "htmlentities" leave single quotes as they are, so the value can end the attribute
            and add others to the element. Put the attribute in double quotes.
            TEXT,
        'bad' => '<p title=\'{htmlspecialchars user::name}\'>',
        'good' => '<p title="{htmlspecialchars user::name}">',
    ],
    'unquoted-attribute' => [
        'security' => true,
        'summary' => 'an escaped value as an attribute without quotes',
        'why' => <<<'TEXT'
            A blank ends an attribute that has no quotes, and no escaping tag but "rawurlencode" does anything about
            blanks. Put the attribute in double quotes.
            TEXT,
        'bad' => '<p title={htmlspecialchars user::name}>',
        'good' => '<p title="{htmlspecialchars user::name}">',
    ],
    'wrong-escaping' => [
        'security' => true,
        'summary' => 'an escaping tag that doesn\'t fit the place',
        'why' => <<<'TEXT'
            "addslashes" is for texts in quotes inside a script and does nothing about "<" or "&". "htmlspecialchars"
            and "htmlentities" are for HTML; inside a script entities mean nothing.
            TEXT,
        'bad' => '<p>{addslashes user::name}</p>',
        'good' => '<p>{htmlspecialchars user::name}</p>',
    ],
    'include-from-data' => [
        'security' => true,
        'summary' => 'an include whose file name comes from the data',
        'why' => <<<'TEXT'
            The value can name any file that PHP may open, also /etc/passwd or, where PHP allows it, an address on the
            web. See to it that only your own code decides this value, and that it is one of a fixed list.
            TEXT,
        'bad' => '{include page::layout}',
        'good' => '{optional page::layout wide}<div class="wide">{/optional}',
    ],
    'missing-value' => [
        'data' => ['user' => ['name' => 'Ann']],
        'summary' => 'a reference that finds nothing in the sample data',
        'why' => <<<'TEXT'
            The value isn't there in any round of the loops around the tag. A plain tag is then printed as it stands,
            an escaping tag and a loop print nothing. When a value may be missing, give a plain tag a text for that
            case, or put the tag into a section.
            TEXT,
        'bad' => '{user::nmae}',
        'good' => '{user::name} {user::city \'somewhere\'} {optional user::phone}{user::phone}{/optional}',
    ],
    'loop-over-no-array' => [
        'data' => ['rows' => ['a', 'b'], 'count' => 2],
        'summary' => 'a loop over something else than an array, given the sample data',
        'why' => <<<'TEXT'
            Only arrays are walked; over anything else a loop prints nothing. When the array has an element "num", the
            loop walks that one, so it has to be an array too.
            TEXT,
        'bad' => '{dynamic count}{*}{/dynamic}',
        'good' => '{dynamic rows}{*}{/dynamic}',
    ],
    'array-as-text' => [
        'data' => ['user' => ['name' => 'Ann']],
        'summary' => 'an array that is printed, given the sample data',
        'why' => <<<'TEXT'
            An array prints the word "Array", and PHP raises a warning of its own. Name the element that is meant, or
            walk the array with a loop.
            TEXT,
        'bad' => '{user}',
        'good' => '{user::name}',
    ],
    'unprinted-value' => [
        'data' => ['stock' => 3],
        'summary' => 'an escaping tag that prints nothing because the value is no string, given the sample data',
        'why' => <<<'TEXT'
            When a reference isn't about a loop, the escaping tags print strings only; a number, true or an array gives
            nothing. A number needs no escaping: use a plain tag.
            TEXT,
        'bad' => '{htmlspecialchars stock}',
        'good' => '{stock}',
    ],
];
