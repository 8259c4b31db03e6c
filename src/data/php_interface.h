#pragma once

#include "php/headers.h"
#include "php/table.h"
#include "text/byte_scan.h"
#include "tree/reference.h"

/// Read access to the caller's user data. Borrows it: the array lives as long as the call that was given it.
class PHPInterface {
public:
	explicit PHPInterface(const zval* _userData) : userData(_userData) { abandon(); }

	/// Looks a string key up in the array `data`, or in the user data when `data` is null. Numeric texts stay strings.
	/// Returns null when there is no such element or `data` is no array; objects are not looked into.
	const zval* hashFind(const Index& key, const zval* data) const { return hashFindIn(key, data ? data : userData); }

	/// The same for data that is not null.
	static const zval* hashFindIn(const Index& key, const zval* data) {
		if (Z_TYPE_P(data) != IS_ARRAY) {
			return nullptr;
		}
		// A column of a table is found without a walk through the hash.
		const HashTable* table = Z_ARRVAL_P(data);
		const zval* found =
			findAtHint(table, key.oHint, [&](const zend_string* other) { return sameText(other, key.sKey); });
		return found ? found : hashFindAnywhere(key, table);
	}

	/// Looks a path of one component up in the user data; like `hashFind` for a string key, and null for an integer key.
	const zval* find(std::string_view name) const {
		zend_ulong index;
		return isIntegerKey(name, index) ? nullptr : zend_hash_str_find(Z_ARRVAL_P(userData), name.data(), name.size());
	}

	/// Looks an integer key up in the array `data` or in the property table of the object `data`.
	/// Returns null when there is no such element or `data` is null or of another type: unlike `hashFind`, it does not
	/// fall back to the user data. What is found in an object is there until the next lookup in one; that lookup may run
	/// user code, and throws when that threw.
	const zval* hashIndexFind(zend_ulong index, const zval* data) const;

	/// The table of `data` to walk while user code may run, or null when there is none to walk. The caller owns one
	/// reference. An array is shared: who writes to it meanwhile gets a copy. An object's properties are copied, since
	/// the object may change or rebuild its table in place.
	static HashTable* acquireTable(const zval* data);

	/// Gives back what a lookup in an object has left. May run user code.
	void release();
	/// Leaves that to PHP. For after a fatal error, when no user code may run any more.
	void abandon() { ZVAL_UNDEF(&held); }

private:
	static bool sameText(const zend_string* one, const zend_string* other) {
		return ZSTR_LEN(one) == ZSTR_LEN(other) && byte_scan::same(ZSTR_VAL(one), ZSTR_VAL(other), ZSTR_LEN(one));
	}

	[[gnu::noinline]] static const zval* hashFindAnywhere(const Index& key, const HashTable* table);

	const zval* userData;
	mutable zval held; ///< the value that was last found in an object that keeps its elements elsewhere
};
