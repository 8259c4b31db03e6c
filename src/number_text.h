#pragma once

#include "text_buffer.h"

/// So much room `writeInteger` and `writeShortDecimal` need.
constexpr size_t NUMBER_ROOM = 32;

/// Writes an integer in decimal; returns what follows it.
char* writeInteger(char* p, zend_long nValue);

/// Writes a float as PHP converts it to a string, by the ini setting "precision", if it is a decimal of few places, which
/// nearly all prices, weights and ratings are. Returns what follows it, or null when `appendLongFloat` has to be asked.
char* writeShortDecimal(char* p, double nValue);

/// Appends any float as PHP converts it to a string.
void appendLongFloat(TextBuffer& sOutput, double nValue);
