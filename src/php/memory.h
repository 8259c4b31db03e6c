#pragma once

#include "php/failure.h"
#include "php/headers.h"
#include "php/string.h"

#include <algorithm>

// Request memory, which memory_limit counts. Where the limit is reached, PHP before 8.2.35 ends the request on the spot, by
// a jump. Since then it hands out nothing and ends it when the call has returned; until then no more must be asked for.

/// Returns `nSize` bytes, or ends the call.
inline void* requestMemory(size_t nSize) {
	if (EXPECTED(delaysLackOfMemory())) {
		if (void* pMemory = _femalloc(nSize ZEND_FILE_LINE_CC ZEND_FILE_LINE_EMPTY_CC)) {
			return pMemory;
		}
		throw TemplateError::reportedByPhp();
	}
	return emalloc(nSize);
}

/// Gives memory back.
inline void releaseMemory(void* pMemory) {
	efree(pMemory);
}

/// How many bytes memory_limit still allows.
inline size_t unusedMemory() {
	if (PG(memory_limit) <= 0) {
		return SIZE_MAX;
	}
	size_t nLimit = static_cast<size_t>(PG(memory_limit));
	return nLimit - std::min(nLimit, zend_memory_usage(true));
}

/// Returns a string with room for `nLength` bytes, or ends the call.
inline zend_string* requestString(size_t nLength) {
	return initString(requestMemory(stringSize(nLength)), nLength);
}

/// Moves a string of which `nUsed` bytes are written to where there is room for `nLength`, or ends the call.
inline zend_string* resizeString(zend_string* sString, size_t nUsed, size_t nLength) {
	size_t nSize = stringSize(nLength);
	void* pMoved;
	if (EXPECTED(delaysLackOfMemory())) {
		pMoved = _ferealloc2(sString, nSize, _ZSTR_STRUCT_SIZE(nUsed) ZEND_FILE_LINE_CC ZEND_FILE_LINE_EMPTY_CC);
		if (!pMoved) {
			throw TemplateError::reportedByPhp();
		}
	} else {
		pMoved = erealloc2(sString, nSize, _ZSTR_STRUCT_SIZE(nUsed));
	}
	sString = static_cast<zend_string*>(pMoved);
	ZSTR_LEN(sString) = nLength;
	return sString;
}

/// A string of which one reference is given back on every way out.
class OwnedString {
public:
	explicit OwnedString(zend_string* _sString) : sString(_sString) {}
	~OwnedString() { zend_string_release(sString); }
	OwnedString(const OwnedString&) = delete;
	OwnedString& operator=(const OwnedString&) = delete;

	zend_string* get() const { return sString; }

private:
	zend_string* sString;
};
