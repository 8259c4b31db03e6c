#include "warning.h"

#include "memory.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace {

// PHP's formatter pads to any width that a format asks for; more digits than this are not left to it.
constexpr size_t LONGEST_WIDTH = 3;

/// Whether PHP's formatter can print the directive at `p` ("%...") without an argument. `pNext` receives what follows.
bool needsNoArgument(const char* p, const char*& pNext) {
	size_t nDigits = 0;
	++p;
	// The formatter looks for flags, width and precision only if no lower-case letter follows at once.
	if (isascii(static_cast<unsigned char>(*p)) && !islower(static_cast<unsigned char>(*p))) {
		p += strspn(p, "-+# 0");
		nDigits = strspn(p, "0123456789");
		p += nDigits;
		if (*p == '.') {
			++p;
			size_t nPrecisionDigits = strspn(p, "0123456789");
			nDigits += nPrecisionDigits;
			p += nPrecisionDigits;
		}
	}
	if (*p == 'h' || *p == 'l') {
		p += p[1] == *p ? 2 : 1;
	} else if (*p && strchr("Lzjt", *p)) {
		++p;
	}
	pNext = *p ? p + 1 : p;
	// A star reads an argument; so do these conversions. "%" prints itself, all other bytes print as they are.
	return nDigits <= LONGEST_WIDTH && (!*p || !strchr("*ZudioxXsvfFeEgkGHcnp", *p));
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
