#include "php/plain_file.h"

#include "php/headers.h"

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool namesWrapper(const char* sPath) {
	return sPath && strstr(sPath, "://");
}

/// Whether all that a name can lead to are files for which PHP's own wrapper is in charge.
bool isPlain(const char* sName) {
	if (strchr(sName, ':') || php_stream_locate_url_wrapper(sName, nullptr, 0) != &php_plain_files_wrapper) {
		return false;
	}
	// A relative name is looked for in the include path and beside the script, each of which may lie in a wrapper.
	return *sName == '/' || (!namesWrapper(PG(include_path)) && !namesWrapper(zend_get_executed_filename()));
}

/// Opens a file where nearly all lie: at its own path, or in the first folder of the include path. Returns -1 when it isn't
/// there or more has to be known; the caller then goes PHP's way, which finds out where a file lies before it opens it. (The
/// kernel knows the current folder; PHP would ask for its name each time, a sixth of the time of a page with many includes.)
int openDirectly(const char* sName) {
#ifdef VIRTUAL_DIR
	return -1; // each thread has a current folder of its own, of which the kernel knows nothing
#else
	constexpr size_t LONGEST_NAME = 1024; // no folder in front of it makes it too long for PHP's way
	size_t nLength = strlen(sName);
	const char* sFolder = PG(include_path);
	if ((PG(open_basedir) && *PG(open_basedir)) || nLength > LONGEST_NAME) {
		return -1;
	}
	bool bAnchored = *sName == '/' || strncmp(sName, "./", 2) == 0 || strncmp(sName, "../", 3) == 0;
	if (bAnchored || !sFolder || !*sFolder) {
		return open(sName, O_RDONLY);
	}
	size_t nFolder = strcspn(sFolder, ":");
	char aPath[2 * LONGEST_NAME + 2];
	if (nFolder > LONGEST_NAME) {
		return -1;
	}
	memcpy(aPath, sFolder, nFolder);
	aPath[nFolder] = '/';
	memcpy(aPath + nFolder + 1, sName, nLength + 1);
	return open(aPath, O_RDONLY);
#endif
}

// The type of the resources that own a file. Written once, when the module starts.
int nOwnerType = 0;

void closeFile(zend_resource* oOwner) {
	// A descriptor that was given away leaves -1.
	int nDescriptor = static_cast<int>(reinterpret_cast<intptr_t>(oOwner->ptr));
	if (nDescriptor >= 0) {
		::close(nDescriptor);
	}
}

} // namespace

PlainFile openPlainFile(const char* sName) {
	if (!isPlain(sName)) {
		return {false, -1};
	}
	int nDescriptor = openDirectly(sName);
	if (nDescriptor >= 0) {
		return {true, nDescriptor};
	}
	char aExpanded[MAXPATHLEN];
	zend_string* sResolved = php_resolve_path(sName, strlen(sName), PG(include_path));
	if (!php_check_open_basedir(sResolved ? ZSTR_VAL(sResolved) : sName)) {
		const char* sPath = sResolved ? ZSTR_VAL(sResolved) : expand_filepath(sName, aExpanded);
		nDescriptor = sPath ? open(sPath, O_RDONLY) : -1;
	}
	if (sResolved) {
		zend_string_release(sResolved);
	}
	return {true, nDescriptor};
}

size_t regularFileSize(int nDescriptor) {
	struct stat oStatus;
	if (fstat(nDescriptor, &oStatus) != 0 || !S_ISREG(oStatus.st_mode)) {
		return 0;
	}
	return static_cast<size_t>(oStatus.st_size);
}

void OwnedFile::startUp(int nModule) {
	nOwnerType = zend_register_list_destructors_ex(closeFile, nullptr, "template file", nModule);
}

void OwnedFile::adopt(int _nDescriptor) {
	zend_try {
		oOwner = zend_register_resource(reinterpret_cast<void*>(static_cast<intptr_t>(_nDescriptor)), nOwnerType);
	}
	zend_end_try();
	if (!oOwner) {
		::close(_nDescriptor);
		zend_bailout();
	}
	nDescriptor = _nDescriptor;
}

int OwnedFile::detach() {
	int nDetached = nDescriptor;
	oOwner->ptr = reinterpret_cast<void*>(static_cast<intptr_t>(-1));
	close();
	return nDetached;
}

void OwnedFile::close() {
	if (zend_resource* oClosing = oOwner) {
		oOwner = nullptr;
		nDescriptor = -1;
		zend_list_close(oClosing);
		zend_list_delete(oClosing);
	}
}
