/* PHP's interface to the page: one request a call, its output in a buffer. */

#include "main/SAPI.h"
#include "main/php_main.h"
#include "main/php_variables.h"
#include "php.h"
#include "zend_smart_str.h"

#include <emscripten.h>

extern zend_module_entry* get_module(void);

static const char SETTINGS[] = "display_errors=1\n"
							   "html_errors=0\n"
							   "implicit_flush=1\n"
							   "log_errors=0\n"
							   "max_execution_time=0\n"
							   "max_input_time=-1\n"
							   "output_buffering=0\n"
							   "register_argc_argv=0\n";

/* Of the last request. Not in request memory, which is gone when the page reads it. */
static smart_str output;

static size_t write_output(const char* text, size_t length) {
	smart_str_appendl_ex(&output, text, length, true);
	return length;
}

static void send_header(sapi_header_struct* header, void* context) {
	(void) header;
	(void) context;
}

static char* read_cookies(void) {
	return NULL;
}

static void register_variables(zval* variables) {
	php_import_environment_variables(variables);
}

static void log_message(const char* message, int type) {
	(void) type;
	write_output(message, strlen(message));
}

static int start_module(sapi_module_struct* module) {
	return php_module_startup(module, get_module());
}

static sapi_module_struct page_module = {
	.name = "cli", /* for scripts that ask: there is no web server */
	.pretty_name = "WebAssembly",
	.startup = start_module,
	.shutdown = php_module_shutdown_wrapper,
	.ub_write = write_output,
	.sapi_error = php_error,
	.send_header = send_header,
	.read_cookies = read_cookies,
	.register_server_variables = register_variables,
	.log_message = log_message,
};

/* Starts PHP, once, with more settings in the form of php.ini. Returns whether that went well. */
EMSCRIPTEN_KEEPALIVE int start(const char* settings) {
	static char all[4096];
	snprintf(all, sizeof(all), "%s%s\n", SETTINGS, settings);
	zend_signal_startup();
	sapi_startup(&page_module);
	page_module.ini_entries = all;
	if (page_module.startup(&page_module) == FAILURE) {
		return 0;
	}
	SG(options) |= SAPI_OPTION_NO_CHDIR;
	return 1;
}

/* Keeps scripts from changing a setting. */
EMSCRIPTEN_KEEPALIVE void lock_setting(const char* name) {
	zend_ini_entry* setting = zend_hash_str_find_ptr(EG(ini_directives), name, strlen(name));
	if (setting) {
		setting->modifiable = ZEND_INI_SYSTEM;
	}
}

/* Runs a script as a request of its own. Returns its exit status: 255 after a fatal error. */
EMSCRIPTEN_KEEPALIVE int run(const char* path) {
	volatile int status = 255;
	smart_str_free_ex(&output, true);
	/* A fatal error may have left these. */
	EG(exit_status) = 0;
	PG(during_request_startup) = 0;
	zend_first_try {
		if (php_request_startup() == SUCCESS) {
			zend_file_handle script;
			SG(headers_sent) = 1;
			SG(request_info).no_headers = 1;
			zend_stream_init_filename(&script, path);
			script.primary_script = true;
			php_execute_script(&script);
			zend_destroy_file_handle(&script);
			status = EG(exit_status);
		}
	}
	zend_end_try();
	php_request_shutdown(NULL);
	return status;
}

/* What the last request has printed, until the next one. */
EMSCRIPTEN_KEEPALIVE const char* output_text(void) {
	return output.s ? ZSTR_VAL(output.s) : "";
}

EMSCRIPTEN_KEEPALIVE size_t output_length(void) {
	return output.s ? ZSTR_LEN(output.s) : 0;
}
