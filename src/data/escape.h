#pragma once

#include "text/text_buffer.h"
#include "tree/keywords.h"

/// Where an escaping happens; the HTML ones take the text to be in another character set each time.
enum class EscapeTime {
	ANALYSIS, ///< PHP's default_charset; the whole text is escaped, and cut at its first zero byte after that
	RENDER,   ///< ISO-8859-1; the text is cut at its first zero byte first
};

/// Appends `sText` escaped. May raise PHP's own warnings; throws when user code that handles them threw.
void appendEscaped(TextBuffer& sOutput, Escaping eEscaping, const zend_string* sText, EscapeTime eTime);

/// Appends the text of a value that is no string, escaped as at render time. May run user code; throws when that threw.
void appendEscapedValue(TextBuffer& sOutput, Escaping eEscaping, const zval* phpVariable);

/// Appends the rest of a PHP string, up to its end or first zero byte, as `htmlspecialchars` does at render time.
void appendHtmlSpecialchars(TextBuffer& sOutput, const char* p, const char* pTextEnd);
