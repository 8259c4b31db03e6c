#pragma once

#include "php/headers.h"
#include "text/byte_scan.h"
#include "tree/reference.h"

#include <string_view>

/// The key of an array element.
struct ElementKey {
	const zend_string* sKey = nullptr; ///< null for an integer key
	zend_ulong nIndex = 0;
	std::string_view sPrinted = {}; ///< what is printed of a string key
};

/// The value that an optional tag compares with; empty when it tests for truth.
class ComparedValue {
public:
	/// A zero byte has to follow `_sValue`, which has to outlive this object.
	explicit ComparedValue(std::string_view _sValue);

	bool empty() const { return sValue.empty(); }

	/// Compares the text as written, quotes included.
	bool equalsKey(const ElementKey& oKey) const {
		if (oKey.sKey) {
			return sValue == std::string_view(ZSTR_VAL(oKey.sKey), ZSTR_LEN(oKey.sKey));
		}
		zend_ulong nIndex;
		return isIntegerKey(sValue, nIndex) && nIndex == oKey.nIndex;
	}

	/// Compares the text without its quotes with a string, an integer or a boolean; any other value is not equal.
	bool equalsValue(const zval* phpVariable) const {
		return Z_TYPE_P(phpVariable) == IS_STRING ? equalsString(Z_STR_P(phpVariable)) : equalsOther(phpVariable);
	}

private:
	/// A string counts up to its first zero byte; behind its last byte there is one anyway.
	bool equalsString(const zend_string* sText) const {
		return ZSTR_LEN(sText) >= nStringLength && ZSTR_VAL(sText)[nStringLength] == '\0' &&
			   byte_scan::same(ZSTR_VAL(sText), sStripped.data(), nStringLength);
	}
	bool equalsOther(const zval* phpVariable) const;

	std::string_view sValue;
	std::string_view sStripped; ///< without the quotes
	zend_long nNumber;          ///< the number with which it begins, else 0
	size_t nStringLength; ///< of sStripped; or no string's length, when a zero byte in it keeps it from equalling any
};

/// Whether a value that is compared with none holds. Throws when user code threw.
bool checkIfTrue(const zval* phpVariable);

/// Whether an optional section is shown, negation aside. `phpVariable` is null when the tag's reference finds nothing.
/// Throws when user code threw.
inline bool checkIfOptionalIsVisible(const zval* phpVariable, const ComparedValue& oValue) {
	if (!phpVariable) {
		return false;
	}
	if (!oValue.empty()) {
		return oValue.equalsValue(phpVariable);
	}
	return Z_TYPE_P(phpVariable) <= IS_TRUE ? Z_TYPE_P(phpVariable) == IS_TRUE : checkIfTrue(phpVariable);
}
