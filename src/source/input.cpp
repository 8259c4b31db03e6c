#include "source/input.h"

#include "php/error.h"
#include "php/headers.h"
#include "php/plain_file.h"
#include "php/time_limit.h"
#include "text/byte_scan.h"
#include "text/text_buffer.h"

#include <algorithm>
#include <unistd.h>

namespace {

// Four bytes less than the buffer holds.
constexpr size_t CHUNK_SIZE = Input::BUFFER_SIZE - 4;

[[noreturn]] void throwReadError() {
	throw TemplateError(zend_string_init(ZEND_STRL("basic_string::append"), false));
}

bool isLiteralAfterBrace(char ch) {
	return ch == ' ' || ch == '\t' || ch == '\n' || ch == '\r';
}

// The type of the resources that own an input's stream.
int nOwnerType = 0;

// What no close of PHP's own sets: as long as it stands there, nobody but the owner can free the stream.
constexpr uint8_t HELD = 3;

/// The end of an owner: its input's, or the request's when a fatal error has jumped over the input.
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

/// Keeps user code from closing or reading a stream that is being read, which PHP's stream layer doesn't survive: its
/// resource becomes one that no function takes. Returns that resource.
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

void Input::startUp(int nModule) {
	nOwnerType = zend_register_list_destructors_ex(closeStream, nullptr, "template", nModule);
}

void Input::openText(std::string_view sText) {
	string_mode = true;
	string_end = false;
	buffer = sText.data();
	buffer_start = 0;
	buffer_end = static_cast<ptrdiff_t>(sText.size());
}

bool Input::openFile(const char* sFileName, char* _file_buffer) {
	string_mode = false;
	file_buffer = _file_buffer;
	buffer = file_buffer;
	buffer_start = buffer_end = 0;
	// PHP's opener throws on an empty name; here it is just a file that isn't there.
	if (!*sFileName) {
		return false;
	}
	PlainFile oFile = openPlainFile(sFileName);
	if (oFile.nDescriptor >= 0) {
		readPlainFile(oFile.nDescriptor);
		return true;
	}
	php_stream* stream =
		oFile.bPlain ? nullptr : php_stream_open_wrapper_ex(sFileName, "rb", USE_PATH, nullptr, nullptr);
	if (stream) {
		resource = ownStream(stream);
	}
	throwIfPhpFailed();
	return stream;
}

/// Reads a file of less than a chunk, as nearly all templates are, and closes it before anything else happens. A stream
/// would take a quarter longer, and user code could find it. What is left of a longer file is read through one.
void Input::readPlainFile(int nDescriptor) {
	ssize_t nRead;
	do {
		nRead = read(nDescriptor, file_buffer + buffer_end, CHUNK_SIZE - buffer_end);
		buffer_end += std::max<ssize_t>(nRead, 0);
	} while (nRead > 0 && buffer_end < static_cast<ptrdiff_t>(CHUNK_SIZE));
	if (nRead == 0) {
		::close(nDescriptor);
		return;
	}
	// An error is left to the stream, too: it meets it again, and knows what to do. A file is read again from its start,
	// since the kernel copies blocks from odd places many times slower; a pipe goes on.
	if (lseek(nDescriptor, 0, SEEK_SET) == 0) {
		buffer_end = 0;
	}
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
	resource = ownStream(stream);
}

void Input::close() {
	zend_resource* oClosing = resource;
	if (oClosing && !isFatalErrorPassing()) {
		resource = nullptr;
		zend_list_close(oClosing);
		zend_list_delete(oClosing);
	}
}

/// The stream, or null when user code has closed one that it stands on.
php_stream* Input::openStream() const {
	return resource->type >= 0 ? static_cast<php_stream*>(resource->ptr) : nullptr;
}

/// Whether nothing is left to be read. A stream that was closed is not at its end: the next read will tell.
bool Input::atEnd() const {
	if (!resource) {
		return true;
	}
	php_stream* stream = openStream();
	bool bEnd = stream && php_stream_eof(stream);
	throwIfPhpFailed();
	return bEnd;
}

bool Input::good() const {
	if (string_mode) {
		return !string_end;
	}
	if (buffer_start < buffer_end) {
		return true;
	}
	return !atEnd();
}

bool Input::fetchStream() {
	if (string_mode) {
		string_end = true;
		return false;
	}
	checkTimeLimit();
	buffer_start = buffer_end = 0;
	if (atEnd()) {
		return false;
	}
	php_stream* stream = openStream();
	if (!stream) {
		throwReadError();
	}
	buffer_end = php_stream_read(stream, file_buffer, CHUNK_SIZE);
	throwIfPhpFailed();
	return true;
}

/// Makes room for the rest of a file that is longer than its first chunk: most of it will be literal text.
void Input::expectRest(TextBuffer& out_buffer) {
	bRestExpected = buffer_end == static_cast<ptrdiff_t>(CHUNK_SIZE);
	php_stream_statbuf oStatus;
	// Other streams than files may run user code when asked.
	php_stream* stream = bRestExpected ? openStream() : nullptr;
	if (stream && stream->ops == &php_stream_stdio_ops && php_stream_stat(stream, &oStatus) == 0 &&
		oStatus.sb.st_size > 0) {
		out_buffer.expect(static_cast<size_t>(oStatus.sb.st_size));
	}
}

/// Appends literal text up to a brace that begins a tag or whose meaning the next chunk tells. Returns where it stands,
/// or `pEnd`.
const char* Input::appendLiteral(TextBuffer& out_buffer, const char* p, const char* pEnd) {
	constexpr ptrdiff_t STEP = 64;
	if (p == pEnd) {
		return p; // nothing has been read yet: no room for it either
	}
	char* pTo = out_buffer.reserve(pEnd - p + STEP);

	// Where the braces of a whole step stand is known before any of them is handled, and what follows one is moved without
	// asking how much it is: that leaves the processor less to guess, and a page of style sheets and scripts takes an
	// eighth less time.
	while (pEnd - p > 2 * STEP) {
		memcpy(pTo, p, STEP);
		ptrdiff_t nTaken = 0;
		for (uint64_t nBraces = byte_scan::mark64<byte_scan::Brace>(p); nBraces;) {
			int iBrace = __builtin_ctzll(nBraces);
			if (p[iBrace] == p[iBrace + 1]) {
				pTo += iBrace + 1 - nTaken;
				nTaken = iBrace + 2;
				memcpy(pTo, p + nTaken, STEP);
				nBraces &= ~(uint64_t{3} << iBrace);
			} else if (p[iBrace] == '{' && !isLiteralAfterBrace(p[iBrace + 1])) {
				out_buffer.setEnd(pTo + iBrace - nTaken);
				return p + iBrace;
			} else {
				nBraces &= nBraces - 1;
			}
		}
		ptrdiff_t nStep = std::max(nTaken, STEP);
		pTo += nStep - nTaken;
		p += nStep;
	}

	while (byte_scan::copyTill<byte_scan::Brace>(pTo, p, pEnd)) {
		if (pEnd - p < 2) {
			break;
		}
		bool bDoubled = p[0] == p[1];
		if (!bDoubled && *p == '{' && !isLiteralAfterBrace(p[1])) {
			break;
		}
		*pTo++ = *p;
		p += bDoubled ? 2 : 1;
	}
	out_buffer.setEnd(pTo);
	return p;
}

bool Input::fillBufferTillMark(TextBuffer& out_buffer, char mark) {
	enum { PLAIN, AFTER_OPEN, AFTER_CLOSE } automaton_state = PLAIN;
	for (;;) {
		const char* p = buffer + buffer_start;
		const char* pEnd = buffer + buffer_end;
		if (automaton_state == PLAIN) {
			if (p > pEnd) {
				// The stream reported an error: no text has a negative length.
				throwReadError();
			}
			const char* pBrace;
			if (mark == '{') {
				// A text in string mode is taken in steps like those of a file, since room is made for each.
				const char* pStop = p + std::min(pEnd - p, static_cast<ptrdiff_t>(CHUNK_SIZE));
				pBrace = appendLiteral(out_buffer, p, pStop);
				buffer_start = pBrace - buffer;
				if (pBrace == pStop && pStop < pEnd) {
					continue;
				}
				if (pStop - pBrace >= 2) {
					++buffer_start;
					return true; // with a character behind it, it begins a tag
				}
			} else {
				pBrace = byte_scan::find<byte_scan::Brace>(p, pEnd);
				out_buffer.append(p, pBrace - p);
				buffer_start = pBrace - buffer;
			}
			if (pBrace == pEnd) {
				if (!fetchStream()) {
					return false;
				}
				if (!bRestExpected) {
					expectRest(out_buffer);
				}
				continue;
			}
			++buffer_start;
			if (*pBrace == '{') {
				automaton_state = AFTER_OPEN;
			} else if (mark == '}') {
				return true;
			} else {
				automaton_state = AFTER_CLOSE;
			}
			continue;
		}

		if (p >= pEnd) {
			if (!fetchStream()) {
				out_buffer.append(automaton_state == AFTER_OPEN ? '{' : '}');
				return false;
			}
			continue;
		}
		if (automaton_state == AFTER_CLOSE) {
			out_buffer.append('}');
			if (*p == '}') {
				++buffer_start;
			}
			automaton_state = PLAIN;
		} else if (mark == '}') {
			// A "{" inside a tag takes the whole rest of the input with it, one "{" for each byte.
			out_buffer.append(static_cast<size_t>(pEnd - p), '{');
			buffer_start = buffer_end;
		} else if (*p == '{') {
			out_buffer.append('{');
			++buffer_start;
			automaton_state = PLAIN;
		} else if (isLiteralAfterBrace(*p)) {
			out_buffer.append('{');
			automaton_state = PLAIN;
		} else {
			return true;
		}
	}
}

std::string_view Input::readTag(TextBuffer& scratch) {
	const char* p = buffer + buffer_start;
	const char* pEnd = buffer + buffer_end;
	if (p < pEnd) {
		const char* pBrace = byte_scan::find<byte_scan::Brace>(p, pEnd);
		if (pBrace < pEnd && *pBrace == '}') {
			buffer_start = pBrace + 1 - buffer;
			return {p, static_cast<size_t>(pBrace - p)};
		}
	}
	scratch.truncate(0);
	fillBufferTillMark(scratch, '}');
	return scratch.view();
}
