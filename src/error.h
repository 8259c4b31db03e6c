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

	/// The error of a call in which PHP itself threw: that exception says all there is to say.
	static TemplateError pendingException() { return TemplateError(nullptr); }

	/// The message, one reference of which passes to the caller; null when a PHP exception is pending.
	zend_string* message() const { return sMessage; }

private:
	zend_string* sMessage;
};

/// Ends the call if user code that just ran has thrown.
inline void throwIfExceptionIsPending() {
	if (UNEXPECTED(EG(exception) != nullptr)) {
		throw TemplateError::pendingException();
	}
}
