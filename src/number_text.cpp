#include "number_text.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace {

// The digits of 00 to 99.
constexpr std::array<char, 200> makeDigitPairs() {
	std::array<char, 200> aPairs{};
	for (int n = 0; n < 100; ++n) {
		aPairs[2 * n] = static_cast<char>('0' + n / 10);
		aPairs[2 * n + 1] = static_cast<char>('0' + n % 10);
	}
	return aPairs;
}

constexpr std::array<char, 200> DIGIT_PAIRS = makeDigitPairs();

/// Writes a number below 100 without a leading zero; returns what follows it.
char* writeSmall(char* p, uint64_t nValue) {
	if (nValue >= 10) {
		memcpy(p, &DIGIT_PAIRS[2 * nValue], 2);
		return p + 2;
	}
	*p = static_cast<char>('0' + nValue);
	return p + 1;
}

/// Writes a number in decimal in front of `pEnd`; returns where it begins.
char* writeDigits(char* pEnd, uint64_t nValue) {
	while (nValue >= 100) {
		pEnd -= 2;
		memcpy(pEnd, &DIGIT_PAIRS[2 * (nValue % 100)], 2);
		nValue /= 100;
	}
	if (nValue >= 10) {
		pEnd -= 2;
		memcpy(pEnd, &DIGIT_PAIRS[2 * nValue], 2);
	} else {
		*--pEnd = static_cast<char>('0' + nValue);
	}
	return pEnd;
}

constexpr uint64_t SCALE = 1000000;

// 10 to the power of the precision, for the precisions up to 15; beyond, a double no longer tells all such decimals
// apart. Precision -1, the shortest text that reads back as the same value, is served like 15, and 0 like 1.
constexpr uint64_t POWERS_OF_TEN[] = {
	10ULL,
	10ULL,
	100ULL,
	1000ULL,
	10000ULL,
	100000ULL,
	1000000ULL,
	10000000ULL,
	100000000ULL,
	1000000000ULL,
	10000000000ULL,
	100000000000ULL,
	1000000000000ULL,
	10000000000000ULL,
	100000000000000ULL,
	1000000000000000ULL,
};

/// Appends a float that is a decimal of at most six places, which nearly all prices, weights and ratings are. PHP's
/// own conversion takes five to ten times as long. Returns false when the value is not such a one.
///
/// Why the text is PHP's: the check shows that the value is the double nearest to n/10^6, and that decimal has at most
/// `precision` (at most 15) significant digits. Two decimals of up to 15 digits never share a nearest double. PHP's
/// conversion, rounded correctly to `precision` digits, has this value as its nearest double too: so it is that decimal.
bool appendShortDecimal(TextBuffer& sOutput, double nValue, int nPrecision) {
	if (nPrecision < -1 || nPrecision > 15) {
		return false;
	}
	double nScaled = std::fabs(nValue) * SCALE;
	if (!(nScaled < POWERS_OF_TEN[nPrecision < 0 ? 15 : nPrecision])) {
		return false;
	}
	auto nDecimal = static_cast<uint64_t>(nScaled + 0.5);
	// PHP writes less than 0.0001 with an exponent.
	if (static_cast<double>(nDecimal) / SCALE != std::fabs(nValue) || (nDecimal < 100 && nDecimal)) {
		return false;
	}

	char aText[32];
	char* pEnd = aText + sizeof(aText);
	char* pText = pEnd;
	uint64_t nWhole = nDecimal / SCALE;
	if (uint64_t nFraction = nDecimal % SCALE) {
		// The digit in front keeps the zeros behind the point.
		pText = writeDigits(pEnd, nFraction + SCALE);
		while (pEnd[-1] == '0') {
			--pEnd;
		}
		*pText = '.';
	}
	pText = writeDigits(pText, nWhole);
	if (std::signbit(nValue)) {
		*--pText = '-';
	}
	sOutput.append(pText, pEnd - pText);
	return true;
}

} // namespace

void appendInteger(TextBuffer& sOutput, zend_long nValue) {
	if (nValue >= 0 && nValue < 10000) {
		// Most numbers on a page are that small: straight into the text.
		char* p = sOutput.reserve(4);
		uint64_t nHundreds = static_cast<uint64_t>(nValue) / 100;
		if (nHundreds) {
			p = writeSmall(p, nHundreds);
			memcpy(p, &DIGIT_PAIRS[2 * (nValue % 100)], 2);
			sOutput.setEnd(p + 2);
		} else {
			sOutput.setEnd(writeSmall(p, nValue));
		}
		return;
	}
	char aText[MAX_LENGTH_OF_LONG];
	char* pEnd = aText + sizeof(aText);
	bool bNegative = nValue < 0;
	uint64_t nMagnitude = bNegative ? 0 - static_cast<uint64_t>(nValue) : static_cast<uint64_t>(nValue);
	char* pText = writeDigits(pEnd, nMagnitude);
	if (bNegative) {
		*--pText = '-';
	}
	sOutput.append(pText, pEnd - pText);
}

void appendFloat(TextBuffer& sOutput, double nValue) {
	int nPrecision = static_cast<int>(EG(precision));
	if (appendShortDecimal(sOutput, nValue, nPrecision)) {
		return;
	}
	char aText[ZEND_DOUBLE_MAX_LENGTH];
	zend_gcvt(nValue, nPrecision ? nPrecision : 1, '.', 'E', aText);
	sOutput.append(aText, strlen(aText));
}
