#pragma once

#include "php/headers.h"
#include "php/table.h"
#include "tree/my_list.h"

#include <array>
#include <cstdint>
#include <string_view>

class Arena;

/// What a variable reference designates.
enum VARIABLE_TYPE {
	IMMEDIATE, ///< a path from the top of the user data
	ASTERISK,  ///< the current element of an enclosing dynamic block, or a path into it
	KEY,       ///< the key of that element
	NONE,      ///< a path from the top at which there is no value
};

/// One component of a path.
struct Index {
	Index* oNext;
	zend_string* sKey;     ///< the string key, its hash computed; null for an integer key
	zend_ulong nIndex;     ///< the integer key
	mutable KeyHint oHint; ///< for a string key
};

/// A parsed variable reference. Its indexes live in an arena, its namespace is a part of the text that was parsed.
struct Reference {
	VARIABLE_TYPE eType = IMMEDIATE;
	std::string_view sNamespace;
	MyList<Index> listIndexes;
};

/// The ways in which a reference can be malformed; each has its own message.
enum class ReferenceError {
	NO_ERROR,
	TOO_MANY_COLONS,
	KEY_NOT_LAST,
	TOO_MANY_STARS,
	TOO_MANY_STARS_LEFTMOST,
	TOO_MANY_NAMESPACES,
	TOO_MANY_NAMESPACES_LEFTMOST,
};

/// Parses `sArgument` into `oReference`, which has to be fresh. After an error the reference is of no use.
ReferenceError parseReference(std::string_view sArgument, Arena& oArena, Reference& oReference);

/// The least form of an argument with a character.
inline constexpr std::array<uint8_t, 256> FORMS_OF_CHARACTERS = [] {
	std::array<uint8_t, 256> aForms{};
	for (int ch = 0; ch < 256; ++ch) {
		aForms[ch] = ch == ':' || ch == '*' ? 1 : ch > ' ' && ch < 0x7f && ch != '\'' ? 0 : 2;
	}
	return aForms;
}();

/// What a tag's argument is at first sight.
enum class ArgumentForm {
	NAME,      ///< printable ASCII characters that no rule for references or tags knows: a path of one component
	REFERENCE, ///< the same with colons and stars: one reference and nothing else
	OTHER,     ///< anything, an empty text included
};

/// Tells the form of an argument. Nearly all are names or references, which need no further look at each character.
inline ArgumentForm formOf(std::string_view sArgument) {
	unsigned nForms = sArgument.empty() ? 2 : 0;
	for (unsigned char ch : sArgument) {
		nForms |= FORMS_OF_CHARACTERS[ch];
	}
	return nForms < 2 ? static_cast<ArgumentForm>(nForms) : ArgumentForm::OTHER;
}

/// Whether `sText` is an integer as PHP prints one; if so, `nIndex` receives it. Only such texts are integer keys.
bool isIntegerKey(std::string_view sText, zend_ulong& nIndex);
