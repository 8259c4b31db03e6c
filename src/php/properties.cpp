#include "php/properties.h"

#include "php/table.h"

namespace {

/// Holds an object while its properties are asked for: since PHP 8.4 that may run user code, which may let go of it.
class HeldObject {
public:
	explicit HeldObject(zend_object* _object) : object(_object) { GC_ADDREF(object); }
	~HeldObject() { OBJ_RELEASE(object); }
	HeldObject(const HeldObject&) = delete;
	HeldObject& operator=(const HeldObject&) = delete;

private:
	zend_object* object;
};

HashTable* tableOf(zend_object* object) {
#if PHP_VERSION_ID >= 80400
	// As PHP's own loop does. Its table alone would be empty for ever once a lazy object has failed to initialise itself.
	if (UNEXPECTED(zend_object_is_lazy(object))) {
		object = zend_lazy_object_init(object);
		if (!object) {
			return nullptr;
		}
	}
#endif
	return object->handlers->get_properties(object);
}

/// The elements of an SplFixedArray in a table of their own, which the caller owns, or null. Since PHP 8.3 they are no
/// longer in the object's table.
HashTable* makeElements([[maybe_unused]] zend_object* object) {
#if PHP_VERSION_ID >= 80300
	if (UNEXPECTED(instanceof_function(object->ce, spl_ce_SplFixedArray))) {
		return object->handlers->get_properties_for(object, ZEND_PROP_PURPOSE_ARRAY_CAST);
	}
#endif
	return nullptr;
}

/// Adds the elements of a table that have a key of the wanted kinds.
void addTo(HashTable* copy, const HashTable* table, bool bStringKeys) {
	for (uint32_t nSlot = 0; nSlot < numberOfSlots(table); ++nSlot) {
		TableElement element = elementAt(table, nSlot);
		if (!element.phpValue || (element.sKey && !bStringKeys)) {
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
}

} // namespace

HashTable* properties::copy(zend_object* object) {
	HeldObject held(object);
	HashTable* table = tableOf(object);
	if (!table) {
		return nullptr;
	}
	HashTable* elements = makeElements(object);
	HashTable* copied = zend_new_array(zend_hash_num_elements(elements ? elements : table));
	addTo(copied, table, true);
	if (elements) {
		addTo(copied, elements, false);
		zend_array_release(elements);
	}
	return copied;
}

const zval* properties::find(zend_object* object, zend_ulong index, zval* holder) {
	// An object that user code lets go of meanwhile is a lazy one. Those have no integer keys: nothing is found in it.
	HeldObject held(object);
	HashTable* elements = makeElements(object);
	HashTable* table = elements ? elements : tableOf(object);
	const zval* slot = table ? zend_hash_index_find(table, index) : nullptr;
	const zval* value = slot ? slotValue(slot) : nullptr;
	if (!elements) {
		return value;
	}
	zval replaced;
	ZVAL_COPY_VALUE(&replaced, holder);
	ZVAL_UNDEF(holder);
	if (value) {
		ZVAL_COPY(holder, value);
		value = holder;
	}
	zend_array_release(elements);
	zval_ptr_dtor(&replaced); // last, since it may run user code
	return value;
}
