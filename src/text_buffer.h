#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

extern "C" {
#include "php.h"
}

/// Copies the first and the last `nMove` bytes, at once.
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

/// A text that grows in place as the PHP string that it may become, so that it is handed over without a copy.
class TextBuffer {
public:
	static constexpr size_t PADDING = 32;

	TextBuffer() : sString(nullptr), nSize(0), nCapacity(0) {}
	TextBuffer(const TextBuffer&) = delete;
	TextBuffer& operator=(const TextBuffer&) = delete;

	size_t size() const { return nSize; }
	bool empty() const { return nSize == 0; }

	/// The text; valid until the next append.
	std::string_view view() const { return {nSize ? ZSTR_VAL(sString) : "", nSize}; }
	const char* data() const { return view().data(); }

	void append(std::string_view sText) { append(sText.data(), sText.size()); }

	void append(const char* pText, size_t nLength) {
		if (nLength == 0) {
			return;
		}
		if (UNEXPECTED(nLength > nCapacity - nSize)) {
			grow(nLength);
		}
		copyText(ZSTR_VAL(sString) + nSize, pText, nLength);
		nSize += nLength;
	}

	/// Appends a text behind which at least `PADDING` more bytes may be read.
	void appendPadded(const char* pText, size_t nLength) {
		if (UNEXPECTED(nLength + PADDING > nCapacity - nSize)) {
			grow(nLength + PADDING);
		}
		char* pTo = ZSTR_VAL(sString) + nSize;
		if (nLength <= PADDING) {
			memcpy(pTo, pText, PADDING);
		} else {
			memcpy(pTo, pText, nLength);
		}
		nSize += nLength;
	}

	void append(char ch) {
		if (nSize == nCapacity) {
			grow(1);
		}
		ZSTR_VAL(sString)[nSize++] = ch;
	}

	/// Appends `nCount` times the same byte.
	void append(size_t nCount, char ch) {
		memset(reserve(nCount), ch, nCount);
		nSize += nCount;
	}

	/// Makes room for `nLength` more bytes and returns where they go; `advance` then takes them in.
	char* reserve(size_t nLength) {
		if (nLength > nCapacity - nSize) {
			grow(nLength);
		}
		return ZSTR_VAL(sString) + nSize;
	}

	void advance(size_t nLength) { nSize += nLength; }

	/// Cuts the text back to its first `nLength` bytes.
	void truncate(size_t nLength) { nSize = nLength; }

	/// Gives the text away as a PHP string with one reference; the buffer is empty afterwards.
	zend_string* take();

	/// Frees the text. Safe to call more than once.
	void release();

private:
	void grow(size_t nLength);

	zend_string* sString;
	size_t nSize;
	size_t nCapacity;
};
