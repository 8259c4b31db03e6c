<?php

namespace TemplateTool\Rules\Security;

use TemplateTool\Page\Risk;
use TemplateTool\Rules\PageRule;
use TemplateTool\Rules\View;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Action;
use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Node;
use TemplateTool\Syntax\Problem;

/** The warnings about values that can break out of their place in a page. */
final class Escaping implements PageRule
{
    private Flow $flow;

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'unescaped-value',
                summary: 'a value that is printed into a page without an escaping tag',
                why: <<<'TEXT'
                    A plain tag prints the value as it is. If a visitor can have a say in it, it may hold a script.
                    Use {htmlspecialchars ...} in text and in attributes with double quotes. With --data, values that
                    are numbers there are left out. For HTML that you have made yourself, say so in front of it:
                    {optional}vouched: our own Markdown{/optional}{body}. Such a section prints nothing.
                    TEXT,
                bad: '<p title="{user::name}">',
                good: '<p title="{htmlspecialchars user::name}">',
                isSecurity: true,
            ),
            new Warning(
                name: 'single-quoted-attribute',
                summary: 'an escaped value inside an attribute with single quotes',
                why: <<<'TEXT'
                    "htmlspecialchars" and "htmlentities" leave single quotes as they are, so the value can end the
                    attribute and add others to the element. Put the attribute in double quotes.
                    TEXT,
                bad: "<p title='{htmlspecialchars user::name}'>",
                good: '<p title="{htmlspecialchars user::name}">',
                isSecurity: true,
            ),
            new Warning(
                name: 'unquoted-attribute',
                summary: 'an escaped value as an attribute without quotes',
                why: <<<'TEXT'
                    A blank ends an attribute that has no quotes, and no escaping tag but "rawurlencode" does
                    anything about blanks. Put the attribute in double quotes.
                    TEXT,
                bad: '<p title={htmlspecialchars user::name}>',
                good: '<p title="{htmlspecialchars user::name}">',
                isSecurity: true,
            ),
            new Warning(
                name: 'wrong-escaping',
                summary: "an escaping tag that doesn't fit the place",
                why: <<<'TEXT'
                    Each escaping tag is for one kind of place. "htmlspecialchars" and "htmlentities" are for HTML: in
                    scripts and style sheets entities mean nothing, and in event attributes ("onclick") and "srcdoc"
                    the browser takes them back first. "addslashes" does nothing about "<" and line breaks.
                    "rawurlencode" fits parts of addresses and texts in quotes, and no code outside of quotes. For a
                    script, put the value into a data- attribute, or print JSON that PHP has made and vouch for it.
                    For CSS, choose among values of your own by sections.
                    TEXT,
                bad: '<button onclick="greet(\'{htmlspecialchars user::name}\')">',
                good: '<button data-name="{htmlspecialchars user::name}" onclick="greet(this.dataset.name)">',
                isSecurity: true,
            ),
            new Warning(
                name: 'script-address',
                summary: 'an address of which a value decides too much',
                why: <<<'TEXT'
                    Escaped or not, a value at the beginning of an address may be "javascript:...", which runs when the
                    link is followed. In the address of a script, a style sheet or a frame it may name another server.
                    Write the beginning yourself, or check it in PHP and vouch for the value:
                    {optional}vouched: begins with https{/optional}{htmlspecialchars link}.
                    TEXT,
                bad: '<a href="{htmlspecialchars user::site}">',
                good: '<a href="https://example.org/{htmlspecialchars user::page}">',
                isSecurity: true,
            ),
            new Warning(
                name: 'value-as-name',
                summary: 'a value as the name of a tag or of an attribute',
                why: <<<'TEXT'
                    No escaping helps where the value itself is a word of HTML: "script" and "onclick" hold no special
                    sign. Write the names that are allowed into sections.
                    TEXT,
                bad: '<{htmlspecialchars block::tag}>',
                good: '<{optional block::wide}section{/optional}{!optional block::wide}div{/optional}>',
                isSecurity: true,
            ),
        ];
    }

    public function __construct()
    {
        $this->flow = new Flow();
    }

    public function inPage(View $page): iterable
    {
        foreach ($this->flow->risks($page) as [$view, $node, $risk]) {
            $actions = [...$this->escape($node, $risk), ...Vouching::actions($node)];
            $length = strlen($node->tag->source);
            $message = $risk->message($node->tag->kind->value);
            yield [$view, new Problem($risk->name, $message, $node->offset, $length, actions: $actions)];
        }
    }

    /** @return list<Action> */
    private function escape(Node $node, Risk $risk): array
    {
        $tag = $node->tag;
        if (!$risk->remedy || count($tag->references) !== 1 || $tag->fallback !== null) {
            return [];
        }
        $text = "{{$risk->remedy->value} {$tag->references[0]->text}}";
        $edit = new Edit($node->offset, strlen($tag->source), $text);
        return [new Action(Action::ESCAPE, "Escape with \"{$risk->remedy->value}\"", [$edit])];
    }
}
