#include "data/value_text.h"

#include "php/memory.h"

void appendConverted(TextBuffer& sOutput, const zval* phpVariable) {
	switch (Z_TYPE_P(phpVariable)) {
		case IS_TRUE:
			sOutput.append('1');
			return;
		case IS_UNDEF:
		case IS_NULL:
		case IS_FALSE:
			return;
		default:
			break;
	}
	OwnedString sText(convertToString(phpVariable));
	throwIfPhpFailed();
	sOutput.append(byte_scan::upToNul(sText.get()));
}

void appendValue(TextBuffer& sOutput, const zval* phpVariable) {
	TextCursor sCursor(sOutput);
	appendValue(sCursor, phpVariable);
	sCursor.store();
}

zend_string* convertToString(const zval* phpVariable) {
	ZVAL_DEREF(phpVariable);
	// PHP 8.5 and later warn of a float that is no number; PHP 8.2 prints it and says nothing.
	if (Z_TYPE_P(phpVariable) == IS_DOUBLE && zend_isnan(Z_DVAL_P(phpVariable))) {
		zend_string* sText = requestString(3);
		memcpy(ZSTR_VAL(sText), "NAN", sizeof("NAN"));
		return sText;
	}
	// The conversion may run user code that takes the value out of the data; it is held meanwhile.
	zval phpHeld;
	ZVAL_COPY(&phpHeld, phpVariable);
	zend_string* sText = zval_get_string(&phpHeld);
	zval_ptr_dtor(&phpHeld);
	return sText;
}
