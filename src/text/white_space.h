#pragma once

#include <cctype>

/// Whether the C library takes the character for white space.
inline bool isSpace(char ch) {
	// No locale has white space among the printable ASCII characters; asking for each would cost a call.
	return !(ch > ' ' && ch < 0x7f) && isspace(static_cast<signed char>(ch)) != 0;
}
