#pragma once

#include "php/headers.h"
#include "text/byte_scan.h"
#include "tree/reference.h"

/// Read access to the caller's user data. Borrows it: the array lives as long as the call that was given it.
class PHPInterface {
public:
	explicit PHPInterface(const zval* _userData) : userData(_userData) {}

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
		if (key.nSlot < table->nNumUsed && !HT_IS_PACKED(table)) {
			const Bucket& bucket = table->arData[key.nSlot];
			if (Z_TYPE(bucket.val) != IS_UNDEF && (bucket.key == key.sLastKey || sameKey(bucket, key.sKey))) {
				return &bucket.val;
			}
		}
		return hashFindAnywhere(key, table);
	}

	/// Looks a path of one component up in the user data; like `hashFind` for a string key, and null for an integer key.
	const zval* find(std::string_view name) const {
		zend_ulong index;
		return isIntegerKey(name, index) ? nullptr : zend_hash_str_find(Z_ARRVAL_P(userData), name.data(), name.size());
	}

	/// Looks an integer key up in the array `data` or in the property table of the object `data`.
	/// Returns null when there is no such element or `data` is null or of another type: unlike `hashFind`, it does not
	/// fall back to the user data.
	static const zval* hashIndexFind(zend_ulong index, const zval* data);

	/// The table of an array, the property table of an object (null when it has none), null for any other value.
	static HashTable* getHashTable(const zval* data);

	/// The value behind a slot of a hash table: property tables point to the declared properties of their object.
	/// Returns null for a slot without a value.
	static const zval* slotValue(const zval* slot) {
		if (Z_TYPE_P(slot) == IS_INDIRECT) {
			slot = Z_INDIRECT_P(slot);
		}
		return Z_TYPE_P(slot) == IS_UNDEF ? nullptr : slot;
	}

	/// The table of `data` to walk while user code may run, or null when there is none to walk. The caller owns one
	/// reference. An array is shared: who writes to it meanwhile gets a copy. An object's properties are copied, since
	/// the object may change or rebuild its table in place.
	static HashTable* acquireTable(const zval* data);

private:
	static bool sameKey(const Bucket& bucket, const zend_string* key) {
		return bucket.key && byte_scan::same(bucket.key, key);
	}

	[[gnu::noinline]] static const zval* hashFindAnywhere(const Index& key, const HashTable* table);

	const zval* userData;
};
