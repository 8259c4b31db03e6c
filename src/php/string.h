#pragma once

#include "php/headers.h"

#include <string_view>

// How PHP lays strings out: a header, the bytes, and a zero byte.

/// So many bytes in front of a string's own can be read.
constexpr size_t STRING_HEADER_SIZE = _ZSTR_HEADER_SIZE;

/// How many bytes a string of `nLength` takes in memory.
constexpr size_t stringSize(size_t nLength) {
	return ZEND_MM_ALIGNED_SIZE(_ZSTR_STRUCT_SIZE(nLength));
}

/// The string to which the bytes at `pBytes` belong.
inline zend_string* stringAt(char* pBytes) {
	return reinterpret_cast<zend_string*>(pBytes - STRING_HEADER_SIZE);
}

/// Makes a string with one reference in memory of `stringSize(nLength)` bytes; its bytes are still to be written.
inline zend_string* initString(void* pMemory, size_t nLength, uint32_t nTypeInfo = GC_STRING) {
	auto* sString = static_cast<zend_string*>(pMemory);
	GC_SET_REFCOUNT(sString, 1);
	GC_TYPE_INFO(sString) = nTypeInfo;
	ZSTR_H(sString) = 0;
	ZSTR_LEN(sString) = nLength;
	return sString;
}

/// Makes a string to look keys up with. Never hand it to PHP for keeping: it is marked as one that PHP neither counts nor
/// frees. `finishKey` has to follow when its bytes are written.
inline zend_string* initKey(void* pMemory, size_t nLength) {
	return initString(pMemory, nLength, GC_STRING | (IS_STR_INTERNED << GC_FLAGS_SHIFT));
}

inline void finishKey(zend_string* sKey) {
	ZSTR_VAL(sKey)[ZSTR_LEN(sKey)] = '\0';
	// Not the inlined hash: that depends on whether the compiler's char has a sign, which it may have had in PHP's build.
	ZSTR_H(sKey) = zend_hash_func(ZSTR_VAL(sKey), ZSTR_LEN(sKey));
}

/// The hash of a text that is no string of PHP's.
inline size_t hashOf(std::string_view sText) {
	return zend_inline_hash_func(sText.data(), sText.size());
}
