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

const zval* PHPInterface::hashIndexFind(zend_ulong index, const zval* data) {
	HashTable* table = data ? getHashTable(data) : nullptr;
	const zval* slot = table ? zend_hash_index_find(table, index) : nullptr;
	return slot ? slotValue(slot) : nullptr;
}

namespace {

HashTable* copyProperties(const HashTable* table) {
	HashTable* copy = zend_new_array(zend_hash_num_elements(table));
	for (uint32_t slot = 0; slot < numberOfSlots(table); ++slot) {
		TableElement element = elementAt(table, slot);
		if (!element.phpValue) {
			continue;
		}
		zval value;
		ZVAL_COPY(&value, element.phpValue);
		if (element.sKey) {
			zend_hash_add_new(copy, const_cast<zend_string*>(element.sKey), &value);
		} else {
			zend_hash_index_add_new(copy, element.nIndex, &value);
		}
	}
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
