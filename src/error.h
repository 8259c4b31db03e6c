#pragma once

extern "C" {
#include "php.h"
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
#ifdef ZEND_HAS_OOM
	if (ZEND_HAS_OOM()) {
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
