#pragma once

#include "php/error.h"
#include "php/headers.h"

// Request memory, which memory_limit counts. Where the limit is reached, PHP before 8.2.35 ends the request on the spot, by
// a jump. Since then it hands out nothing and ends it when the call has returned; until then no more must be asked for.

/// Returns `nSize` bytes, or ends the call.
inline void* requestMemory(size_t nSize) {
#ifdef ZEND_HAS_OOM
	if (EXPECTED(delaysLackOfMemory())) {
		if (void* pMemory = femalloc(nSize, true)) {
			return pMemory;
		}
		throw TemplateError::reportedByPhp();
	}
#endif
	return emalloc(nSize);
}

/// Returns a string with room for `nLength` bytes, or ends the call.
inline zend_string* requestString(size_t nLength) {
	auto* sString = static_cast<zend_string*>(requestMemory(ZEND_MM_ALIGNED_SIZE(_ZSTR_STRUCT_SIZE(nLength))));
	GC_SET_REFCOUNT(sString, 1);
	GC_TYPE_INFO(sString) = GC_STRING;
	ZSTR_H(sString) = 0;
	ZSTR_LEN(sString) = nLength;
	return sString;
}

/// Moves a string of which `nUsed` bytes are written to where there is room for `nLength`, or ends the call.
inline zend_string* resizeString(zend_string* sString, size_t nUsed, size_t nLength) {
	size_t nSize = ZEND_MM_ALIGNED_SIZE(_ZSTR_STRUCT_SIZE(nLength));
	void* pMoved = nullptr;
#ifdef ZEND_HAS_OOM
	if (EXPECTED(delaysLackOfMemory())) {
		pMoved = ferealloc2(sString, nSize, _ZSTR_STRUCT_SIZE(nUsed), true);
		if (!pMoved) {
			throw TemplateError::reportedByPhp();
		}
	}
#endif
	if (!pMoved) {
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
