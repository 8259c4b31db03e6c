#include "tree/reference.h"

#include "text/arena.h"

bool isIntegerKey(std::string_view sText, zend_ulong& nIndex) {
	// Most texts are told by their first character.
	if (sText.empty() || sText.front() > '9') {
		return false;
	}
	bool bNegative = sText.front() == '-';
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
	oIndex->oHint.sKey = oIndex->sKey;
	oReference.listIndexes.prepend(oIndex);
}

/// Where the last "::" begins whose first colon stands at `iPos` or before; -1 when there is none.
ptrdiff_t findSeparator(std::string_view sArgument, ptrdiff_t iPos) {
	for (; iPos >= 0; --iPos) {
		if (sArgument[iPos] == ':' && static_cast<size_t>(iPos) + 1 < sArgument.size() && sArgument[iPos + 1] == ':') {
			break;
		}
	}
	return iPos;
}

bool isMarker(std::string_view sIndex) {
	return (sIndex.size() == 1 && sIndex[0] == '*') || sIndex == "[*]";
}

} // namespace

// Read from right to left, since what a component means depends on whether a marker stands to the right of it.
ReferenceError parseReference(std::string_view sArgument, Arena& oArena, Reference& oReference) {
	if (sArgument.starts_with("*::") && formOf(sArgument.substr(3)) == ArgumentForm::NAME) {
		// A column of the innermost loop: most references into an element are of this kind.
		prependIndex(oReference, sArgument.substr(3), oArena);
		oReference.eType = ASTERISK;
		return ReferenceError::NO_ERROR;
	}
	bool bAsterisk = false;
	bool bKey = false;
	bool bNamespace = false;
	ptrdiff_t iRightPosition = static_cast<ptrdiff_t>(sArgument.size()) - 1;

	ptrdiff_t iPos;
	while ((iPos = findSeparator(sArgument, iRightPosition)) >= 0) {
		// The component is empty, or the separator shares a colon with the one to its right.
		if (iRightPosition - iPos < 2) {
			return ReferenceError::TOO_MANY_COLONS;
		}
		std::string_view sIndex = sArgument.substr(iPos + 2, iRightPosition - iPos - 1);
		if (isMarker(sIndex)) {
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
	if (isMarker(sIndex) || sIndex == ".*") {
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
