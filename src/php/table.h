#pragma once

#include "php/headers.h"

// How PHP lays hash tables out: slots, of which some hold no value any more. Packed tables have no keys but the slots' own
// numbers.

/// An element of a hash table.
struct TableElement {
	const zval* phpValue;
	const zend_string* sKey; ///< null for an integer key
	zend_ulong nIndex;       ///< an integer key; a string key's hash
};

/// How many slots there are.
inline uint32_t numberOfSlots(const HashTable* oTable) {
	return oTable->nNumUsed;
}

/// The value behind a slot: property tables point to the declared properties of their object. Null when there is none.
inline const zval* slotValue(const zval* phpSlot) {
	if (Z_TYPE_P(phpSlot) == IS_INDIRECT) {
		phpSlot = Z_INDIRECT_P(phpSlot);
	}
	return Z_TYPE_P(phpSlot) == IS_UNDEF ? nullptr : phpSlot;
}

/// Whether the slots' numbers are the keys.
inline bool isPacked(const HashTable* oTable) {
	return HT_IS_PACKED(oTable);
}

/// The value in a slot of a packed table; null when it holds none.
inline const zval* packedValueAt(const HashTable* oTable, uint32_t nSlot) {
	return slotValue(oTable->arPacked + nSlot);
}

/// What is in a slot of a table that is not packed; the value is null when it holds none.
inline TableElement keyedElementAt(const HashTable* oTable, uint32_t nSlot) {
	const Bucket& oBucket = oTable->arData[nSlot];
	return {slotValue(&oBucket.val), oBucket.key, oBucket.h};
}

/// The same for any table.
inline TableElement elementAt(const HashTable* oTable, uint32_t nSlot) {
	return isPacked(oTable) ? TableElement{packedValueAt(oTable, nSlot), nullptr, nSlot}
							: keyedElementAt(oTable, nSlot);
}

/// The table in which the string keys of a value are found: an array's own, an empty one for all else. (A packed table has
/// no string keys.)
inline const HashTable* columnsOf(const zval* phpValue) {
	return Z_TYPE_P(phpValue) == IS_ARRAY && !isPacked(Z_ARRVAL_P(phpValue)) ? Z_ARRVAL_P(phpValue) : &zend_empty_array;
}

/// Where a string key was found last. Rows of one origin keep their keys in the same places.
struct KeyHint {
	uint32_t nSlot = UINT32_MAX;
	/// PHP's copy of the key there if that copy is one that PHP never frees, else our own.
	const zend_string* sKey;
};

/// The value at which a hint points in a table that is not packed, if `isKey` finds that its key is the one; else null.
template <typename IsKey>
inline const zval* findAtHint(const HashTable* oColumns, const KeyHint& oHint, IsKey isKey) {
	if (oHint.nSlot < oColumns->nNumUsed) {
		const Bucket& oBucket = oColumns->arData[oHint.nSlot];
		if (Z_TYPE(oBucket.val) != IS_UNDEF && (oBucket.key == oHint.sKey || (oBucket.key && isKey(oBucket.key)))) {
			return &oBucket.val;
		}
	}
	return nullptr;
}

/// Finds a string key, its hash computed, in a table that is not packed, and notes where. Returns null when there is no
/// such element.
inline const zval* findKey(const HashTable* oColumns, const zend_string* sKey, KeyHint& oHint) {
	const zval* phpFound = zend_hash_find_known_hash(oColumns, sKey);
	if (phpFound) {
		const auto* oBucket = reinterpret_cast<const Bucket*>(phpFound);
		oHint.nSlot = static_cast<uint32_t>(oBucket - oColumns->arData);
		oHint.sKey = ZSTR_IS_INTERNED(oBucket->key) ? oBucket->key : sKey;
	}
	return phpFound;
}
