#pragma once

#include "php/headers.h"

#include <cstring>
#include <strings.h>

// The ini settings that say what a text looks like.

/// The ini setting "precision": significant digits of a float's text, -1 for as many as tell it from all others.
inline int floatPrecision() {
	return static_cast<int>(EG(precision));
}

/// Whether PHP takes text of no stated character set for UTF-8, without a warning.
inline bool isDefaultCharsetUtf8() {
	const char* sInternal = PG(internal_encoding);
	const char* sCharset = sInternal && *sInternal ? sInternal : SG(default_charset);
	return sCharset && (strcmp(sCharset, "UTF-8") == 0 || strcasecmp(sCharset, "UTF-8") == 0);
}
