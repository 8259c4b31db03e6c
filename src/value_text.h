#pragma once

#include "text_buffer.h"

/// Appends a value's text: strings as they are, all else by PHP's own string conversion; in any case only up to the
/// first zero byte. May run user code; throws when that threw.
void appendValue(TextBuffer& sOutput, const zval* phpVariable);

/// A value's text, held for as long as the object lives.
class ValueText {
public:
	/// May run user code. Look for a pending exception when the object is gone.
	explicit ValueText(const zval* phpVariable);
	~ValueText() { zend_string_release(sText); }
	ValueText(const ValueText&) = delete;
	ValueText& operator=(const ValueText&) = delete;

	const zend_string* string() const { return sText; }

private:
	zend_string* sText;
};
