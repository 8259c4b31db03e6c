#include "text_buffer.h"

#include <algorithm>

namespace {

constexpr size_t SMALLEST_CAPACITY = 1024 - _ZSTR_HEADER_SIZE - 1;

} // namespace

void TextBuffer::grow(size_t nLength) {
	size_t nSize = size();
	size_t nCapacity = pEnd - pBegin;
	size_t nNeeded = zend_safe_addmult(1, nSize, nLength, "template");
	size_t nNew = std::max({nNeeded, nCapacity * 2, SMALLEST_CAPACITY});
	zend_string* sNew = isAllocated() ? zend_string_realloc(string(), nNew, false) : zend_string_alloc(nNew, false);
	pBegin = ZSTR_VAL(sNew);
	pFree = pBegin + nSize;
	pEnd = pBegin + nNew;
}

zend_string* TextBuffer::take() {
	if (empty()) {
		release();
		return ZSTR_EMPTY_ALLOC();
	}
	zend_string* sResult = zend_string_truncate(string(), size(), false);
	ZSTR_VAL(sResult)[ZSTR_LEN(sResult)] = '\0';
	pBegin = pFree = pEnd = aNothing;
	return sResult;
}

void TextBuffer::release() {
	if (isAllocated()) {
		zend_string_efree(string());
	}
	pBegin = pFree = pEnd = aNothing;
}
