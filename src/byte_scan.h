#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

extern "C" {
#include "php.h"
}

// Searches of values for bytes that keep them from being copied as they are. Values are short and nearly always clean,
// so these run on every one of them: 16 bytes a step where the processor can.

namespace byte_scan {

/// Whether two texts of one length are the same. Keys and compared values are short: a call of memcmp would take longer.
inline bool same(const char* p, const char* q, size_t nLength) {
	auto differ = [&]<typename Word>(Word, size_t nOffset) {
		Word nLeft;
		Word nRight;
		memcpy(&nLeft, p + nOffset, sizeof(Word));
		memcpy(&nRight, q + nOffset, sizeof(Word));
		return nLeft != nRight;
	};
	if (nLength > 16) {
		return memcmp(p, q, nLength) == 0;
	}
	if (nLength >= 8) {
		return !differ(uint64_t{}, 0) && !differ(uint64_t{}, nLength - 8);
	}
	if (nLength >= 4) {
		return !differ(uint32_t{}, 0) && !differ(uint32_t{}, nLength - 4);
	}
	while (nLength && p[nLength - 1] == q[nLength - 1]) {
		--nLength;
	}
	return nLength == 0;
}

/// Whether two PHP strings are the same. The last 16 bytes up to the end of a short one begin in its header, with a part
/// of what tells its length: where the lengths agree, that does, too, or is the hash, which has to be computed.
inline bool same(const zend_string* sOne, const zend_string* sOther) {
	static_assert(_ZSTR_HEADER_SIZE >= 24 && offsetof(zend_string, h) + 8 == offsetof(zend_string, len));
	if (ZSTR_LEN(sOne) != ZSTR_LEN(sOther)) {
		return false;
	}
	if (UNEXPECTED(ZSTR_LEN(sOne) > 16)) {
		return memcmp(ZSTR_VAL(sOne), ZSTR_VAL(sOther), ZSTR_LEN(sOne)) == 0;
	}
	uint64_t aOne[2];
	uint64_t aOther[2];
	memcpy(aOne, ZSTR_VAL(sOne) + ZSTR_LEN(sOne) - sizeof(aOne), sizeof(aOne));
	memcpy(aOther, ZSTR_VAL(sOther) + ZSTR_LEN(sOther) - sizeof(aOther), sizeof(aOther));
	return ((aOne[0] ^ aOther[0]) | (aOne[1] ^ aOther[1])) == 0;
}

#ifdef __SSE2__

/// Whether `match` marks any byte of a PHP string.
template <typename Matcher>
inline bool contains(const zend_string* sText, Matcher match) {
	static_assert(_ZSTR_HEADER_SIZE >= sizeof(__m128i), "the last step reads back into the header");
	const char* p = ZSTR_VAL(sText);
	const char* pEnd = p + ZSTR_LEN(sText);
	auto marked = [match](const char* pBlock) {
		return static_cast<unsigned>(_mm_movemask_epi8(match(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pBlock)))));
	};
	for (; pEnd - p >= 16; p += 16) {
		if (marked(p)) {
			return true;
		}
	}
	// The rest is read together with bytes before it, which lie in the string's own memory, and those are dropped.
	size_t nRest = pEnd - p;
	return nRest && marked(pEnd - 16) >> (16 - nRest);
}

inline __m128i equals(__m128i v, char ch) {
	return _mm_cmpeq_epi8(v, _mm_set1_epi8(ch));
}

inline bool containsNul(const zend_string* sText) {
	return contains(sText, [](__m128i v) { return equals(v, '\0'); });
}

/// Marks the bytes that an HTML escaping changes in any character set, and zero bytes.
inline __m128i marksHtmlSpecial(__m128i v) {
	// Two by two they differ in one bit.
	static_assert(('"' | 4) == '&' && ('<' | 2) == '>');
	return _mm_or_si128(_mm_or_si128(equals(_mm_or_si128(v, _mm_set1_epi8(4)), '&'),
									 equals(_mm_or_si128(v, _mm_set1_epi8(2)), '>')),
						equals(v, '\0'));
}

/// Whether there is a zero byte or one of those that an HTML escaping changes in any character set.
inline bool containsHtmlSpecial(const zend_string* sText) {
	return contains(sText, marksHtmlSpecial);
}

inline bool containsNonAscii(const zend_string* sText) {
	// The highest bit is what the mask is made of.
	return contains(sText, [](__m128i v) { return v; });
}

#else

template <typename Matcher>
inline bool contains(const zend_string* sText, Matcher match) {
	for (size_t i = 0; i < ZSTR_LEN(sText); ++i) {
		if (match(ZSTR_VAL(sText)[i])) {
			return true;
		}
	}
	return false;
}

inline bool containsNul(const zend_string* sText) {
	return memchr(ZSTR_VAL(sText), 0, ZSTR_LEN(sText)) != nullptr;
}

inline bool containsHtmlSpecial(const zend_string* sText) {
	return contains(sText, [](char ch) { return ch == '&' || ch == '<' || ch == '>' || ch == '"' || ch == '\0'; });
}

inline bool containsNonAscii(const zend_string* sText) {
	return contains(sText, [](char ch) { return (ch & 0x80) != 0; });
}

#endif

/// Whether the text is UTF-8 as Unicode defines it: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isUtf8(std::string_view sText);

/// The part of a string that is printed: what stands before its first zero byte.
inline std::string_view upToNul(const zend_string* sText) {
	size_t nLength = ZSTR_LEN(sText);
	return {ZSTR_VAL(sText), containsNul(sText) ? strlen(ZSTR_VAL(sText)) : nLength};
}

} // namespace byte_scan
