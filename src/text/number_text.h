#pragma once

#include "text/text_buffer.h"

#include <array>
#include <cstdint>

/// So much room `writeInteger` and `writeShortDecimal` need.
constexpr size_t NUMBER_ROOM = 32;

/// The digits of 00 to 99.
inline constexpr std::array<char, 200> DIGIT_PAIRS = [] {
	std::array<char, 200> aPairs{};
	for (int n = 0; n < 100; ++n) {
		aPairs[2 * n] = static_cast<char>('0' + n / 10);
		aPairs[2 * n + 1] = static_cast<char>('0' + n % 10);
	}
	return aPairs;
}();

/// Writes a number below 100 as two digits; returns what follows them.
inline char* writePair(char* p, uint32_t nValue) {
	memcpy(p, &DIGIT_PAIRS[2 * nValue], 2);
	return p + 2;
}

/// Writes a number below 10,000, as most on a page are, without leading zeros; returns what follows it.
inline char* writeSmall(char* p, uint32_t nValue) {
	if (nValue >= 100) {
		p = writeSmall(p, nValue / 100);
		return writePair(p, nValue % 100);
	}
	if (nValue >= 10) {
		return writePair(p, nValue);
	}
	*p = static_cast<char>('0' + nValue);
	return p + 1;
}

/// Writes any number; returns what follows it.
char* writeNatural(char* p, uint64_t nValue);

/// Writes an integer in decimal; returns what follows it.
inline char* writeInteger(char* p, zend_long nValue) {
	auto nMagnitude = static_cast<uint64_t>(nValue);
	if (EXPECTED(nMagnitude < 10000)) {
		return writeSmall(p, static_cast<uint32_t>(nMagnitude));
	}
	if (nValue < 0) {
		*p++ = '-';
		nMagnitude = 0 - nMagnitude;
	}
	return writeNatural(p, nMagnitude);
}

/// Writes a float as PHP converts it to a string, by the ini setting "precision", if it is a decimal of few places, which
/// nearly all prices, weights and ratings are. Returns what follows it, or null when `appendLongFloat` has to be asked.
char* writeShortDecimal(char* p, double nValue);

/// Appends any float as PHP converts it to a string.
void appendLongFloat(TextBuffer& sOutput, double nValue);
