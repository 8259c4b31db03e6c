#pragma once

#include "text/byte_scan.h"
#include "text/text_buffer.h"

/// The end of a text while many short pieces are appended. Being no part of the buffer it stays in a register, which
/// saves a tenth of the time of a page with loops. The buffer learns of what was appended when the cursor is stored.
class TextCursor {
public:
	explicit TextCursor(TextBuffer& _sText) : sText(_sText), p(_sText.end()) {}
	TextCursor(const TextCursor&) = delete;
	TextCursor& operator=(const TextCursor&) = delete;

	/// Makes room for `nLength` more bytes and returns where they go; `setEnd` then tells how far they were written.
	char* reserve(size_t nLength) {
		// No text is so long that the address could wrap.
		if (UNEXPECTED(reinterpret_cast<uintptr_t>(p) + nLength > reinterpret_cast<uintptr_t>(sText.limit()))) {
			sText.setEnd(p);
			p = sText.reserve(nLength);
		}
		return p;
	}

	void setEnd(char* pEnd) { p = pEnd; }

	size_t size() const { return p - sText.begin(); }

	/// How many bytes can be appended before the text has to grow.
	size_t room() const { return sText.limit() - p; }

	void append(std::string_view sNext) {
		copyText(reserve(sNext.size()), sNext.data(), sNext.size());
		p += sNext.size();
	}

	/// Appends a text that is padded.
	void appendPadded(std::string_view sPadded) {
		p = copyPadded(reserve(sPadded.size() + PADDING), sPadded.data(), sPadded.size());
	}

	/// Appends a text that is padded and another one, for which room is made once.
	void appendPadded(std::string_view sPadded, std::string_view sNext) {
		p = copyPadded(reserve(sPadded.size() + PADDING + sNext.size()), sPadded.data(), sPadded.size());
		copyText(p, sNext.data(), sNext.size());
		p += sNext.size();
	}

	/// Appends a text that is padded and a string up to its first byte of the set. Returns that byte, or the string's end.
	template <typename Set>
	const char* appendTill(std::string_view sPadded, const zend_string* sNext) {
		static_assert(PADDING >= byte_scan::BLOCK_SIZE);
		p = copyPadded(reserve(sPadded.size() + PADDING + ZSTR_LEN(sNext)), sPadded.data(), sPadded.size());
		const char* pNext = ZSTR_VAL(sNext);
		byte_scan::copyTillInString<Set>(p, pNext, ZSTR_VAL(sNext) + ZSTR_LEN(sNext));
		return pNext;
	}

	void store() { sText.setEnd(p); }

	/// Has `append` append to the buffer itself.
	template <typename Function>
	void lend(Function append) {
		TextBuffer& sLent = sText;
		sLent.setEnd(p);
		append(sLent);
		p = sLent.end();
	}

private:
	TextBuffer& sText;
	char* p;
};
