#pragma once

#include "php/headers.h"
#include "php/string.h"
#include "text/copy_text.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

// Searches of texts for bytes that keep them from being copied as they are. They run on every value that is printed, and
// values are short and nearly always clean: 16 bytes a step.

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

using Byte = signed char;
using VectorBlock = Byte __attribute__((vector_size(BLOCK_SIZE)));

/// A block in two words, for a processor without vectors: there the compiler would take each step apart into sixteen. A
/// comparison sets the highest bit of each byte for which it holds; what it is compared with is never negative.
struct WordBlock {
	static constexpr uint64_t EACH = 0x0101010101010101;
	static constexpr uint64_t LOW_BITS = 0x7f * EACH;
	uint64_t aWords[2];

	friend WordBlock operator|(WordBlock one, WordBlock other) {
		return {one.aWords[0] | other.aWords[0], one.aWords[1] | other.aWords[1]};
	}
	friend WordBlock operator|(WordBlock block, Byte ch) {
		return {block.aWords[0] | EACH * ch, block.aWords[1] | EACH * ch};
	}
	friend WordBlock operator==(WordBlock block, Byte ch) {
		auto zeros = [](uint64_t n) { return ~(((n & LOW_BITS) + LOW_BITS) | n | LOW_BITS); };
		return {zeros(block.aWords[0] ^ EACH * ch), zeros(block.aWords[1] ^ EACH * ch)};
	}
	friend WordBlock operator>(WordBlock block, Byte ch) {
		auto above = [ch](uint64_t n) { return ((n & LOW_BITS) + EACH * (0x7f - ch)) & ~n & ~LOW_BITS; };
		return {above(block.aWords[0]), above(block.aWords[1])};
	}
	/// Finds negative bytes: what it is compared with is 0.
	friend WordBlock operator<(WordBlock block, Byte) {
		return {block.aWords[0] & ~LOW_BITS, block.aWords[1] & ~LOW_BITS};
	}
};

#if (defined(__SSE2__) || defined(__ARM_NEON) || defined(__VEC__) || defined(__wasm_simd128__)) && \
	!defined(TEMPLATE_NO_VECTORS)
using Block = VectorBlock;
#else
using Block = WordBlock;
#endif

// Sets of bytes. Each tells whether a byte belongs to it, and of the bytes of a block by setting the highest bit of those
// that do, or all their bits.

struct Nul {
	template <typename T>
	static auto has(T v) {
		return v == Byte{0};
	}
};

struct Brace {
	template <typename T>
	static auto has(T v) {
		return (v == Byte{'{'}) | (v == Byte{'}'});
	}
};

/// The braces, and three rare characters of ASCII: one comparison finds them all, for an eighth less time of a page of style
/// sheets and scripts than the braces alone.
struct AboveLetters {
	template <typename T>
	static auto has(T v) {
		return v > Byte{'z'};
	}
};

/// What an HTML escaping changes in any character set, and the zero byte.
struct HtmlSpecial {
	template <typename T>
	static auto has(T v) {
		// Two by two they differ in one bit.
		static_assert(('"' | 4) == '&' && ('<' | 2) == '>');
		return ((v | Byte{4}) == Byte{'&'}) | ((v | Byte{2}) == Byte{'>'}) | (v == Byte{0});
	}
};

struct NonAscii {
	template <typename T>
	static auto has(T v) {
		return v < Byte{0};
	}
};

/// Whether one byte belongs to the set.
template <typename Set>
inline bool has(char ch) {
	return Set::has(static_cast<Byte>(ch));
}

/// A bit for each byte of a block for which a comparison holds.
template <typename Found>
inline unsigned gather(Found aFound) {
#ifdef __SSE2__
	if constexpr (std::is_same_v<Block, VectorBlock>) {
		return __builtin_ia32_pmovmskb128(reinterpret_cast<char __attribute__((vector_size(BLOCK_SIZE)))>(aFound));
	}
#endif
	uint64_t aHalves[2];
	memcpy(aHalves, &aFound, BLOCK_SIZE);
	if ((aHalves[0] | aHalves[1]) == 0) {
		return 0;
	}
	// The product's highest byte gathers a bit of each byte.
	auto gatherHalf = [](uint64_t nHalf) {
		if constexpr (std::endian::native == std::endian::big) {
			nHalf = __builtin_bswap64(nHalf);
		}
		return static_cast<unsigned>((nHalf & 0x8080808080808080) * 0x0002040810204081 >> 56);
	};
	return gatherHalf(aHalves[0]) | gatherHalf(aHalves[1]) << 8;
}

