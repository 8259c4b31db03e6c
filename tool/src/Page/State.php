<?php

namespace TemplateTool\Page;

/** The states of an HTML tokenizer, as far as values differ in them. */
enum State: string
{
    case Text = 'text';
    /** Inside an element that only its own end tag ends. */
    case Raw = 'raw text';
    case TagName = 'tag name';
    case BeforeName = 'tag';
    case Name = 'attribute name';
    case AfterName = 'after an attribute name';
    case BeforeValue = 'before an attribute value';
    case DoubleQuoted = 'double-quoted attribute';
    case SingleQuoted = 'single-quoted attribute';
    case Unquoted = 'unquoted attribute';
    case Comment = 'comment';
    /** What browsers take for a comment up to the next ">", a document type among it. */
    case Bogus = 'declaration';
    case Cdata = 'CDATA section';
}
