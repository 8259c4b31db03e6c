#pragma once

#include "text/byte_scan.h"
#include "text/number_text.h"
#include "text/text_cursor.h"

/// Appends the text of a value that is neither string nor number. May run user code; throws when that threw.
void appendConverted(TextBuffer& sOutput, const zval* phpVariable);

/// Appends a float as PHP converts it to a string, by the ini setting "precision".
[[gnu::always_inline]] inline void appendFloat(TextCursor& sOutput, double nValue) {
	if (char* pEnd = writeShortDecimal(sOutput.reserve(NUMBER_ROOM), nValue)) {
		sOutput.setEnd(pEnd);
	} else {
		sOutput.lend([nValue](TextBuffer& sText) { appendLongFloat(sText, nValue); });
	}
}

/// Appends a value's text: strings as they are, all else by PHP's own string conversion; in any case only up to the
/// first zero byte. May run user code; throws when that threw.
[[gnu::always_inline]] inline void appendValue(TextCursor& sOutput, const zval* phpVariable) {
	switch (Z_TYPE_P(phpVariable)) {
		case IS_STRING:
			sOutput.append(byte_scan::upToNul(Z_STR_P(phpVariable)));
			break;
		case IS_LONG:
			sOutput.setEnd(writeInteger(sOutput.reserve(NUMBER_ROOM), Z_LVAL_P(phpVariable)));
			break;
		case IS_DOUBLE:
			appendFloat(sOutput, Z_DVAL_P(phpVariable));
			break;
		default:
			sOutput.lend([phpVariable](TextBuffer& sText) { appendConverted(sText, phpVariable); });
	}
}

/// The same for a text of which this is the only piece.
void appendValue(TextBuffer& sOutput, const zval* phpVariable);

/// PHP's own conversion of a value to a string; one reference passes to the caller. May run user code: look whether PHP
/// has failed when the string is of no more use.
zend_string* convertToString(const zval* phpVariable);
