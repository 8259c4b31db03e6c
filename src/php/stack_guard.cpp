#include "php/stack_guard.h"

#include "php/fiber_stack.h"

#include <algorithm>
#include <pthread.h>
#include <sys/auxv.h>
#include <sys/resource.h>

namespace {

// What user code that the engine calls (conversions, error handlers, stream wrappers) may need.
constexpr uintptr_t RESERVE = 256 * 1024;

// So much of the main stack is there under any limit (`ulimit -s`) with which PHP starts; no system call is needed to know.
constexpr uintptr_t SURE_ON_MAIN_STACK = 48 * 1024;

// Beyond this the limit alone doesn't tell how far the main stack can grow: other mappings may stand in its way.
constexpr uintptr_t FAR_ON_MAIN_STACK = 64 * 1024 * 1024;

/// The thread's own stack; its size is 0 when PHP doesn't know it: 8.2 never does, later ones don't without a limit.
Stack threadStack() {
#ifdef ZEND_CHECK_STACK_LIMIT
	const zend_call_stack& oStack = EG(call_stack);
	return {reinterpret_cast<uintptr_t>(oStack.base) - oStack.max_size, oStack.max_size};
#else
	return {0, 0};
#endif
}

} // namespace

StackGuard::StackGuard() : nLimit(UINTPTR_MAX), bMeasured(false) {
	uintptr_t nHere = here();
	if (!useFiberStack(nHere) && !useKnownStack(nHere)) {
		// The kernel puts these bytes at the upper end of the main stack.
		uintptr_t nTop = getauxval(AT_RANDOM);
		if (nTop - nHere < SURE_ON_MAIN_STACK) {
			nLimit = nTop - SURE_ON_MAIN_STACK;
		}
	}
}

void StackGuard::setLimit(uintptr_t nLowest, uintptr_t nStackSize) {
	nLimit = nLowest + std::min(RESERVE, nStackSize / 4);
	bMeasured = true;
}

/// Returns false when the stack at `nHere` is no fiber's.
bool StackGuard::useFiberStack(uintptr_t nHere) {
	if (!EG(active_fiber)) {
		return false;
	}
	Stack oStack = stackOf(EG(active_fiber)->context.stack);
	// A layout other than the expected one shows here; the slow way is then right as well.
	if (nHere - oStack.nLowest < oStack.nSize) {
		setLimit(oStack.nLowest, oStack.nSize);
	}
	return true;
}

/// Returns false when PHP doesn't know the stack at `nHere`.
bool StackGuard::useKnownStack(uintptr_t nHere) {
	Stack oStack = threadStack();
	if (nHere - oStack.nLowest >= oStack.nSize) {
		return false;
	}
	setLimit(oStack.nLowest, oStack.nSize);
	return true;
}

/// Returns false when the stack at `nHere` is not the main one, or when more has to be known of it.
bool StackGuard::useMainStack(uintptr_t nHere) {
	// The program's name is the very last thing on the main stack.
	uintptr_t nTop = getauxval(AT_EXECFN);
	rlimit oLimit;
	if (nTop - nHere >= FAR_ON_MAIN_STACK - RESERVE || getrlimit(RLIMIT_STACK, &oLimit) != 0) {
		return false;
	}
	if (oLimit.rlim_cur <= FAR_ON_MAIN_STACK) {
		setLimit(nTop - oLimit.rlim_cur, oLimit.rlim_cur);
	} else {
		nLimit = nTop - FAR_ON_MAIN_STACK + RESERVE;
	}
	return true;
}

/// Asks the C library, which reads a file of the kernel's if the stack is the main one.
void StackGuard::useThreadStack(uintptr_t nHere) {
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

bool StackGuard::roomBelow(uintptr_t nHere) {
	if (!bMeasured && !useMainStack(nHere)) {
		useThreadStack(nHere);
	}
	return nHere >= nLimit;
}
