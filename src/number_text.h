#pragma once

#include "text_buffer.h"

/// Appends an integer in decimal.
void appendInteger(TextBuffer& sOutput, zend_long nValue);

/// Appends a float as PHP converts it to a string, by the ini setting "precision".
void appendFloat(TextBuffer& sOutput, double nValue);
