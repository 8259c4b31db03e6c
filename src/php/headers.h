#pragma once

// All that the engine includes of PHP, at the one place that knows it is C.

extern "C" {
#include "php.h"

#include "SAPI.h"
#include "fopen_wrappers.h"
#include "php_streams.h"
#include "zend_exceptions.h"
#include "zend_fibers.h"
#if PHP_VERSION_ID >= 80400
#include "zend_lazy_objects.h"
#endif

#include "ext/spl/spl_fixedarray.h"
#include "ext/standard/html.h"
#include "ext/standard/php_string.h"
#include "ext/standard/url.h"
}

#ifdef ZTS
// Where a thread has its copy of PHP's globals: looked up once a request, not at each use of one.
ZEND_TSRMLS_CACHE_EXTERN()
#endif
