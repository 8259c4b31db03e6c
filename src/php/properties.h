#pragma once

#include "php/headers.h"

/// What is read of an object. The table that PHP 8.2 has of its properties is the standard on each PHP.
namespace properties {

/// A copy of the property table, without the slots that have no value; null when there is none. The caller owns it. May
/// run user code, that of an object that initialises itself only now.
HashTable* copy(zend_object* object);

/// Finds the property with an integer key. The value is the object's own, or a copy that `holder` receives in place of
/// what it held. Returns null when there is none. May run user code, like `copy`, and when what was held goes.
const zval* find(zend_object* object, zend_ulong index, zval* holder);

} // namespace properties
