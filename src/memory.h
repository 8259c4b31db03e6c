#pragma once

#include "error.h"

extern "C" {
#include "php.h"
}

// Request memory, which memory_limit counts. Where the limit is reached, older PHP 8.2 ends the request on the spot, by a
// jump. Newer ones hand out nothing and end it when the call has returned; until then no more must be asked for.

/// Returns `nSize` bytes, or ends the call.
inline void* requestMemory(size_t nSize) {
#ifdef ZEND_HAS_OOM
	void* pMemory = femalloc(nSize, true);
	if (UNEXPECTED(!pMemory)) {
		throw TemplateError::reportedByPhp();
	}
	return pMemory;
#else
	return emalloc(nSize);
#endif
}

/// Returns a string with room for `nLength` bytes, or ends the call.
inline zend_string* requestString(size_t nLength) {
#ifdef ZEND_HAS_OOM
	zend_string* sString = zend_string_falloc(nLength, false, true);
	if (UNEXPECTED(!sString)) {
		throw TemplateError::reportedByPhp();
	}
	return sString;
#else
	return zend_string_alloc(nLength, false);
#endif
}

/// Moves a string of which `nUsed` bytes are written to where there is room for `nLength`, or ends the call.
inline zend_string* resizeString(zend_string* sString, size_t nUsed, size_t nLength) {
	size_t nSize = ZEND_MM_ALIGNED_SIZE(_ZSTR_STRUCT_SIZE(nLength));
#ifdef ZEND_HAS_OOM
	void* pMoved = ferealloc2(sString, nSize, _ZSTR_STRUCT_SIZE(nUsed), true);
	if (UNEXPECTED(!pMoved)) {
		throw TemplateError::reportedByPhp();
	}
#else
	void* pMoved = erealloc2(sString, nSize, _ZSTR_STRUCT_SIZE(nUsed));
#endif
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
