#include "php/stream.h"

#include "php/failure.h"

#include <algorithm>
#include <unistd.h>

namespace {

// The type of the resources that own a stream. Written once, when the module starts.
int nOwnerType = 0;

// What no close of PHP's own sets: as long as it stands there, nobody but the owner can free the stream.
constexpr uint8_t HELD = 3;

/// The end of an owner: its object's, or the request's when a fatal error has jumped over the object.
void closeStream(zend_resource* oOwner) {
	auto* stream = static_cast<php_stream*>(oOwner->ptr);
	zend_resource* oShown = stream->in_free == HELD ? stream->res : nullptr;
	if (oShown) {
		oShown->type = -1;
		oShown->ptr = nullptr;
		stream->in_free = 0;
	}
	php_stream_free(stream, PHP_STREAM_FREE_CLOSE | PHP_STREAM_FREE_RSRC_DTOR);
	if (oShown) {
		zend_list_delete(oShown);
	}
}

zend_resource* ownStream(php_stream* stream) {
	zend_resource* oOwner = stream->res;
	if (!stream->readfilters.head) {
		oOwner->type = nOwnerType;
		return oOwner;
	}
	// Functions that a filter calls take the stream's resource. It can be closed, but not the stream with it.
	oOwner = zend_register_resource(stream, nOwnerType);
	stream->in_free = HELD;
	return oOwner;
}

} // namespace

void OwnedStream::startUp(int nModule) {
	nOwnerType = zend_register_list_destructors_ex(closeStream, nullptr, "template", nModule);
}

bool OwnedStream::open(const char* sName) {
	php_stream* stream = php_stream_open_wrapper_ex(sName, "rb", USE_PATH, nullptr, nullptr);
	if (stream) {
		oOwner = ownStream(stream);
	}
	throwIfPhpFailed();
	return stream;
}

void OwnedStream::adopt(int nDescriptor) {
	php_stream* stream = nullptr;
	zend_try {
		stream = php_stream_fopen_from_fd(nDescriptor, "rb", nullptr);
	}
	zend_end_try();
	if (!stream) {
		// The memory limit was met; the stream does not own the file yet.
		::close(nDescriptor);
		zend_bailout();
	}
	stream->wrapper = &php_plain_files_wrapper;
	oOwner = ownStream(stream);
}

void OwnedStream::close() {
	zend_resource* oClosing = oOwner;
	if (oClosing && !isFatalErrorPassing()) {
		oOwner = nullptr;
		zend_list_close(oClosing);
		zend_list_delete(oClosing);
	}
}

bool OwnedStream::atEnd() const {
	bool bEnd = !isLost() && php_stream_eof(stream());
	throwIfPhpFailed();
	return bEnd;
}

ssize_t OwnedStream::read(char* pTo, size_t nSize) {
	ssize_t nRead = php_stream_read(stream(), pTo, nSize);
	throwIfPhpFailed();
	return nRead;
}

size_t OwnedStream::fileSize() const {
	php_stream_statbuf oStatus;
	// Other streams than files may run user code when asked.
	if (isLost() || stream()->ops != &php_stream_stdio_ops || php_stream_stat(stream(), &oStatus) != 0) {
		return 0;
	}
	return static_cast<size_t>(std::max<decltype(oStatus.sb.st_size)>(oStatus.sb.st_size, 0));
}
