#pragma once

#include "my_list.h"

#include <string_view>

extern "C" {
#include "php.h"
}

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
	zend_string* sKey;      ///< the string key, its hash computed; null for an integer key
	zend_ulong nIndex;      ///< the integer key
	/// Where a string key was found last, and PHP's copy of it there if that copy is one that PHP never frees (else our
	/// own). Rows of one origin keep their keys in the same places.
	mutable uint32_t nSlot;
	mutable const zend_string* sLastKey;
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

/// Whether `sArgument` is a name of printable ASCII characters that no rule for references or tags knows: a path of one
/// component. Nearly all tags hold just that and need no parsing.
bool isPlainName(std::string_view sArgument);

/// Whether `sText` is an integer as PHP prints one; if so, `nIndex` receives it. Only such texts are integer keys.
bool isIntegerKey(std::string_view sText, zend_ulong& nIndex);
