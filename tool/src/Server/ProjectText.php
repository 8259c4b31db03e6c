<?php

namespace TemplateTool\Server;

use TemplateTool\Json\Places;
use TemplateTool\Syntax\Edit;

/** Changes of a project file that leave the rest of it as it was written. */
final class ProjectText
{
    /** Turns a warning off; null when the text is no project file. */
    public static function warningOff(string $text, string $name): ?Edit
    {
        $settings = json_decode($text, true);
        if (!is_array($settings) || ($settings && array_is_list($settings))) {
            return null;
        }
        $key = json_encode($name);
        if (preg_match("~$key\\s*:\\s*(\"[a-z]*\")~", $text, $match, PREG_OFFSET_CAPTURE)) {
            return new Edit($match[1][1], strlen($match[1][0]), '"off"');
        }
        $isThere = isset($settings['warnings']);
        $indent = $isThere ? '        ' : '    ';
        $new = $isThere ? "$key: \"off\"" : "\"warnings\": {\n        $key: \"off\"\n    }";
        $brace = strpos($text, '{', $isThere ? (new Places($text))->of(['warnings']) : 0) + 1;
        $blanks = strspn($text, " \t\r\n", $brace);
        if ($text[$brace + $blanks] === '}') {
            return new Edit($brace, $blanks, "\n$indent$new\n" . substr($indent, 4));
        }
        return new Edit($brace, 0, "\n$indent$new," . ($blanks ? '' : ' '));
    }
}
