#include "value_text.h"

#include "error.h"

void appendInteger(TextBuffer& sOutput, zend_long nValue) {
	char aText[MAX_LENGTH_OF_LONG];
	char* pEnd = aText + sizeof(aText) - 1;
	char* pText = zend_print_long_to_buf(pEnd, nValue);
	sOutput.append(pText, pEnd - pText);
}

namespace {

void appendFloat(TextBuffer& sOutput, double nValue) {
	char aText[ZEND_DOUBLE_MAX_LENGTH];
	int nPrecision = static_cast<int>(EG(precision));
	zend_gcvt(nValue, nPrecision ? nPrecision : 1, '.', 'E', aText);
	sOutput.append(aText, strlen(aText));
}

} // namespace

void appendValue(TextBuffer& sOutput, const zval* phpVariable) {
	switch (Z_TYPE_P(phpVariable)) {
		case IS_STRING:
			sOutput.append(Z_STRVAL_P(phpVariable), strlen(Z_STRVAL_P(phpVariable)));
			return;
		case IS_LONG:
			appendInteger(sOutput, Z_LVAL_P(phpVariable));
			return;
		case IS_DOUBLE:
			appendFloat(sOutput, Z_DVAL_P(phpVariable));
			return;
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
	{
		ValueText oText(phpVariable);
		if (!EG(exception)) {
			sOutput.append(upToNul(oText.view()));
		}
	}
	throwIfExceptionIsPending();
}

ValueText::ValueText(const zval* phpVariable) {
	// The conversion may run user code that takes the value out of the data; it is held meanwhile.
	zval phpHeld;
	ZVAL_COPY(&phpHeld, phpVariable);
	sText = zval_get_string(&phpHeld);
	zval_ptr_dtor(&phpHeld);
}
