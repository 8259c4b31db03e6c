#pragma once

#include "php/headers.h"

// New in PHP 8.2.35 and in later releases of the other versions. Declared whatever PHP the module is built with, since it
// may run on another release of that version, and weak, so that their absence tells of an older one.
extern "C" {
[[gnu::weak]] ZEND_API void ZEND_FASTCALL zend_handle_delayed_oom(void);
[[gnu::weak]] ZEND_API void* ZEND_FASTCALL _femalloc(size_t size ZEND_FILE_LINE_DC ZEND_FILE_LINE_ORIG_DC);
[[gnu::weak]] ZEND_API void* ZEND_FASTCALL _ferealloc2(void* ptr, size_t size,
													   size_t copy_size ZEND_FILE_LINE_DC ZEND_FILE_LINE_ORIG_DC);
}

/// Whether this PHP reports a lack of memory only when the call has returned.
inline bool delaysLackOfMemory() {
	return &zend_handle_delayed_oom != nullptr;
}

/// Whether a PHP that does so has something to report.
inline bool lacksMemory() {
#ifdef ZEND_HAS_OOM
	return ZEND_HAS_OOM();
#else
	// It was added behind all that there was.
	const auto* pBehind = reinterpret_cast<const char*>(&EG(uninitialized_zval)) + sizeof(zend_executor_globals);
	return *reinterpret_cast<const uint32_t*>(pBehind) != 0;
#endif
}

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
	if (delaysLackOfMemory() && lacksMemory()) {
		return true;
	}
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
