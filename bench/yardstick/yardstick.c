/* What the machine allows: the same files opened and read through PHP's stream
 * layer and no more. For the benchmark only; never installed. */
#include "php.h"
#include <valgrind/callgrind.h>

ZEND_BEGIN_ARG_INFO_EX(arginfo_yardstick_read, 0, 0, 2)
ZEND_ARG_TYPE_INFO(0, names, IS_ARRAY, 0)
ZEND_ARG_TYPE_INFO(0, scan, _IS_BOOL, 0)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_yardstick_count, 0, 0, 1)
ZEND_ARG_TYPE_INFO(0, label, IS_STRING, 0)
ZEND_END_ARG_INFO()

/* Counting rather than branching lets the compiler use vector instructions:
 * no search for both braces can be much cheaper. */
__attribute__((optimize("O3"))) static zend_long braces(const char* bytes, size_t length) {
	zend_long found = 0;
	while (length > 0) {
		unsigned char part = 0;
		size_t step = length < 255 ? length : 255;
		for (size_t i = 0; i < step; i++) {
			part += (bytes[i] == '{') | (bytes[i] == '}');
		}
		found += part;
		bytes += step;
		length -= step;
	}
	return found;
}

/* Reads every named file to its end in chunks of 4092 bytes and returns the number of
 * bytes; or reads it in one step and returns the number of braces. False if one is missing. */
PHP_FUNCTION(yardstick_read) {
	HashTable* names;
	zval* name;
	bool scan;
	zend_long sum = 0;
	char buffer[4096];

	ZEND_PARSE_PARAMETERS_START(2, 2)
		Z_PARAM_ARRAY_HT(names)
		Z_PARAM_BOOL(scan)
	ZEND_PARSE_PARAMETERS_END();

	ZEND_HASH_FOREACH_VAL(names, name) {
		php_stream* stream = php_stream_open_wrapper_ex(Z_STRVAL_P(name), "rb", USE_PATH, NULL, NULL);
		if (!stream) {
			RETURN_FALSE;
		}
		if (scan) {
			zend_string* text = php_stream_copy_to_mem(stream, PHP_STREAM_COPY_ALL, 0);
			sum += braces(ZSTR_VAL(text), ZSTR_LEN(text));
			zend_string_release(text);
		}
		while (!php_stream_eof(stream)) {
			sum += php_stream_read(stream, buffer, 4092);
		}
		php_stream_close(stream);
	}
	ZEND_HASH_FOREACH_END();
	RETURN_LONG(sum);
}

/* Under callgrind: writes the instructions counted since the last call, under a label. */
PHP_FUNCTION(yardstick_count) {
	char* label;
	size_t length;

	ZEND_PARSE_PARAMETERS_START(1, 1)
		Z_PARAM_STRING(label, length)
	ZEND_PARSE_PARAMETERS_END();
	CALLGRIND_DUMP_STATS_AT(label);
}

static const zend_function_entry functions[] = {PHP_FE(yardstick_read, arginfo_yardstick_read)
													PHP_FE(yardstick_count, arginfo_yardstick_count) PHP_FE_END};

zend_module_entry yardstick_module_entry = {
	STANDARD_MODULE_HEADER, "yardstick", functions, NULL, NULL, NULL, NULL, NULL, "1", STANDARD_MODULE_PROPERTIES};

ZEND_GET_MODULE(yardstick)
