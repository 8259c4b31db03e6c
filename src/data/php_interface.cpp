#include "data/php_interface.h"

#include "php/failure.h"
#include "php/properties.h"

const zval* PHPInterface::hashIndexFind(zend_ulong nIndex, const zval* phpData) const {
	if (!phpData) {
		return nullptr;
	}
	switch (Z_TYPE_P(phpData)) {
		case IS_ARRAY: {
			const zval* phpSlot = zend_hash_index_find(Z_ARRVAL_P(phpData), nIndex);
			return phpSlot ? slotValue(phpSlot) : nullptr;
		}
		case IS_OBJECT: {
			const zval* phpFound = properties::find(Z_OBJ_P(phpData), nIndex, &phpHeld);
			throwIfPhpFailed();
			return phpFound;
		}
		default:
			return nullptr;
	}
}

const zval* PHPInterface::hashFindAnywhere(const Index& oKey, const HashTable* oColumns) {
	return findKey(oColumns, oKey.sKey, oKey.oHint);
}

HashTable* PHPInterface::acquireTable(const zval* phpData) {
	switch (Z_TYPE_P(phpData)) {
		case IS_ARRAY:
			GC_TRY_ADDREF(Z_ARRVAL_P(phpData));
			return Z_ARRVAL_P(phpData);
		case IS_OBJECT:
			return properties::copy(Z_OBJ_P(phpData));
		default:
			return nullptr;
	}
}

void PHPInterface::release() {
	zval phpReleased;
	ZVAL_COPY_VALUE(&phpReleased, &phpHeld);
	abandon();
	zval_ptr_dtor(&phpReleased);
}
