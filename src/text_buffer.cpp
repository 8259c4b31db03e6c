#include "text_buffer.h"

#include <algorithm>

namespace {

constexpr size_t SMALLEST_CAPACITY = 1024 - _ZSTR_HEADER_SIZE - 1;

} // namespace

void TextBuffer::grow(size_t nLength) {
	size_t nNeeded = zend_safe_addmult(1, nSize, nLength, "template");
	size_t nNew = std::max({nNeeded, nCapacity * 2, SMALLEST_CAPACITY});
	sString = sString ? zend_string_realloc(sString, nNew, false) : zend_string_alloc(nNew, false);
	nCapacity = nNew;
}

zend_string* TextBuffer::take() {
	if (nSize == 0) {
		release();
		return ZSTR_EMPTY_ALLOC();
	}
	zend_string* sResult = sString;
	if (nSize < nCapacity) {
		sResult = zend_string_truncate(sResult, nSize, false);
	}
	ZSTR_VAL(sResult)[nSize] = '\0';
	sString = nullptr;
	nSize = nCapacity = 0;
	return sResult;
}

void TextBuffer::release() {
	if (sString) {
		zend_string_efree(sString);
		sString = nullptr;
	}
	nSize = nCapacity = 0;
}
