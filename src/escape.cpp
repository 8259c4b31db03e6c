#include "escape.h"

#include "error.h"
#include "value_text.h"

#include <array>

extern "C" {
#include "ext/standard/html.h"
#include "ext/standard/php_string.h"
#include "ext/standard/url.h"
#include "SAPI.h"
}

namespace {

// What keeps a byte from being copied as it is, a bit for each reason.
enum : uint8_t {
	HTML_SPECIAL = 1,
	SLASH_SPECIAL = 2,
	URL_SPECIAL = 4,
	NOT_ASCII = 8,
};

constexpr std::array<uint8_t, 256> makeByteClasses() {
	std::array<uint8_t, 256> aClasses{};
	for (int ch = 0; ch < 256; ++ch) {
		bool bUnreserved = (ch >= '0' && ch <= '9') || (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z') ||
						   ch == '-' || ch == '_' || ch == '.' || ch == '~';
		aClasses[ch] = (bUnreserved ? 0 : URL_SPECIAL) | (ch >= 0x80 ? NOT_ASCII : 0);
	}
	for (unsigned char ch : {'&', '<', '>', '"', '\0'}) {
		aClasses[ch] |= HTML_SPECIAL;
	}
	for (unsigned char ch : {'\'', '"', '\\', '\0'}) {
		aClasses[ch] |= SLASH_SPECIAL;
	}
	return aClasses;
}

constexpr std::array<uint8_t, 256> BYTE_CLASSES = makeByteClasses();

/// Whether no byte of the text belongs to one of the classes `nClasses`.
bool isClean(std::string_view sText, uint8_t nClasses) {
	for (unsigned char ch : sText) {
		if (BYTE_CLASSES[ch] & nClasses) {
			return false;
		}
	}
	return true;
}

/// Whether PHP will take text without a character set for UTF-8, and without a warning.
bool isDefaultCharsetUtf8() {
	const char* sInternal = PG(internal_encoding);
	const char* sCharset = sInternal && *sInternal ? sInternal : SG(default_charset);
	return sCharset && strcasecmp(sCharset, "UTF-8") == 0;
}

void appendAndRelease(TextBuffer& sOutput, zend_string* sEscaped) {
	sOutput.append(upToNul({ZSTR_VAL(sEscaped), ZSTR_LEN(sEscaped)}));
	zend_string_release(sEscaped);
}

void appendAddslashes(TextBuffer& sOutput, std::string_view sText) {
	zend_string* sCopy = zend_string_init(sText.data(), sText.size(), false);
	zend_string* sEscaped = php_addslashes(sCopy);
	zend_string_release(sCopy);
	appendAndRelease(sOutput, sEscaped);
}

void appendHtml(TextBuffer& sOutput, std::string_view sText, bool bAll, EscapeTime eTime) {
	appendAndRelease(sOutput, php_escape_html_entities(reinterpret_cast<const unsigned char*>(sText.data()),
													   sText.size(), bAll, ENT_COMPAT,
													   eTime == EscapeTime::RENDER ? "ISO-8859-1" : nullptr));
}

/// Bytes that an HTML escaping may change. Bytes that are not ASCII depend on the character set, but "ISO-8859-1" has no
/// special ones among them.
uint8_t htmlClasses(Block::BLOCK_TYPE eType, EscapeTime eTime) {
	return eType == Block::HTMLSPECIALCHARS && eTime == EscapeTime::RENDER ? HTML_SPECIAL : HTML_SPECIAL | NOT_ASCII;
}

} // namespace

void appendEscaped(TextBuffer& sOutput, Block::BLOCK_TYPE eType, std::string_view sText, EscapeTime eTime) {
	switch (eType) {
		case Block::ADDSLASHES:
			if (isClean(sText, SLASH_SPECIAL)) {
				sOutput.append(sText);
			} else {
				appendAddslashes(sOutput, sText);
			}
			break;
		case Block::RAWURLENCODE:
			if (isClean(sText, URL_SPECIAL)) {
				sOutput.append(sText);
			} else {
				appendAndRelease(sOutput, php_raw_url_encode(sText.data(), sText.size()));
			}
			break;
		default:
			if ((eTime == EscapeTime::RENDER || isDefaultCharsetUtf8()) && isClean(sText, htmlClasses(eType, eTime))) {
				sOutput.append(sText);
			} else {
				appendHtml(sOutput, sText, eType == Block::HTMLENTITIES, eTime);
				throwIfExceptionIsPending();
			}
			break;
	}
}
