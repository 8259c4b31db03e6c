#include "text/byte_scan.h"

bool byte_scan::isUtf8(std::string_view sText) {
	const auto* p = reinterpret_cast<const unsigned char*>(sText.data());
	const auto* pEnd = p + sText.size();
	auto continues = [pEnd](const unsigned char* pByte) { return pByte < pEnd && (*pByte & 0xc0) == 0x80; };
	while (p < pEnd) {
		unsigned char ch = *p++;
		if (ch < 0x80) {
			continue;
		}
		if (ch < 0xc2 || ch > 0xf4 || !continues(p)) {
			return false;
		}
		unsigned char chNext = *p++;
		if (ch < 0xe0) {
			continue;
		}
		if ((ch == 0xe0 && chNext < 0xa0) || (ch == 0xed && chNext >= 0xa0) || (ch == 0xf0 && chNext < 0x90) ||
			(ch == 0xf4 && chNext >= 0x90) || !continues(p)) {
			return false;
		}
		++p;
		if (ch < 0xf0) {
			continue;
		}
		if (!continues(p)) {
			return false;
		}
		++p;
	}
	return true;
}
