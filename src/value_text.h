#pragma once

#include "text_buffer.h"

/// Appends a value's text: strings as they are, all else by PHP's own string conversion; in any case only up to the
/// first zero byte. May run user code; throws when that threw.
void appendValue(TextBuffer& sOutput, const zval* phpVariable);

/// Appends an integer in decimal.
void appendInteger(TextBuffer& sOutput, zend_long nValue);

/// A value's text, held for as long as the object lives.
class ValueText {
public:
	/// May run user code. Look for a pending exception when the object is gone.
	explicit ValueText(const zval* phpVariable);
	~ValueText() { zend_string_release(sText); }
	ValueText(const ValueText&) = delete;
	ValueText& operator=(const ValueText&) = delete;

	/// The whole text, zero bytes included.
	std::string_view view() const { return {ZSTR_VAL(sText), ZSTR_LEN(sText)}; }

private:
	zend_string* sText;
};

/// The part of a text that is printed: what stands before its first zero byte.
inline std::string_view upToNul(std::string_view sText) {
	return sText.substr(0, strnlen(sText.data(), sText.size()));
}
