#include "reference.h"

#include "arena.h"

bool isIntegerKey(std::string_view sText, zend_ulong& nIndex) {
	bool bNegative = !sText.empty() && sText.front() == '-';
	std::string_view sDigits = sText.substr(bNegative ? 1 : 0);
	if (sDigits.empty() || sDigits.size() > MAX_LENGTH_OF_LONG - 1 || sDigits.front() < '0' || sDigits.front() > '9') {
		return false;
	}
	if (sDigits.front() == '0' && sText.size() > 1) {
		return false;
	}
	zend_ulong nValue = 0;
	for (char ch : sDigits) {
		if (ch < '0' || ch > '9') {
			return false;
		}
		zend_ulong nDigit = static_cast<zend_ulong>(ch - '0');
		if (__builtin_mul_overflow(nValue, zend_ulong{10}, &nValue) ||
			__builtin_add_overflow(nValue, nDigit, &nValue)) {
			return false;
		}
	}
	if (nValue > static_cast<zend_ulong>(ZEND_LONG_MAX) + (bNegative ? 1 : 0)) {
		return false;
	}
	nIndex = bNegative ? zend_ulong{0} - nValue : nValue;
	return true;
}

namespace {

void prependIndex(Reference& oReference, std::string_view sIndex, Arena& oArena) {
	auto* oIndex = oArena.make<Index>();
	oIndex->sKey = isIntegerKey(sIndex, oIndex->nIndex) ? nullptr : oArena.makeKey(sIndex);
	oIndex->nSlot = UINT32_MAX;
	oIndex->sLastKey = nullptr;
	oReference.listIndexes.prepend(oIndex);
}

} // namespace

// Read from right to left, since what a component means depends on whether a marker stands to the right of it.
ReferenceError parseReference(std::string_view sArgument, Arena& oArena, Reference& oReference) {
	bool bAsterisk = false;
	bool bKey = false;
	bool bNamespace = false;
	ptrdiff_t iRightPosition = static_cast<ptrdiff_t>(sArgument.size()) - 1;

	size_t nFound;
	while (iRightPosition >= 0 && (nFound = sArgument.rfind("::", iRightPosition)) != std::string_view::npos) {
		auto iPos = static_cast<ptrdiff_t>(nFound);
		// The component is empty, or the separator shares a colon with the one to its right.
		if (iRightPosition - iPos < 2) {
			return ReferenceError::TOO_MANY_COLONS;
		}
		std::string_view sIndex = sArgument.substr(iPos + 2, iRightPosition - iPos - 1);
		if (sIndex == "*" || sIndex == "[*]") {
			if (bAsterisk) {
				return ReferenceError::TOO_MANY_STARS;
			}
			if (sIndex == "[*]") {
				if (!oReference.listIndexes.empty()) {
					return ReferenceError::KEY_NOT_LAST;
				}
				bKey = true;
			}
			bAsterisk = true;
		} else if (bNamespace) {
			return ReferenceError::TOO_MANY_NAMESPACES;
		} else if (bAsterisk) {
			oReference.sNamespace = sIndex;
			bNamespace = true;
		} else {
			prependIndex(oReference, sIndex, oArena);
		}
		if (iPos == 0) {
			return ReferenceError::TOO_MANY_COLONS;
		}
		iRightPosition = iPos - 1;
	}

	std::string_view sIndex = sArgument.substr(0, iRightPosition + 1);
	if (sIndex == "*" || sIndex == ".*" || sIndex == "[*]") {
		if (bAsterisk) {
			return ReferenceError::TOO_MANY_STARS_LEFTMOST;
		}
		if (sIndex == "[*]" && !oReference.listIndexes.empty()) {
			return ReferenceError::KEY_NOT_LAST;
		}
		oReference.eType = sIndex == "[*]" ? KEY : ASTERISK;
		return ReferenceError::NO_ERROR;
	}
	if (bNamespace) {
		return ReferenceError::TOO_MANY_NAMESPACES_LEFTMOST;
	}
	if (bAsterisk) {
		oReference.sNamespace = sIndex;
		oReference.eType = bKey ? KEY : ASTERISK;
	} else {
		prependIndex(oReference, sIndex, oArena);
		oReference.eType = IMMEDIATE;
	}
	return ReferenceError::NO_ERROR;
}
