#include "tree/compared_value.h"

#include "php/failure.h"

#include <cstdlib>

ComparedValue::ComparedValue(std::string_view _sValue) : sValue(_sValue), sStripped(_sValue) {
	size_t iFirst = sValue.find('\'');
	size_t iLast = sValue.rfind('\'');
	if (iFirst < iLast) {
		sStripped = sValue.substr(iFirst + 1, iLast - iFirst - 1);
	}
	// What follows the digits, a quote or the zero byte, ends the number.
	nNumber = sStripped.empty() ? 0 : ZEND_STRTOL(sStripped.data(), nullptr, 10);
	nStringLength = sStripped.find('\0') == std::string_view::npos ? sStripped.size() : SIZE_MAX;
}

bool ComparedValue::equalsOther(const zval* phpVariable) const {
	switch (Z_TYPE_P(phpVariable)) {
		case IS_LONG:
			return Z_LVAL_P(phpVariable) == nNumber;
		case IS_FALSE:
		case IS_TRUE:
			// The value word and not the type tells here.
			return (Z_LVAL_P(phpVariable) == 0) == (sStripped == "0");
		default:
			return false;
	}
}

bool checkIfTrue(const zval* phpVariable) {
	if (Z_TYPE_P(phpVariable) == IS_ARRAY) {
		if (const zval* phpVisible = zend_hash_str_find(Z_ARRVAL_P(phpVariable), ZEND_STRL("visible"))) {
			phpVariable = phpVisible;
		}
	}
	// PHP 8.5 and later warn of a float that is no number; PHP 8.2 takes it for true and says nothing.
	ZVAL_DEREF(phpVariable);
	if (Z_TYPE_P(phpVariable) == IS_DOUBLE) {
		return Z_DVAL_P(phpVariable) != 0;
	}
	bool bTrue = i_zend_is_true(const_cast<zval*>(phpVariable));
	throwIfPhpFailed();
	return bTrue;
}
