<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\Habit;
use TemplateTool\Rules\Tags\MisspeltKeyword;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class ForeignTag implements Habit
{
    private const SECTION = 'a section is "{optional name}...{/optional}"';
    private const OPPOSITE = 'the opposite of "{optional name}" is "{!optional name}...{/optional}"';
    private const LOOP = 'a loop is "{dynamic row,rows}...{/dynamic}"';
    private const COMMENT = 'a comment is "{optional}...{/optional}" with nothing to ask for';
    private const PART = 'another file is put in by "{include name.tpl}"';
    private const VALUE = 'values are made in PHP, before the call';
    private const BRACES = 'a brace as text is written twice, or with a blank behind it';

    // What a tag begins with, and how it is said here. These words are hardly names of values.
    private const WORDS = [
        'if' => self::SECTION, 'endif' => self::SECTION, '/if' => self::SECTION, '#if' => self::SECTION,
        'unless' => self::OPPOSITE, 'endunless' => self::OPPOSITE, '/unless' => self::OPPOSITE,
        'else' => self::OPPOSITE, 'elseif' => self::OPPOSITE, 'elsif' => self::OPPOSITE, 'elif' => self::OPPOSITE,
        ':else' => self::OPPOSITE,
        'foreach' => self::LOOP, 'endforeach' => self::LOOP, '/foreach' => self::LOOP, 'foreachelse' => self::LOOP,
        'endfor' => self::LOOP, '/for' => self::LOOP, '#each' => self::LOOP, '/each' => self::LOOP, '/loop' => self::LOOP,
        'endwhile' => self::LOOP, '/while' => self::LOOP, 'forelse' => self::LOOP, 'endforelse' => self::LOOP,
        '/include' => 'nothing closes an include: it is "{include name.tpl}" alone',
        '/section' => self::SECTION, '/with' => self::SECTION, '/block' => self::PART, 'endblock' => self::PART,
        'literal' => self::BRACES, 'verbatim' => self::BRACES, 'ldelim' => self::BRACES, 'rdelim' => self::BRACES, '/literal' => self::BRACES, 'endverbatim' => self::BRACES,
        'endset' => self::VALUE, '/capture' => self::VALUE, '/assign' => self::VALUE,
    ];

    // These are, unless something follows.
    private const WORDS_WITH_MORE = [
        'for' => self::LOOP, 'each' => self::LOOP, 'while' => self::LOOP, 'loop' => self::LOOP,
        'section' => self::LOOP, 'isset' => self::SECTION, 'when' => self::SECTION, 'switch' => self::SECTION,
        'case' => self::SECTION, 'with' => self::SECTION, 'else' => self::OPPOSITE, 'elseif' => self::OPPOSITE,
        'extends' => self::PART, 'block' => self::PART, 'import' => self::PART, 'require' => self::PART,
        'partial' => self::PART, 'set' => self::VALUE, 'assign' => self::VALUE, 'var' => self::VALUE,
        'capture' => self::VALUE, 'let' => self::VALUE, 'echo' => 'a value is "{name}"', 'print' => 'a value is "{name}"',
    ];

    // How tags of other languages begin and end.
    private const SHAPES = [
        '~^%.*%$~s' => 'sections are "{optional name}", loops "{dynamic row,rows}", and no "%" belongs to them',
        '~^#.*#$~s' => self::COMMENT,
        '~^\*(?!:)(?=.*\w).*\*$~s' => self::COMMENT,
        '~^!--|^--.*--$~s' => self::COMMENT,
        '~^!!.*!!$~s' => 'a value as it is is "{name}"',
        '~^[#^]\s*[\w.]+$~' => 'a section is "{optional name}", its opposite "{!optional name}", a loop "{dynamic name}"',
        '~^>\s*[\w./-]+$~' => self::PART,
    ];

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'foreign-tag',
                summary: 'a tag of another template language',
                why: <<<'TEXT'
                    Words such as "if", "else" or "foreach" mean nothing here: the tag looks for values of these
                    names, and is printed as it stands when there are none. "optional" and "!optional" show sections,
                    "dynamic" and "rdynamic" repeat them, and "include" puts in a file; there are no others. The page
                    "Coming from another engine" of the manual has them side by side.
                    TEXT,
                bad: '{if user}Hello',
                good: '{optional user}Hello{/optional}{!optional user}Who are you?{/optional}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        if ($tag->kind !== Kind::Plain) {
            return;
        }
        $hint = $this->hint($tag);
        if ($hint !== null) {
            $word = preg_match('~^\S+~', $tag->argument, $match) ? $match[0] : '';
            $what = preg_match('~^[/:#]?\w+$~', $word) ? "\"$word\" is no tag of this language" : 'this is no tag here';
            $meant = Words::meant($tag, $word);
            yield new Problem('foreign-tag', "$what: $hint", 0, strlen($tag->source) - (int) $tag->swallows, unless: $meant);
        }
    }

    private function hint(Tag $tag): ?string
    {
        [$word, $more] = explode(' ', strtolower(strtr($tag->argument, "\t\n\r(", '    ')), 2) + [1 => ''];
        foreach (self::SHAPES as $shape => $hint) {
            if (preg_match($shape, $tag->argument)) {
                return self::WORDS[$word] ?? $hint;
            }
        }
        if (preg_match('~^/[a-z]\w*$~', $tag->argument) && !MisspeltKeyword::meant($tag->argument)) {
            return self::WORDS[$word] ?? 'sections end in "{/optional}", loops in "{/dynamic}"';
        }
        return self::WORDS[$word] ?? ($more === '' || $more[0] === "'" ? null : self::WORDS_WITH_MORE[$word] ?? null);
    }
}
