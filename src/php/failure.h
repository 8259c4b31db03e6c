#pragma once

#include "php/headers.h"

#ifdef ZEND_HAS_OOM
// New in PHP 8.2.35. Weak, so that a module built there loads into an older PHP 8.2, too, which is told by their absence.
#pragma weak zend_handle_delayed_oom
#pragma weak _femalloc
#pragma weak _ferealloc2

/// Whether this PHP reports a lack of memory only when the call has returned.
inline bool delaysLackOfMemory() {
	return &zend_handle_delayed_oom != nullptr;
}
#endif

/// Ends a call. Thrown by the engine, turned into a PHP warning by the binding.
///
/// Between throw and catch nothing may run user code or ask PHP for memory: either could jump away by PHP's own means
/// while the C++ exception is in flight. The message is therefore a finished PHP string, and a catcher takes it over.
class TemplateError {
public:
	explicit TemplateError(zend_string* _sMessage) : sMessage(_sMessage) {}

	/// The error of a call that has to end because PHP has something to report: an exception or a lack of memory.
	static TemplateError reportedByPhp() { return TemplateError(nullptr); }

	/// The message, one reference of which passes to the caller; null when PHP has its own.
	zend_string* message() const { return sMessage; }

private:
	zend_string* sMessage;
};

/// Whether user code has thrown or memory_limit has been reached.
inline bool hasPhpFailed() {
#ifdef ZEND_HAS_OOM
	if (delaysLackOfMemory() && ZEND_HAS_OOM()) {
		return true;
	}
#endif
	return UNEXPECTED(EG(exception) != nullptr);
}

/// Ends the call if what PHP just did has failed.
inline void throwIfPhpFailed() {
	if (hasPhpFailed()) {
		throw TemplateError::reportedByPhp();
	}
}

/// Whether a fatal error is on its way out of the call, so that no user code may run. Its jump skips all destructors, but
/// not in WebAssembly, where they run. PHP takes the frame of the running function away just before it jumps.
inline bool isFatalErrorPassing() {
	return UNEXPECTED(EG(current_execute_data) == nullptr);
}

/// Whether user code has called exit: PHP unwinds it like an exception.
inline bool isRequestEnding() {
	return EG(exception) && (zend_is_unwind_exit(EG(exception)) || zend_is_graceful_exit(EG(exception)));
}
