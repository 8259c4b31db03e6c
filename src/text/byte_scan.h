#pragma once

#include "php/headers.h"
#include "php/string.h"
#include "text/copy_text.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

// Searches of texts for bytes that keep them from being copied as they are. They run on every value that is printed, and
// values are short and nearly always clean: 16 bytes a step where the processor can.

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

/// So many bytes are looked at in one step.
constexpr size_t BLOCK_SIZE = 16;

#ifdef __SSE2__
inline __m128i equals(__m128i v, char ch) {
	return _mm_cmpeq_epi8(v, _mm_set1_epi8(ch));
}
#endif

// Sets of bytes. Each tells of one byte whether it belongs to the set and, with the highest bits of the result, of 16.

struct Nul {
	static bool has(char ch) { return ch == '\0'; }
#ifdef __SSE2__
	static __m128i has(__m128i v) { return equals(v, '\0'); }
#endif
};

struct Brace {
	static bool has(char ch) { return ch == '{' || ch == '}'; }
#ifdef __SSE2__
	static __m128i has(__m128i v) { return _mm_or_si128(equals(v, '{'), equals(v, '}')); }
#endif
};

/// What an HTML escaping changes in any character set, and the zero byte.
struct HtmlSpecial {
	static bool has(char ch) { return ch == '&' || ch == '<' || ch == '>' || ch == '"' || ch == '\0'; }
#ifdef __SSE2__
	static __m128i has(__m128i v) {
		// Two by two they differ in one bit.
		static_assert(('"' | 4) == '&' && ('<' | 2) == '>');
		return _mm_or_si128(_mm_or_si128(equals(_mm_or_si128(v, _mm_set1_epi8(4)), '&'),
										 equals(_mm_or_si128(v, _mm_set1_epi8(2)), '>')),
							equals(v, '\0'));
	}
#endif
};

struct NonAscii {
	static bool has(char ch) { return (ch & 0x80) != 0; }
#ifdef __SSE2__
	static __m128i has(__m128i v) { return v; }
#endif
};

#ifdef __SSE2__
/// Of 16 bytes, a bit for each one that belongs to the set.
template <typename Set>
inline unsigned mark(const char* pBlock) {
	return _mm_movemask_epi8(Set::has(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pBlock))));
}

/// Of the last `nRest` bytes of a PHP string, fewer than 16, a bit for each one that belongs to the set. They are read
/// together with bytes before them, which lie in the string's own memory, and those are dropped.
template <typename Set>
inline unsigned markLast(const char* pEnd, size_t nRest) {
	static_assert(STRING_HEADER_SIZE >= BLOCK_SIZE, "the bytes before a short text are its header");
	return nRest ? mark<Set>(pEnd - BLOCK_SIZE) >> (BLOCK_SIZE - nRest) : 0;
}
#endif

/// Of 64 bytes, a bit for each one that belongs to the set.
template <typename Set>
inline uint64_t mark64(const char* pBlock) {
#ifdef __SSE2__
	auto nLow = mark<Set>(pBlock) | mark<Set>(pBlock + 16) << 16;
	auto nHigh = mark<Set>(pBlock + 32) | mark<Set>(pBlock + 48) << 16;
	return nLow | uint64_t{nHigh} << 32;
#else
	uint64_t nMarks = 0;
	for (int i = 0; i < 64; ++i) {
		nMarks |= uint64_t{Set::has(pBlock[i])} << i;
	}
	return nMarks;
#endif
}

/// The first byte of the set from `p` on, or `pEnd`.
template <typename Set>
inline const char* find(const char* p, const char* pEnd) {
#ifdef __SSE2__
	for (; pEnd - p >= static_cast<ptrdiff_t>(BLOCK_SIZE); p += BLOCK_SIZE) {
		if (unsigned nMarks = mark<Set>(p)) {
			return p + __builtin_ctz(nMarks);
		}
	}
#endif
	while (p < pEnd && !Set::has(*p)) {
		++p;
	}
	return p;
}

/// Copies whole blocks while no byte of the set comes, and moves `pTo` and `p` on by what was copied. Returns whether
/// `p` is at such a byte. May write up to BLOCK_SIZE bytes behind the copy.
template <typename Set>
inline bool copyBlocksTill(char*& pTo, const char*& p, const char* pEnd) {
#ifdef __SSE2__
	for (; pEnd - p >= static_cast<ptrdiff_t>(BLOCK_SIZE); p += BLOCK_SIZE, pTo += BLOCK_SIZE) {
		memcpy(pTo, p, BLOCK_SIZE);
		if (unsigned nMarks = mark<Set>(p)) {
			int nClean = __builtin_ctz(nMarks);
			p += nClean;
			pTo += nClean;
			return true;
		}
	}
#endif
	return false;
}

/// The same for all bytes up to `pEnd`.
template <typename Set>
inline bool copyTill(char*& pTo, const char*& p, const char* pEnd) {
	if (copyBlocksTill<Set>(pTo, p, pEnd)) {
		return true;
	}
	for (; p < pEnd; *pTo++ = *p++) {
		if (Set::has(*p)) {
			return true;
		}
	}
	return false;
}

/// The same for a part of a PHP string. Faster, since bytes in front of it can be read together with its last.
template <typename Set>
inline bool copyTillInString(char*& pTo, const char*& p, const char* pEnd) {
#ifdef __SSE2__
	if (copyBlocksTill<Set>(pTo, p, pEnd)) {
		return true;
	}
	size_t nRest = static_cast<size_t>(pEnd - p) % BLOCK_SIZE;
	unsigned nMarks = markLast<Set>(pEnd, nRest);
	size_t nClean = nMarks ? __builtin_ctz(nMarks) : nRest;
	copyText(pTo, p, nClean);
	p += nClean;
	pTo += nClean;
	return nMarks != 0;
#else
	return copyTill<Set>(pTo, p, pEnd);
#endif
}

/// Whether a PHP string contains a byte of the set.
template <typename Set>
inline bool contains(const zend_string* sText) {
	const char* p = ZSTR_VAL(sText);
	const char* pEnd = p + ZSTR_LEN(sText);
#ifdef __SSE2__
	for (; pEnd - p >= static_cast<ptrdiff_t>(BLOCK_SIZE); p += BLOCK_SIZE) {
		if (mark<Set>(p)) {
			return true;
		}
	}
	return markLast<Set>(pEnd, pEnd - p) != 0;
#else
	return find<Set>(p, pEnd) != pEnd;
#endif
}

/// Whether the text is UTF-8 as Unicode defines it: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isUtf8(std::string_view sText);

/// The part of a string that is printed: what stands before its first zero byte.
inline std::string_view upToNul(const zend_string* sText) {
	size_t nLength = ZSTR_LEN(sText);
	return {ZSTR_VAL(sText), contains<Nul>(sText) ? strlen(ZSTR_VAL(sText)) : nLength};
}

} // namespace byte_scan
