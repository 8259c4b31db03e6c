// Many threads of one PHP call template() at once, as in a web server with threads. Each runs requests of its own; in each
// request the script calls template() in every way and compares what comes out with what came out when it was alone.
//   threads MODULE SCRIPT THREADS REQUESTS [GROWTH]
// A quarter of the requests warms the process up. Fails when its resident memory grows by more than GROWTH kB after that.

#include <dlfcn.h>
#include <limits.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "php.h"
#include "php_main.h"
#include "SAPI.h"
#include "sapi/embed/php_embed.h"

#ifndef ZTS
#error "this PHP has no threads"
#endif

static zend_module_entry* module;
static char* code;
static int requests;
static long failures; // changed atomically
static long calls;    // changed atomically

// In kB, or -1.
static long resident_memory(void) {
	long size, resident = -1;
	FILE* file = fopen("/proc/self/statm", "r");
	if (file) {
		if (fscanf(file, "%ld %ld", &size, &resident) == 2) {
			resident *= sysconf(_SC_PAGESIZE) / 1024;
		}
		fclose(file);
	}
	return resident;
}

static int start_up(sapi_module_struct* sapi) {
	return php_module_startup(sapi, module);
}

static size_t print(const char* text, size_t length) {
	return fwrite(text, 1, length, stderr);
}

// Runs code in a request of its own. Returns what it evaluates to, or -1 after a fatal error.
static long run_request(const char* text) {
	long result = -1;
	if (php_request_startup() == FAILURE) {
		return -1;
	}
	zend_first_try {
		zval value;
		ZVAL_UNDEF(&value);
		if (zend_eval_string((char*) text, &value, (char*) "threads") == SUCCESS && Z_TYPE(value) == IS_LONG) {
			result = Z_LVAL(value);
		}
		zval_ptr_dtor(&value);
	}
	zend_end_try();
	php_request_shutdown(NULL);
	return result;
}

static void* run_thread(void* number) {
	(void) number;
	ts_resource(0);
	for (int i = 0; i < requests; i++) {
		long done = run_request(code);
		if (done < 0) {
			__atomic_add_fetch(&failures, 1, __ATOMIC_RELAXED);
		} else {
			__atomic_add_fetch(&calls, done, __ATOMIC_RELAXED);
		}
		// A fatal error ends its request, and only that one.
		if (run_request("strlen(template('{dynamic l}{v}{*}{/dynamic}', ['l' => [1], 'v' => new class {"
						"    function __toString(): string { exit(3); }"
						"}], true))") != -1 ||
			run_request("ini_set('display_errors', '0') . ini_set('memory_limit', '8M')"
						"    ? strlen(template('{dynamic l}{dynamic l}{dynamic l}text{/dynamic}{/dynamic}{/dynamic}',"
						"        ['l' => range(1, 500)], true)) : 0") != -1) {
			__atomic_add_fetch(&failures, 1, __ATOMIC_RELAXED);
		}
	}
	ts_free_thread();
	return NULL;
}

// Has so many threads run so many requests each.
static void run_threads(int count, int each) {
	pthread_t* threads = calloc(count, sizeof(*threads));
	requests = each;
	for (int i = 0; i < count; i++) {
		pthread_create(&threads[i], NULL, run_thread, NULL);
	}
	for (int i = 0; i < count; i++) {
		pthread_join(threads[i], NULL);
	}
	free(threads);
}

int main(int argc, char** argv) {
	if (argc < 5) {
		fprintf(stderr, "threads: give the module, the script, how many threads and how many requests each\n");
		return 2;
	}
	// By the program's own dlopen: PHP's binds the module's symbols past a sanitizer.
	void* library = dlopen(argv[1], RTLD_NOW | RTLD_GLOBAL);
	zend_module_entry* (*get)(void) = library ? (zend_module_entry * (*) (void) ) dlsym(library, "get_module") : NULL;
	if (!get) {
		fprintf(stderr, "threads: %s\n", dlerror());
		return 2;
	}
	int count = atoi(argv[3]);
	int total = atoi(argv[4]);
	long growth = argc > 5 ? atol(argv[5]) : LONG_MAX;
	size_t length = strlen(argv[2]) + 64;
	code = malloc(length);
	snprintf(code, length, "require '%s'", argv[2]);

	php_tsrm_startup();
	zend_signal_startup();
	sapi_startup(&php_embed_module);
	module = get();
	php_embed_module.startup = start_up;
	php_embed_module.ub_write = print;
	php_embed_module.ini_entries = "html_errors=0\ndisplay_errors=1\nimplicit_flush=1\nmax_execution_time=0\n";
	if (php_embed_module.startup(&php_embed_module) == FAILURE) {
		fprintf(stderr, "threads: PHP can't start\n");
		return 2;
	}

	int warm = (total + 3) / 4;
	run_threads(count, warm);
	long before = resident_memory();
	run_threads(count, total - warm);
	long after = resident_memory();
	printf("%ld calls in %d threads, %ld requests failed, %ld kB after the warm-up, %ld kB at the end\n", calls, count,
		   failures, before, after);
	free(code);
	php_module_shutdown();
	sapi_shutdown();
	tsrm_shutdown();
	return failures || !calls || before < 0 || after - before > growth ? 1 : 0;
}
