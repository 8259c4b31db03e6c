#include "data/escape.h"

#include "data/value_text.h"
#include "php/headers.h"
#include "php/memory.h"
#include "php/settings.h"
#include "text/byte_scan.h"

#include <algorithm>
#include <array>

// Each escaping copies a clean text after one look at it. The others are left to PHP's own function, which makes a string
// that is appended and released here; only the HTML escapings do without where just the special characters matter.

namespace {

enum : uint8_t {
	SLASH_SPECIAL = 1,
	URL_SPECIAL = 2,
};

constexpr std::array<uint8_t, 256> makeByteClasses() {
	std::array<uint8_t, 256> aClasses{};
	for (int ch = 0; ch < 256; ++ch) {
		bool bUnreserved = (ch >= '0' && ch <= '9') || (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z') ||
						   ch == '-' || ch == '_' || ch == '.' || ch == '~';
		aClasses[ch] = bUnreserved ? 0 : URL_SPECIAL;
	}
	for (unsigned char ch : {'\'', '"', '\\', '\0'}) {
		aClasses[ch] |= SLASH_SPECIAL;
	}
	return aClasses;
}

constexpr std::array<uint8_t, 256> BYTE_CLASSES = makeByteClasses();

bool containsClass(const zend_string* sText, uint8_t nClass) {
	for (size_t i = 0; i < ZSTR_LEN(sText); ++i) {
		if (BYTE_CLASSES[static_cast<unsigned char>(ZSTR_VAL(sText)[i])] & nClass) {
			return true;
		}
	}
	return false;
}

void appendWhole(TextBuffer& sOutput, const zend_string* sText) {
	sOutput.append(ZSTR_VAL(sText), ZSTR_LEN(sText));
}

/// Appends what one of PHP's functions made of a text.
void appendMade(TextBuffer& sOutput, zend_string* sMade) {
	OwnedString sEscaped(sMade);
	throwIfPhpFailed();
	sOutput.append(byte_scan::upToNul(sEscaped.get()));
}

std::string_view escapedPart(const zend_string* sText, EscapeTime eTime) {
	return eTime == EscapeTime::RENDER ? byte_scan::upToNul(sText) : std::string_view(ZSTR_VAL(sText), ZSTR_LEN(sText));
}

void appendAddslashes(TextBuffer& sOutput, const zend_string* sText, EscapeTime eTime) {
	if (!containsClass(sText, SLASH_SPECIAL)) {
		appendWhole(sOutput, sText);
		return;
	}
	std::string_view sPart = escapedPart(sText, eTime);
	OwnedString sCopy(requestString(sPart.size()));
	*std::copy(sPart.begin(), sPart.end(), ZSTR_VAL(sCopy.get())) = '\0';
	appendMade(sOutput, php_addslashes(sCopy.get()));
}

void appendRawurlencode(TextBuffer& sOutput, const zend_string* sText, EscapeTime eTime) {
	if (!containsClass(sText, URL_SPECIAL)) {
		appendWhole(sOutput, sText);
		return;
	}
	std::string_view sPart = escapedPart(sText, eTime);
	appendMade(sOutput, php_raw_url_encode(sPart.data(), sPart.size()));
}

constexpr size_t LONGEST_ENTITY = 6;

/// The entity for a special character of HTML, with LONGEST_ENTITY bytes to copy; empty for a zero byte, with which the
/// text ends.
std::string_view entityFor(char ch) {
	switch (ch) {
		case '&':
			return {"&amp;\0", 5};
		case '<':
			return {"&lt;\0\0", 4};
		case '>':
			return {"&gt;\0\0", 4};
		case '"':
			return {"&quot;", 6};
		default:
			return {};
	}
}

/// Whether nothing but the special characters of HTML is escaped, whatever the bytes beyond ASCII mean.
bool isHtmlTransparent(const zend_string* sText, bool bAll, EscapeTime eTime) {
	if (eTime == EscapeTime::RENDER) {
		return !bAll || !byte_scan::contains<byte_scan::NonAscii>(sText);
	}
	if (!isDefaultCharsetUtf8()) {
		return false;
	}
	return !byte_scan::contains<byte_scan::NonAscii>(sText) ||
		   (!bAll && byte_scan::isUtf8({ZSTR_VAL(sText), ZSTR_LEN(sText)}));
}

void appendHtml(TextBuffer& sOutput, const zend_string* sText, bool bAll, EscapeTime eTime) {
	if (isHtmlTransparent(sText, bAll, eTime)) {
		appendHtmlSpecialchars(sOutput, ZSTR_VAL(sText), ZSTR_VAL(sText) + ZSTR_LEN(sText));
		return;
	}
	std::string_view sPart = escapedPart(sText, eTime);
	appendMade(sOutput,
			   php_escape_html_entities(reinterpret_cast<const unsigned char*>(sPart.data()), sPart.size(), bAll,
										ENT_COMPAT, eTime == EscapeTime::RENDER ? "ISO-8859-1" : nullptr));
}

} // namespace

// In ISO-8859-1, where every byte is a character, and in valid UTF-8 only these four are special.
void appendHtmlSpecialchars(TextBuffer& sOutput, const char* p, const char* pTextEnd) {
	for (;;) {
		char* pTo = sOutput.reserve(pTextEnd - p + byte_scan::BLOCK_SIZE + LONGEST_ENTITY);
		bool bSpecial = byte_scan::copyTillInString<byte_scan::HtmlSpecial>(pTo, p, pTextEnd);
		std::string_view sEntity = bSpecial ? entityFor(*p++) : std::string_view();
		if (sEntity.empty()) {
			sOutput.setEnd(pTo);
			return;
		}
		memcpy(pTo, sEntity.data(), LONGEST_ENTITY);
		sOutput.setEnd(pTo + sEntity.size());
	}
}

void appendEscaped(TextBuffer& sOutput, Escaping eEscaping, const zend_string* sText, EscapeTime eTime) {
	switch (eEscaping) {
		case Escaping::NONE:
			break;
		case Escaping::ADDSLASHES:
			appendAddslashes(sOutput, sText, eTime);
			break;
		case Escaping::HTMLENTITIES:
			appendHtml(sOutput, sText, true, eTime);
			break;
		case Escaping::HTMLSPECIALCHARS:
			appendHtml(sOutput, sText, false, eTime);
			break;
		case Escaping::RAWURLENCODE:
			appendRawurlencode(sOutput, sText, eTime);
			break;
	}
}

namespace {

/// Whether an escaping changes the plus sign, which stands in the exponent of a float's text. None changes another
/// character that a number consists of.
bool changesPlusSign(Escaping eEscaping) {
	switch (eEscaping) {
		case Escaping::NONE:
		case Escaping::ADDSLASHES:
		case Escaping::HTMLENTITIES:
		case Escaping::HTMLSPECIALCHARS:
			return false;
		case Escaping::RAWURLENCODE:
			return true;
	}
	ZEND_UNREACHABLE();
}

} // namespace

void appendEscapedValue(TextBuffer& sOutput, Escaping eEscaping, const zval* phpVariable) {
	switch (Z_TYPE_P(phpVariable)) {
		case IS_NULL:
		case IS_FALSE:
		case IS_TRUE:
		case IS_LONG:
			appendValue(sOutput, phpVariable);
			return;
		case IS_DOUBLE:
			if (!changesPlusSign(eEscaping)) {
				appendValue(sOutput, phpVariable);
				return;
			}
			break;
		default:
			break;
	}
	OwnedString sText(convertToString(phpVariable));
	throwIfPhpFailed();
	appendEscaped(sOutput, eEscaping, sText.get(), EscapeTime::RENDER);
}
