#include "data/php_interface.h"

#include "php/failure.h"
#include "php/properties.h"

const zval* PHPInterface::hashIndexFind(zend_ulong index, const zval* data) const {
	if (!data) {
		return nullptr;
	}
	switch (Z_TYPE_P(data)) {
		case IS_ARRAY: {
			const zval* slot = zend_hash_index_find(Z_ARRVAL_P(data), index);
			return slot ? slotValue(slot) : nullptr;
		}
		case IS_OBJECT: {
			const zval* found = properties::find(Z_OBJ_P(data), index, &held);
			throwIfPhpFailed();
			return found;
		}
		default:
			return nullptr;
	}
}

const zval* PHPInterface::hashFindAnywhere(const Index& key, const HashTable* table) {
	return findKey(table, key.sKey, key.oHint);
}

HashTable* PHPInterface::acquireTable(const zval* data) {
	switch (Z_TYPE_P(data)) {
		case IS_ARRAY:
			GC_TRY_ADDREF(Z_ARRVAL_P(data));
			return Z_ARRVAL_P(data);
		case IS_OBJECT:
			return properties::copy(Z_OBJ_P(data));
		default:
			return nullptr;
	}
}

void PHPInterface::release() {
	zval released;
	ZVAL_COPY_VALUE(&released, &held);
	abandon();
	zval_ptr_dtor(&released);
}
