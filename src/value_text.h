#pragma once

#include "text_buffer.h"

/// Appends a value's text: strings as they are, all else by PHP's own string conversion; in any case only up to the
/// first zero byte. May run user code; throws when that threw.
void appendValue(TextBuffer& sOutput, const zval* phpVariable);

/// PHP's own conversion of a value to a string; one reference passes to the caller. May run user code: look whether PHP
/// has failed when the string is of no more use.
zend_string* convertToString(const zval* phpVariable);
