#include "text/text_buffer.h"

#include "php/memory.h"

#include <algorithm>

namespace {

// What a small text may need beyond what is known of it, and what may stay unused of a text that is given away: moving
// it to a smaller place would take longer than all else that is done for a small page.
constexpr size_t SLACK = 256;

constexpr size_t LARGE = 256 * 1024;

} // namespace

void TextBuffer::grow(size_t nLength) {
	size_t nCapacity = pEnd - pBegin;
	size_t nNeeded = zend_safe_addmult(1, size(), nLength, "template") + SLACK;
	size_t nUsual = nCapacity + (nCapacity > LARGE ? nCapacity / 2 : nCapacity);
	if (nUsual > nNeeded) {
		// Half as much again for a large text. Where that would break memory_limit, an eighth of what is left: the text
		// may have to move, for which there has to be room a second time, or else it can only grow where it is.
		size_t nUnused = unusedMemory();
		nNeeded = nUsual < nUnused ? nUsual : nNeeded + (nNeeded < nUnused ? nUnused - nNeeded : nUnused) / 8;
	}
	resize(nNeeded);
}

void TextBuffer::expect(size_t nLength, bool bKnown) {
	// A wrong guess must neither cost much nor end the request.
	if (!bKnown) {
		nLength = std::min(nLength, std::max(LARGE, size() * 16));
	}
	if (nLength > room() && nLength + size() < unusedMemory() / 2) {
		resize(size() + nLength);
	}
}

void TextBuffer::resize(size_t nCapacity) {
	size_t nSize = size();
	zend_string* sNew = isAllocated() ? resizeString(string(), nSize, nCapacity) : requestString(nCapacity);
	pBegin = ZSTR_VAL(sNew);
	pFree = pBegin + nSize;
	pEnd = pBegin + nCapacity;
}

zend_string* TextBuffer::take() {
	size_t nSize = size();
	if (!isAllocated() || room() > 2 * SLACK) {
		resize(nSize);
	}
	zend_string* sResult = string();
	ZSTR_LEN(sResult) = nSize;
	ZSTR_VAL(sResult)[nSize] = '\0';
	pBegin = pFree = pEnd = aNothing;
	return sResult;
}

void TextBuffer::release() {
	if (isAllocated()) {
		zend_string_efree(string());
	}
	pBegin = pFree = pEnd = aNothing;
}
