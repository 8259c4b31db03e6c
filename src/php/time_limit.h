#pragma once

#include "php/headers.h"

/// Reports max_execution_time when it is used up, by PHP's fatal error. PHP itself would look only after the call, and
/// kill the process if that took too long: so every loop over something that a template can make long looks here.
inline void checkTimeLimit() {
	if (UNEXPECTED(zend_atomic_bool_load_ex(&EG(timed_out)))) {
		zend_timeout();
	}
}
