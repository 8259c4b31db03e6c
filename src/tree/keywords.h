#pragma once

#include "text/byte_scan.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

// The kinds of blocks, and the keywords by which a tag tells its kind. A new keyword is a new row here; a new escaping needs
// what it does in data/escape.cpp besides.

/// What is done to a value before it is printed.
enum class Escaping : uint8_t {
	NONE,
	ADDSLASHES,
	HTMLENTITIES,
	HTMLSPECIALCHARS,
	RAWURLENCODE,
};

/// What the kinds have in common that are analysed and rendered alike.
enum class BlockFamily : uint8_t {
	VARIABLE, ///< prints the first of several references that finds something
	ESCAPING, ///< prints one reference, escaped
	INCLUDE,  ///< leaves no block of its own
	OPTIONAL,
	DYNAMIC,
	CLOSING, ///< ends a body, leaves no block
	TEXT,    ///< no tag
};

/// The kinds, as a base so that they can be written `Block::TEXT`.
struct BlockTypes {
	enum BLOCK_TYPE : uint8_t {
		UNKNOWN,
		VARIABLE,
		TEXT,
		INCLUDE,
		_OPTIONAL,
		NOPTIONAL,
		DYNAMIC,
		RDYNAMIC,
		OPTIONAL_CLOSE,
		DYNAMIC_CLOSE,
		RDYNAMIC_CLOSE,
		ADDSLASHES,
		HTMLENTITIES,
		HTMLSPECIALCHARS,
		RAWURLENCODE,
	};
	static constexpr size_t NUMBER_OF_TYPES = RAWURLENCODE + 1;
};

/// What is known of a kind of tag.
struct Keyword {
	std::string_view sText;
	BlockTypes::BLOCK_TYPE eType;
	BlockFamily eFamily;
	BlockTypes::BLOCK_TYPE eClosingTag = BlockTypes::UNKNOWN; ///< what ends its body; UNKNOWN when it has none
	Escaping eEscaping = Escaping::NONE;
};

/// All keywords; those with the same first character stand together. None is the beginning of another.
inline constexpr std::array KEYWORDS = {
	Keyword{"!optional", BlockTypes::NOPTIONAL, BlockFamily::OPTIONAL, BlockTypes::OPTIONAL_CLOSE},
	Keyword{"/dynamic", BlockTypes::DYNAMIC_CLOSE, BlockFamily::CLOSING},
	Keyword{"/optional", BlockTypes::OPTIONAL_CLOSE, BlockFamily::CLOSING},
	Keyword{"/rdynamic", BlockTypes::RDYNAMIC_CLOSE, BlockFamily::CLOSING},
	Keyword{"addslashes", BlockTypes::ADDSLASHES, BlockFamily::ESCAPING, BlockTypes::UNKNOWN, Escaping::ADDSLASHES},
	Keyword{"dynamic", BlockTypes::DYNAMIC, BlockFamily::DYNAMIC, BlockTypes::DYNAMIC_CLOSE},
	Keyword{"htmlentities", BlockTypes::HTMLENTITIES, BlockFamily::ESCAPING, BlockTypes::UNKNOWN,
			Escaping::HTMLENTITIES},
	Keyword{"htmlspecialchars", BlockTypes::HTMLSPECIALCHARS, BlockFamily::ESCAPING, BlockTypes::UNKNOWN,
			Escaping::HTMLSPECIALCHARS},
	Keyword{"include", BlockTypes::INCLUDE, BlockFamily::INCLUDE},
	Keyword{"optional", BlockTypes::_OPTIONAL, BlockFamily::OPTIONAL, BlockTypes::OPTIONAL_CLOSE},
	Keyword{"rawurlencode", BlockTypes::RAWURLENCODE, BlockFamily::ESCAPING, BlockTypes::UNKNOWN,
			Escaping::RAWURLENCODE},
	Keyword{"rdynamic", BlockTypes::RDYNAMIC, BlockFamily::DYNAMIC, BlockTypes::RDYNAMIC_CLOSE},
};

/// What is known of each kind, those without a keyword included.
inline constexpr std::array<Keyword, BlockTypes::NUMBER_OF_TYPES> KEYWORDS_BY_TYPE = [] {
	std::array<Keyword, BlockTypes::NUMBER_OF_TYPES> aByType{};
	aByType[BlockTypes::UNKNOWN] = {"", BlockTypes::UNKNOWN, BlockFamily::TEXT};
	aByType[BlockTypes::TEXT] = {"", BlockTypes::TEXT, BlockFamily::TEXT};
	aByType[BlockTypes::VARIABLE] = {"", BlockTypes::VARIABLE, BlockFamily::VARIABLE};
	for (const Keyword& oKeyword : KEYWORDS) {
		aByType[oKeyword.eType] = oKeyword;
	}
	return aByType;
}();

/// The row of KEYWORDS with which those of a first character begin; KEYWORDS.size() when there is none.
inline constexpr std::array<uint8_t, 256> FIRST_KEYWORDS = [] {
	std::array<uint8_t, 256> aFirst{};
	aFirst.fill(KEYWORDS.size());
	for (size_t i = KEYWORDS.size(); i-- > 0;) {
		aFirst[static_cast<unsigned char>(KEYWORDS[i].sText.front())] = static_cast<uint8_t>(i);
	}
	return aFirst;
}();

/// The keyword with which a tag begins, or null. It is a mere prefix: nothing has to separate it from what follows.
inline const Keyword* findKeyword(std::string_view sTag) {
	if (sTag.empty()) {
		return nullptr;
	}
	for (size_t i = FIRST_KEYWORDS[static_cast<unsigned char>(sTag.front())];
		 i < KEYWORDS.size() && KEYWORDS[i].sText.front() == sTag.front(); ++i) {
		std::string_view sText = KEYWORDS[i].sText;
		if (sTag.size() >= sText.size() && byte_scan::same(sTag.data(), sText.data(), sText.size())) {
			return &KEYWORDS[i];
		}
	}
	return nullptr;
}