/// Of 16 bytes, a bit for each one that belongs to the set.
template <typename Set>
inline unsigned mark(const char* pBlock) {
	Block aBytes;
	memcpy(&aBytes, pBlock, BLOCK_SIZE);
	return gather(Set::has(aBytes));
}

/// Of the last `nRest` bytes of a PHP string, fewer than 16, a bit for each one that belongs to the set. They are read
/// together with bytes before them, which lie in the string's own memory, and those are dropped.
template <typename Set>
inline unsigned markLast(const char* pEnd, size_t nRest) {
	static_assert(STRING_HEADER_SIZE >= BLOCK_SIZE, "the bytes before a short text are its header");
	return nRest ? mark<Set>(pEnd - BLOCK_SIZE) >> (BLOCK_SIZE - nRest) : 0;
}

/// Of 64 bytes, a bit for each one that belongs to the set.
template <typename Set>
inline uint64_t mark64(const char* pBlock) {
	auto nLow = mark<Set>(pBlock) | mark<Set>(pBlock + 16) << 16;
	auto nHigh = mark<Set>(pBlock + 32) | mark<Set>(pBlock + 48) << 16;
	return nLow | uint64_t{nHigh} << 32;
}

/// The first byte of the set from `p` on, or `pEnd`.
template <typename Set>
inline const char* find(const char* p, const char* pEnd) {
	for (; pEnd - p >= static_cast<ptrdiff_t>(BLOCK_SIZE); p += BLOCK_SIZE) {
		if (unsigned nMarks = mark<Set>(p)) {
			return p + __builtin_ctz(nMarks);
		}
	}
	while (p < pEnd && !has<Set>(*p)) {
		++p;
	}
	return p;
}

/// Copies whole blocks while no byte of the set comes, and moves `pTo` and `p` on by what was copied. Returns whether
/// `p` is at such a byte. May write up to BLOCK_SIZE bytes behind the copy.
template <typename Set>
inline bool copyBlocksTill(char*& pTo, const char*& p, const char* pEnd) {
	for (; pEnd - p >= static_cast<ptrdiff_t>(BLOCK_SIZE); p += BLOCK_SIZE, pTo += BLOCK_SIZE) {
		memcpy(pTo, p, BLOCK_SIZE);
		if (unsigned nMarks = mark<Set>(p)) {
			int nClean = __builtin_ctz(nMarks);
			p += nClean;
			pTo += nClean;
			return true;
		}
	}
	return false;
}

/// The same for all bytes up to `pEnd`.
template <typename Set>
inline bool copyTill(char*& pTo, const char*& p, const char* pEnd) {
	if (copyBlocksTill<Set>(pTo, p, pEnd)) {
		return true;
	}
	for (; p < pEnd; *pTo++ = *p++) {
		if (has<Set>(*p)) {
			return true;
		}
	}
	return false;
}

/// The same for a part of a PHP string. Faster, since bytes in front of it can be read together with its last.
template <typename Set>
inline bool copyTillInString(char*& pTo, const char*& p, const char* pEnd) {
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
}

/// Whether a PHP string contains a byte of the set.
template <typename Set>
inline bool contains(const zend_string* sText) {
	const char* p = ZSTR_VAL(sText);
	const char* pEnd = p + ZSTR_LEN(sText);
	for (; pEnd - p >= static_cast<ptrdiff_t>(BLOCK_SIZE); p += BLOCK_SIZE) {
		if (mark<Set>(p)) {
			return true;
		}
	}
	return markLast<Set>(pEnd, pEnd - p) != 0;
}

/// Whether the text is UTF-8 as Unicode defines it: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isUtf8(std::string_view sText);

/// The part of a string that is printed: what stands before its first zero byte.
inline std::string_view upToNul(const zend_string* sText) {
	size_t nLength = ZSTR_LEN(sText);
	return {ZSTR_VAL(sText), contains<Nul>(sText) ? strlen(ZSTR_VAL(sText)) : nLength};
}

} // namespace byte_scan
