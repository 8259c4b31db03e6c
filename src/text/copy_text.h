#pragma once

#include "php/headers.h"

#include <cstddef>
#include <cstring>

/// Copies the first and the last `nMove` bytes of a text, at once.
template <size_t nMove>
inline void copyTwice(char* pTo, const char* pFrom, size_t nLength) {
	char aFirst[nMove];
	char aLast[nMove];
	memcpy(aFirst, pFrom, nMove);
	memcpy(aLast, pFrom + nLength - nMove, nMove);
	memcpy(pTo, aFirst, nMove);
	memcpy(pTo + nLength - nMove, aLast, nMove);
}

/// Copies a text of any length. Most pieces of a page are short: copying those right here, in two moves that may
/// overlap, takes half the time of a call of memcpy.
inline void copyText(char* pTo, const char* pFrom, size_t nLength) {
	if (nLength > 32) {
		memcpy(pTo, pFrom, nLength);
	} else if (nLength >= 16) {
		copyTwice<16>(pTo, pFrom, nLength);
	} else if (nLength >= 8) {
		copyTwice<8>(pTo, pFrom, nLength);
	} else if (nLength >= 4) {
		copyTwice<4>(pTo, pFrom, nLength);
	} else if (nLength >= 2) {
		copyTwice<2>(pTo, pFrom, nLength);
	} else if (nLength) {
		*pTo = *pFrom;
	}
}

/// So many bytes behind a text have to be readable where one is said to be padded, and writable behind its copy.
constexpr size_t PADDING = 32;

/// Copies a padded text; returns what follows the copy.
inline char* copyPadded(char* pTo, const char* pFrom, size_t nLength) {
	if (EXPECTED(nLength <= PADDING)) {
		memcpy(pTo, pFrom, PADDING);
	} else {
		memcpy(pTo, pFrom, nLength);
	}
	return pTo + nLength;
}
