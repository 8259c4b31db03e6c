#pragma once

#include "php/headers.h"

#include <cstddef>
#include <cstdint>

/// A stack of the C code: its lowest address and its size in bytes.
struct Stack {
	uintptr_t nLowest;
	size_t nSize;
};

/// Where a fiber's stack lies.
inline Stack stackOf(zend_fiber_stack* oFiberStack) {
#ifdef ZEND_CHECK_STACK_LIMIT
	uintptr_t nBase = reinterpret_cast<uintptr_t>(zend_fiber_stack_base(oFiberStack));
	uintptr_t nLowest = reinterpret_cast<uintptr_t>(zend_fiber_stack_limit(oFiberStack)) - EG(reserved_stack_size);
	return {nLowest, nBase - nLowest};
#else
	// PHP 8.2 doesn't tell, and this goes with it: how zend_fibers.c begins its private description.
	struct FiberStack {
		void* pLowest;
		size_t nSize;
	};
	const auto* oStack = reinterpret_cast<const FiberStack*>(oFiberStack);
	return {reinterpret_cast<uintptr_t>(oStack->pLowest), oStack->nSize};
#endif
}
