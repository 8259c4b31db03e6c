#pragma once

#include "text_buffer.h"

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

	void append(std::string_view sText) {
		copyText(reserve(sText.size()), sText.data(), sText.size());
		p += sText.size();
	}

	/// Appends a text that is padded.
	void appendPadded(std::string_view sPadded) {
		p = copyPadded(reserve(sPadded.size() + TextBuffer::PADDING), sPadded);
	}

	/// Appends a text that is padded and another one.
	void appendPadded(std::string_view sPadded, std::string_view sNext) {
		p = copyPadded(reserve(sPadded.size() + TextBuffer::PADDING + sNext.size()), sPadded);
		copyText(p, sNext.data(), sNext.size());
		p += sNext.size();
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
	/// Copies a text that is padded; returns what follows it. There is room for the padding as well.
	static char* copyPadded(char* pTo, std::string_view sPadded) {
		if (EXPECTED(sPadded.size() <= TextBuffer::PADDING)) {
			memcpy(pTo, sPadded.data(), TextBuffer::PADDING);
		} else {
			memcpy(pTo, sPadded.data(), sPadded.size());
		}
		return pTo + sPadded.size();
	}

	TextBuffer& sText;
	char* p;
};
