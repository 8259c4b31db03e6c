#include "call.h"
#include "php/failure.h"
#include "php/headers.h"
#include "php/plain_file.h"
#include "php/stream.h"
#include "php/warning.h"
#include "template.h"

#include <cstring>

#include "template_arginfo.h"

namespace {

constexpr const char* VERSION = "2.0.0";

/// What a call came to: a text, an error message or, when both are null, an error that PHP itself reports.
struct Outcome {
	zend_string* sText = nullptr;
	zend_string* sError = nullptr;
};

/// Analyses and renders. The template's file is closed on return.
void run(Call& call, std::string_view sFileName, bool string_mode, Outcome& oOutcome) {
	Template oTemplate(sFileName, call);
	try {
		if (oTemplate.open(string_mode)) {
			oTemplate.analyzeTemplate();
			oOutcome.sText = oTemplate.getResult();
		} else {
			oTemplate.failToOpen();
		}
	} catch (const TemplateError& oError) {
		oOutcome.sError = oError.message();
	}
}

/// Runs a call and frees all that it used. A fatal error inside goes on from here, when nothing is left of the engine
/// but open streams, which PHP closes at the end of the request.
void runAndRelease(std::string_view sFileName, const zval* userData, bool string_mode, Outcome& oOutcome) {
	Call call(userData, sFileName);
	bool bFatal = false;
	zend_try {
		run(call, sFileName, string_mode, oOutcome);
	}
	zend_catch {
		bFatal = true;
		call.abandonData();
	}
	zend_end_try();
	call.release();
	if (bFatal) {
		zend_bailout();
	}
}

/// The error of arguments that can't be taken follows PHP's own, unless user code that converts one has ended the request.
void warnOfArguments() {
	if (!isRequestEnding()) {
		raiseWarning("Error while parsing parameters");
	}
}

} // namespace

ZEND_FUNCTION(template) {
	zend_string* fileName;
	zval* userData;
	bool string_mode = false;

	ZEND_PARSE_PARAMETERS_START(2, 3)
		Z_PARAM_STR(fileName)
		Z_PARAM_ARRAY(userData)
		Z_PARAM_OPTIONAL
		Z_PARAM_BOOL(string_mode)
	ZEND_PARSE_PARAMETERS_END_EX(warnOfArguments(); RETURN_NULL());

	Outcome oOutcome;
	// The name, or the text, ends at its first zero byte.
	runAndRelease(ZSTR_VAL(fileName), userData, string_mode, oOutcome);

	// User code that ran last, while the file was closed, may have thrown even though all went well before.
	if (oOutcome.sText && !hasPhpFailed()) {
		RETURN_STR(oOutcome.sText);
	}
	RETVAL_NULL();
	if (oOutcome.sText) {
		zend_string_release(oOutcome.sText);
	}
	if (oOutcome.sError) {
		if (!hasPhpFailed()) {
			raiseWarning(ZSTR_VAL(oOutcome.sError));
		}
		zend_string_release(oOutcome.sError);
	}
}

static zend_result zm_startup_template(int, int module_number) {
	OwnedStream::startUp(module_number);
	OwnedFile::startUp(module_number);
	return SUCCESS;
}

#ifdef ZTS
ZEND_TSRMLS_CACHE_DEFINE()
#endif

/// Each request may have a thread of its own.
static zend_result zm_activate_template(int, int) {
#ifdef ZTS
	ZEND_TSRMLS_CACHE_UPDATE();
#endif
	return SUCCESS;
}

static zend_module_entry template_module_entry = {
	STANDARD_MODULE_HEADER,
	"template",
	ext_functions,
	zm_startup_template,
	nullptr, // module shutdown
	zm_activate_template,
	nullptr, // request shutdown
	nullptr, // info
	VERSION,
	STANDARD_MODULE_PROPERTIES,
};

extern "C" {
ZEND_GET_MODULE(template)
}
