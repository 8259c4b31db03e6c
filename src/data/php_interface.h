#pragma once

#include "php/headers.h"
#include "php/table.h"
#include "text/byte_scan.h"
#include "tree/reference.h"

/// Read access to the caller's user data. Borrows it: the array lives as long as the call that was given it.
class PHPInterface {
public:
	explicit PHPInterface(const zval* _userData) : userData(_userData) { abandon(); }

	/// Looks a string key up in the array `phpData`, or in the user data when `phpData` is null. Numeric texts stay
	/// strings. Returns null when there is no such element or `phpData` is no array; objects are not looked into.
	const zval* hashFind(const Index& oKey, const zval* phpData) const {
		return hashFindIn(oKey, columnsOf(phpData ? phpData : userData));
	}

	/// The same in a value's columns.
	static const zval* hashFindIn(const Index& oKey, const HashTable* oColumns) {
		// A column of a table is found without a walk through the hash.
		const zval* phpFound =
			findAtHint(oColumns, oKey.oHint, [&](const zend_string* sOther) { return sameText(sOther, oKey.sKey); });
		return phpFound ? phpFound : hashFindAnywhere(oKey, oColumns);
	}

	/// Looks a path of one component up in the user data; like `hashFind` for a string key, and null for an integer key.
	const zval* find(std::string_view sName) const {
		zend_ulong nIndex;
		return isIntegerKey(sName, nIndex) ? nullptr
										   : zend_hash_str_find(Z_ARRVAL_P(userData), sName.data(), sName.size());
	}

	/// Looks an integer key up in the array `phpData` or in the property table of the object `phpData`.
	/// Returns null when there is no such element or `phpData` is null or of another type: unlike `hashFind`, it does not
	/// fall back to the user data. What is found in an object is there until the next lookup in one; that lookup may run
	/// user code, and throws when that threw.
	const zval* hashIndexFind(zend_ulong nIndex, const zval* phpData) const;

	/// What a loop over `phpData` walks: the element "num" if it is an array that has one, else itself.
	static const zval* findRows(const zval* phpData) {
		const zval* phpNumVariable =
			Z_TYPE_P(phpData) == IS_ARRAY ? zend_hash_str_find(Z_ARRVAL_P(phpData), ZEND_STRL("num")) : nullptr;
		return phpNumVariable ? phpNumVariable : phpData;
	}

	/// The table of `phpData` to walk while user code may run, or null when there is none to walk. The caller owns one
	/// reference. An array is shared: who writes to it meanwhile gets a copy. An object's properties are copied, since
	/// the object may change or rebuild its table in place.
	static HashTable* acquireTable(const zval* phpData);

	/// Gives back what a lookup in an object has left. May run user code.
	void release();
	/// Leaves that to PHP. For after a fatal error, when no user code may run any more.
	void abandon() { ZVAL_UNDEF(&phpHeld); }

private:
	static bool sameText(const zend_string* sOne, const zend_string* sOther) {
		return ZSTR_LEN(sOne) == ZSTR_LEN(sOther) && byte_scan::same(ZSTR_VAL(sOne), ZSTR_VAL(sOther), ZSTR_LEN(sOne));
	}

	[[gnu::noinline]] static const zval* hashFindAnywhere(const Index& oKey, const HashTable* oColumns);

	const zval* userData;
	mutable zval phpHeld; ///< the value that was last found in an object that keeps its elements elsewhere
};
