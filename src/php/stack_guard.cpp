#include "php/stack_guard.h"

#include "php/headers.h"

#include <algorithm>
#include <pthread.h>
#include <sys/auxv.h>

namespace {

// What user code that the engine calls (conversions, error handlers, stream wrappers) may need.
constexpr uintptr_t RESERVE = 256 * 1024;

// So much of the main stack is there under any usable limit (`ulimit -s`); no system call is needed to know.
constexpr uintptr_t SURE_ON_MAIN_STACK = 128 * 1024;

// How zend_fibers.c begins its private description of a fiber's stack (PHP 8.2).
struct FiberStack {
	char* pLowest;
	size_t nSize;
};

} // namespace

StackGuard::StackGuard() : nLimit(UINTPTR_MAX), bMeasured(false) {
	uintptr_t nHere = reinterpret_cast<uintptr_t>(__builtin_frame_address(0));
	if (EG(active_fiber)) {
		const auto* oStack = reinterpret_cast<const FiberStack*>(EG(active_fiber)->context.stack);
		uintptr_t nLowest = reinterpret_cast<uintptr_t>(oStack->pLowest);
		// A layout other than the expected one shows here; the slow way is then right as well.
		if (nHere - nLowest < oStack->nSize) {
			setLimit(nLowest, oStack->nSize);
		}
		return;
	}
	// The kernel puts these bytes at the upper end of the main stack.
	uintptr_t nTop = getauxval(AT_RANDOM);
	if (nTop - nHere < SURE_ON_MAIN_STACK) {
		nLimit = nTop - SURE_ON_MAIN_STACK;
	}
}

void StackGuard::setLimit(uintptr_t nLowest, uintptr_t nStackSize) {
	nLimit = nLowest + std::min(RESERVE, nStackSize / 4);
	bMeasured = true;
}

bool StackGuard::roomBelow(uintptr_t nHere) {
	if (!bMeasured) {
		pthread_attr_t oAttributes;
		void* pLowest = nullptr;
		size_t nStackSize = 0;
		if (pthread_getattr_np(pthread_self(), &oAttributes) == 0) {
			pthread_attr_getstack(&oAttributes, &pLowest, &nStackSize);
			pthread_attr_destroy(&oAttributes);
		}
		uintptr_t nLowest = reinterpret_cast<uintptr_t>(pLowest);
		if (nHere - nLowest < nStackSize) {
			setLimit(nLowest, nStackSize);
		} else {
			// A stack that nobody describes: trust it for as much again as any stack has.
			setLimit(nHere - 2 * RESERVE, 4 * RESERVE);
		}
	}
	return nHere >= nLimit;
}
