#include "text_buffer.h"

#include <algorithm>

namespace {

// What a small text may need beyond what is known of it, and what may stay unused of a text that is given away: moving
// it to a smaller place would take longer than all else that is done for a small page.
constexpr size_t SLACK = 256;

constexpr size_t LARGE = 256 * 1024;

} // namespace

void TextBuffer::grow(size_t nLength) {
	size_t nCapacity = pEnd - pBegin;
	size_t nNeeded = zend_safe_addmult(1, size(), nLength, "template");
	// Half as much again for a large text: what it takes beyond its need may be what is missing elsewhere.
	size_t nUsual = nCapacity + (nCapacity > LARGE ? nCapacity / 2 : nCapacity);
	resize(std::max(nNeeded + SLACK, nUsual));
}

void TextBuffer::expect(size_t nLength) {
	// A wrong guess must neither cost much nor end the request.
	size_t nAtMost = std::max(LARGE, size() * 16);
	nLength = std::min(nLength, nAtMost);
	size_t nUsed = zend_memory_usage(false);
	size_t nLimit = PG(memory_limit) > 0 ? static_cast<size_t>(PG(memory_limit)) : SIZE_MAX;
	if (nLength <= room() || nUsed > nLimit || nLength + size() > (nLimit - nUsed) / 2) {
		return;
	}
	resize(size() + nLength);
}

void TextBuffer::resize(size_t nCapacity) {
	size_t nSize = size();
	zend_string* sNew;
	if (isAllocated()) {
		// Only what has been written is copied.
		sNew = static_cast<zend_string*>(
			erealloc2(string(), ZEND_MM_ALIGNED_SIZE(_ZSTR_STRUCT_SIZE(nCapacity)), _ZSTR_STRUCT_SIZE(nSize)));
		ZSTR_LEN(sNew) = nCapacity;
	} else {
		sNew = zend_string_alloc(nCapacity, false);
	}
	pBegin = ZSTR_VAL(sNew);
	pFree = pBegin + nSize;
	pEnd = pBegin + nCapacity;
}

zend_string* TextBuffer::take() {
	if (empty()) {
		release();
		return ZSTR_EMPTY_ALLOC();
	}
	size_t nSize = size();
	if (room() > 2 * SLACK) {
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
