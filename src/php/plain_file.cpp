#include "php/plain_file.h"

#include "php/headers.h"

#include <cstring>
#include <fcntl.h>

namespace {

bool namesWrapper(const char* sPath) {
	return sPath && strstr(sPath, "://");
}

/// Whether all that a name can lead to are files for which PHP's own wrapper is in charge.
bool isPlain(const char* sFileName) {
	if (strchr(sFileName, ':') || php_stream_locate_url_wrapper(sFileName, nullptr, 0) != &php_plain_files_wrapper) {
		return false;
	}
	// A relative name is looked for in the include path and beside the script, each of which may lie in a wrapper.
	return *sFileName == '/' || (!namesWrapper(PG(include_path)) && !namesWrapper(zend_get_executed_filename()));
}

} // namespace

PlainFile openPlainFile(const char* sFileName) {
	if (!isPlain(sFileName)) {
		return {false, -1};
	}
	int nDescriptor = -1;
	char aExpanded[MAXPATHLEN];
	zend_string* sResolved = php_resolve_path(sFileName, strlen(sFileName), PG(include_path));
	if (!php_check_open_basedir(sResolved ? ZSTR_VAL(sResolved) : sFileName)) {
		const char* sPath = sResolved ? ZSTR_VAL(sResolved) : expand_filepath(sFileName, aExpanded);
		nDescriptor = sPath ? open(sPath, O_RDONLY) : -1;
	}
	if (sResolved) {
		zend_string_release(sResolved);
	}
	return {true, nDescriptor};
}
