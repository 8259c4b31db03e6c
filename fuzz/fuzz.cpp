// The fuzzer's target: PHP in this process, with the engine compiled in, runs input.php for each input.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <sanitizer/common_interface_defs.h>

#include "php/fiber_stack.h"

extern "C" {
#include "php_main.h"
#include "sapi/embed/php_embed.h"
#include "zend_observer.h"

zend_module_entry* get_module(void);
}

namespace {

// Bounds what is left of an earlier input.
constexpr int INPUTS_PER_REQUEST = 500;
int nInputs = 0;

Stack oMainStack = {0, 0};
bool bSwitching = false;

/// Tells the sanitizer on which stack the process runs. PHP says so only before a switch; what has to be said behind
/// it is said before the next one.
void onFiberSwitch(zend_fiber_context*, zend_fiber_context* oTo) {
	if (bSwitching) {
		const void* pOld;
		size_t nOld;
		__sanitizer_finish_switch_fiber(nullptr, &pOld, &nOld);
		if (!oMainStack.nSize) {
			oMainStack = {reinterpret_cast<uintptr_t>(pOld), nOld};
		}
	}
	Stack oStack = oTo->stack ? stackOf(oTo->stack) : oMainStack;
	bSwitching = true;
	__sanitizer_start_switch_fiber(nullptr, reinterpret_cast<const void*>(oStack.nLowest), oStack.nSize);
}

[[noreturn]] void giveUp(const char* sWhy) {
	fprintf(stderr, "%s\n", sWhy);
	abort();
}

void loadScript() {
	zend_try {
		zend_eval_string_ex(const_cast<char*>("ini_set('memory_limit', '64M'); ini_set('display_errors', '0');"
											  "ini_set('log_errors', '0'); error_reporting(E_ALL);"
											  "ini_set('hard_timeout', '0'); require getenv('FUZZ_SCRIPT');"),
							nullptr, const_cast<char*>("fuzz"), true);
	}
	zend_catch {
		giveUp("fuzz: FUZZ_SCRIPT does not name the script; start the fuzzer with scripts/fuzz");
	}
	zend_end_try();
	if (!zend_hash_str_exists(EG(function_table), ZEND_STRL("check"))) {
		giveUp("fuzz: FUZZ_SCRIPT does not name the script; start the fuzzer with scripts/fuzz");
	}
}

void restartRequest() {
	php_request_shutdown(nullptr);
	nInputs = 0;
	if (php_request_startup() != SUCCESS) {
		giveUp("fuzz: PHP can't start a request");
	}
	loadScript();
}

} // namespace

// Memory that a call leaves behind is PHP's own: the script looks for it. What PHP keeps on purpose is no leak.
// Variables stay on the stack, as where newer compilers keep them instead goes with each switch of fibers.
extern "C" const char* __asan_default_options() {
	return "detect_leaks=0:detect_stack_use_after_return=0:quarantine_size_mb=32";
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
	// Every allocation is malloc's own, so that the sanitizer sees its bounds; PHP still keeps to memory_limit.
	setenv("USE_ZEND_ALLOC", "0", 1);
	setenv("USE_TRACKED_ALLOC", "1", 1);
	php_embed_module.php_ini_ignore = 1;
	php_embed_module.startup = [](sapi_module_struct* oSapi) {
		return static_cast<int>(php_module_startup(oSapi, get_module()));
	};
	if (php_embed_init(0, nullptr) != SUCCESS) {
		giveUp("fuzz: PHP does not start");
	}
	zend_observer_fiber_switch_register(onFiberSwitch);
	loadScript();
	return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t nBytes) {
	bool bEnded = false;
	zend_try {
		// Endless loops are PHP's to stop; that they can be is part of what is tested.
		zend_set_timeout(2, 0);
		zval aArguments[2], phpWrong;
		ZVAL_STRINGL(&aArguments[0], reinterpret_cast<const char*>(pBytes), nBytes);
		ZVAL_TRUE(&aArguments[1]);
		zend_function* oCheck =
			static_cast<zend_function*>(zend_hash_str_find_ptr(EG(function_table), ZEND_STRL("check")));
		zend_call_known_function(oCheck, nullptr, nullptr, &phpWrong, 2, aArguments, nullptr);
		zval_ptr_dtor(&aArguments[0]);
		if (EG(exception)) {
			if (!zend_is_unwind_exit(EG(exception))) {
				zend_exception_error(EG(exception), E_WARNING);
				giveUp("fuzz: an exception passed out of the check");
			}
			bEnded = true;
		} else if (Z_TYPE(phpWrong) == IS_STRING) {
			giveUp(Z_STRVAL(phpWrong));
		}
		zend_unset_timeout();
	}
	zend_catch {
		bEnded = true;
	}
	zend_end_try();
	if (bEnded || ++nInputs == INPUTS_PER_REQUEST) {
		restartRequest();
	}
	return 0;
}
