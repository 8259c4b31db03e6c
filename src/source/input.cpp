#include "source/input.h"

#include "php/failure.h"
#include "php/headers.h"
#include "php/memory.h"
#include "php/plain_file.h"
#include "php/time_limit.h"
#include "source/file_buffers.h"
#include "text/byte_scan.h"
#include "text/text_buffer.h"

#include <algorithm>
#include <unistd.h>

namespace {

// Four bytes less than the buffer holds.
constexpr size_t CHUNK_SIZE = FileBuffers::BUFFER_SIZE - 4;

/// The error of a read that failed. Its text is the one that pages and logs have always shown for it.
[[noreturn]] void throwReadError() {
	constexpr std::string_view sMessage = "basic_string::append";
	zend_string* sError = requestString(sMessage.size());
	*std::copy(sMessage.begin(), sMessage.end(), ZSTR_VAL(sError)) = '\0';
	throw TemplateError(sError);
}

bool isLiteralAfterBrace(char ch) {
	return ch == ' ' || ch == '\t' || ch == '\n' || ch == '\r';
}

} // namespace

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
	return !oFile.bPlain && oStream.open(sFileName);
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
	oStream.adopt(nDescriptor);
}

/// Whether nothing is left to be read.
bool Input::atEnd() const {
	return !oStream.isOpen() || oStream.atEnd();
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
	if (oStream.isLost()) {
		throwReadError();
	}
	buffer_end = oStream.read(file_buffer, CHUNK_SIZE);
	return true;
}

/// Makes room for the rest of a file that is longer than its first chunk: most of it will be literal text.
void Input::expectRest(TextBuffer& out_buffer) {
	bRestExpected = buffer_end == static_cast<ptrdiff_t>(CHUNK_SIZE);
	if (size_t nSize = bRestExpected && oStream.isOpen() ? oStream.fileSize() : 0) {
		out_buffer.expect(nSize);
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
