#include "php/warning.h"

#include "php/memory.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace {

// PHP's formatter pads to any width that a format asks for; more digits than this are not left to it.
constexpr size_t LONGEST_WIDTH = 3;

/// Moves `p` behind a width or precision. Returns false when it is a star, which reads an argument, or too large.
bool skipNumber(const char*& p) {
	size_t nDigits = strspn(p, "0123456789");
	p += nDigits;
	return nDigits <= LONGEST_WIDTH && !(nDigits == 0 && *p == '*');
}

bool isLetter(char ch) {
	return (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z');
}

/// Whether any PHP's formatter can print the directive at `p` ("%...") without an argument. `pNext` receives what follows.
bool needsNoArgument(const char* p, const char*& pNext) {
	++p;
	// The formatter looks for flags, width and precision only if no lower-case letter follows at once.
	if (isascii(static_cast<unsigned char>(*p)) && !islower(static_cast<unsigned char>(*p))) {
		p += strspn(p, "-+# 0");
		if (!skipNumber(p) || (*p == '.' && !skipNumber(++p))) {
			return false;
		}
	}
	if (*p == 'h' || *p == 'l') {
		p += p[1] == *p ? 2 : 1;
	} else if (*p && strchr("Lzjt", *p)) {
		++p;
	}
	pNext = *p ? p + 1 : p;
	// Any letter may be a conversion that reads one, of this PHP or of a later. "%" prints itself, as all other bytes do.
	return !isLetter(*p);
}

} // namespace

void raiseWarning(const char* sMessage) {
	// Directives that the formatter may see are copied whole; the percent sign of all others is doubled.
	size_t nDoubled = 0;
	auto walk = [sMessage](auto&& onDoubled) {
		for (const char* p = strchr(sMessage, '%'); p; p = strchr(p, '%')) {
			const char* pNext;
			if (needsNoArgument(p, pNext)) {
				p = pNext;
			} else {
				onDoubled(++p);
			}
		}
	};
	walk([&](const char*) { ++nDoubled; });
	if (nDoubled == 0) {
		zend_error(E_WARNING, sMessage, nullptr);
		return;
	}
	size_t nLength = strlen(sMessage) + nDoubled;
	zend_string* sFormat;
	try {
		sFormat = requestString(nLength);
	} catch (const TemplateError&) {
		return; // PHP reports the lack of memory
	}
	char* pTo = ZSTR_VAL(sFormat);
	const char* pCopied = sMessage;
	walk([&](const char* p) {
		pTo = std::copy(pCopied, p, pTo);
		*pTo++ = '%';
		pCopied = p;
	});
	strcpy(pTo, pCopied);
	zend_error(E_WARNING, ZSTR_VAL(sFormat), nullptr);
	zend_string_release(sFormat);
}
