#include "data/php_interface.h"

HashTable* PHPInterface::getHashTable(const zval* data) {
	switch (Z_TYPE_P(data)) {
		case IS_ARRAY:
			return Z_ARRVAL_P(data);
		case IS_OBJECT:
			return Z_OBJ_HT_P(data)->get_properties(Z_OBJ_P(data));
		default:
			return nullptr;
	}
}

const zval* PHPInterface::hashFindAnywhere(const Index& key, const HashTable* table) {
	const zval* found = zend_hash_find_known_hash(table, key.sKey);
	if (found) {
		const auto* bucket = reinterpret_cast<const Bucket*>(found);
		key.nSlot = static_cast<uint32_t>(bucket - table->arData);
		key.sLastKey = ZSTR_IS_INTERNED(bucket->key) ? bucket->key : key.sKey;
	}
	return found;
}

const zval* PHPInterface::hashIndexFind(zend_ulong index, const zval* data) {
	HashTable* table = data ? getHashTable(data) : nullptr;
	const zval* slot = table ? zend_hash_index_find(table, index) : nullptr;
	return slot ? slotValue(slot) : nullptr;
}

namespace {

HashTable* copyProperties(HashTable* table) {
	HashTable* copy = zend_new_array(zend_hash_num_elements(table));
	zend_ulong index;
	zend_string* key;
	zval* slot;
	ZEND_HASH_FOREACH_KEY_VAL(table, index, key, slot) {
		const zval* value = PHPInterface::slotValue(slot);
		if (!value) {
			continue;
		}
		zval element;
		ZVAL_COPY(&element, value);
		if (key) {
			zend_hash_add_new(copy, key, &element);
		} else {
			zend_hash_index_add_new(copy, index, &element);
		}
	}
	ZEND_HASH_FOREACH_END();
	return copy;
}

} // namespace

HashTable* PHPInterface::acquireTable(const zval* data) {
	bool isObject = Z_TYPE_P(data) == IS_OBJECT;
	// The property table of some objects is made by code that may change what `data` points to.
	HashTable* table = getHashTable(data);
	if (!table) {
		return nullptr;
	}
	if (isObject) {
		return copyProperties(table);
	}
	GC_TRY_ADDREF(table);
	return table;
}
