#pragma once

#include "php/headers.h"

/// Raises an engine message as a PHP warning. The message serves as the format of PHP's own formatter, without any
/// arguments: "%%" prints one percent sign, and a directive that would read an argument prints as it is written.
///
/// Runs the user's error handler, which may throw or end the request: nothing that needs a destructor may be alive.
void raiseWarning(const char* sMessage);
