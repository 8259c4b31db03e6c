#pragma once

#include <cstdint>

/// Tells when the C stack is nearly used up, so that deep nesting ends in an error and not in a crash.
///
/// What is left of the stack is the only measure that holds: calls made from inside a call share one stack, and a
/// counter would be left wrong by a fatal error that jumps out of a call.
class StackGuard {
public:
	StackGuard();

	/// Whether what is left of the stack has to be kept for PHP's own functions and for user code.
	bool exhausted() { return here() < nLimit && !roomBelow(here()); }

private:
	static uintptr_t here() { return reinterpret_cast<uintptr_t>(__builtin_frame_address(0)); }
	bool roomBelow(uintptr_t nHere);
	bool useFiberStack(uintptr_t nHere);
	bool useKnownStack(uintptr_t nHere);
	bool useMainStack(uintptr_t nHere);
	void useThreadStack(uintptr_t nHere);
	void setLimit(uintptr_t nLowest, uintptr_t nStackSize);

	// Down to this address the stack may be used. A cheap first guess until the real limit is asked for.
	uintptr_t nLimit;
	bool bMeasured;
};
