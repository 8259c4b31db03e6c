#pragma once

#include "php/headers.h"
#include "php/string.h"
#include "text/copy_text.h"

#include <cstddef>
#include <cstring>
#include <string_view>

/// A text that grows in place as the PHP string that it may become, so that it is handed over without a copy.
class TextBuffer {
public:
	TextBuffer() = default;
	TextBuffer(const TextBuffer&) = delete;
	TextBuffer& operator=(const TextBuffer&) = delete;

	size_t size() const { return pFree - pBegin; }
	bool empty() const { return pFree == pBegin; }

	/// The text; valid until the next append.
	std::string_view view() const { return {pBegin, size()}; }

	void append(std::string_view sText) { append(sText.data(), sText.size()); }

	void append(const char* pText, size_t nLength) {
		copyText(reserve(nLength), pText, nLength);
		pFree += nLength;
	}

	void append(char ch) {
		*reserve(1) = ch;
		++pFree;
	}

	/// Appends `nCount` times the same byte.
	void append(size_t nCount, char ch) {
		memset(reserve(nCount), ch, nCount);
		pFree += nCount;
	}

	/// Makes room for `nLength` more bytes and returns where they go; `setEnd` then tells how far they were written.
	char* reserve(size_t nLength) {
		if (UNEXPECTED(nLength > static_cast<size_t>(pEnd - pFree))) {
			grow(nLength);
		}
		return pFree;
	}

	void setEnd(char* pTextEnd) { pFree = pTextEnd; }

	/// Where the text begins and ends, and where its room does.
	const char* begin() const { return pBegin; }
	char* end() const { return pFree; }
	const char* limit() const { return pEnd; }

	/// Makes room for `nLength` more bytes, which may or may not come: in one step instead of many, without touching the
	/// memory, and only as far as `memory_limit` is not brought near. A guess counts less than what is known.
	void expect(size_t nLength, bool bKnown = false);

	/// How many bytes can be appended before the text has to grow.
	size_t room() const { return pEnd - pFree; }

	/// Cuts the text back to its first `nLength` bytes.
	void truncate(size_t nLength) { pFree = pBegin + nLength; }

	/// Gives the text away as a PHP string with one reference; the buffer is empty afterwards.
	zend_string* take();

	/// Frees the text. Safe to call more than once.
	void release();

private:
	zend_string* string() const { return stringAt(pBegin); }
	bool isAllocated() const { return pBegin != aNothing; }
	void grow(size_t nLength);
	void resize(size_t nCapacity);

	// Stands for the text as long as nothing has been allocated, so that no append has to ask. Never written to.
	static inline char aNothing[1] = {};

	// The bytes of a PHP string, the first one that is free, and the end of its room.
	char* pBegin = aNothing;
	char* pFree = aNothing;
	char* pEnd = aNothing;
};
