#include "compared_value.h"

#include <cstdlib>

ComparedValue::ComparedValue(std::string_view _sValue) : sValue(_sValue), sStripped(_sValue) {
	size_t iFirst = sValue.find('\'');
	size_t iLast = sValue.rfind('\'');
	if (iFirst < iLast) {
		sStripped = sValue.substr(iFirst + 1, iLast - iFirst - 1);
	}
	// What follows the digits, a quote or the zero byte, ends the number.
	nNumber = sStripped.empty() ? 0 : strtol(sStripped.data(), nullptr, 10);
	bNul = sStripped.find('\0') != std::string_view::npos;
}
