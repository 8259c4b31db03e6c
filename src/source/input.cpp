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

// A long file is read in steps that the processor's second cache keeps until they are copied.
constexpr size_t LARGE_CHUNK_SIZE = 64 * 1024;

/// The error of a read that failed. Its text is the one that pages and logs have always shown for it.
[[noreturn]] void throwReadError() {
	constexpr std::string_view sMessage = "basic_string::append";
	zend_string* sError = requestString(sMessage.size());
	*std::copy(sMessage.begin(), sMessage.end(), ZSTR_VAL(sError)) = '\0';
	throw TemplateError(sError);
}

/// What a brace in literal text means.
enum class Meaning {
	LITERAL, ///< itself
	ESCAPE,  ///< one of a pair that stands for one brace
	TAG,
};

/// Tells what the brace `ch` means by the character that follows it.
inline Meaning meaningOf(char ch, char chNext) {
	if (ch == chNext) {
		return Meaning::ESCAPE;
	}
	bool bSpace = chNext == ' ' || chNext == '\t' || chNext == '\n' || chNext == '\r';
	return ch == '{' && !bSpace ? Meaning::TAG : Meaning::LITERAL;
}

/// Appends literal text up to a brace that begins a tag or has nothing behind it. Returns where it stands, or `pEnd`.
const char* appendLiteral(TextBuffer& out_buffer, const char* p, const char* pEnd) {
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
		for (uint64_t nBraces = byte_scan::mark64<byte_scan::AboveLetters>(p); nBraces;) {
			int iBrace = __builtin_ctzll(nBraces);
			// What was marked with the braces stands for itself.
			bool bBrace = byte_scan::has<byte_scan::Brace>(p[iBrace]);
			switch (bBrace ? meaningOf(p[iBrace], p[iBrace + 1]) : Meaning::LITERAL) {
				case Meaning::ESCAPE:
					pTo += iBrace + 1 - nTaken;
					nTaken = iBrace + 2;
					memcpy(pTo, p + nTaken, STEP);
					nBraces &= ~(uint64_t{3} << iBrace);
					break;
				case Meaning::TAG:
					out_buffer.setEnd(pTo + iBrace - nTaken);
					return p + iBrace;
				case Meaning::LITERAL:
					nBraces &= nBraces - 1;
					break;
			}
		}
		ptrdiff_t nStep = std::max(nTaken, STEP);
		pTo += nStep - nTaken;
		p += nStep;
	}

	while (byte_scan::copyTill<byte_scan::Brace>(pTo, p, pEnd) && pEnd - p >= 2) {
		Meaning eMeaning = meaningOf(p[0], p[1]);
		if (eMeaning == Meaning::TAG) {
			break;
		}
		*pTo++ = *p;
		p += eMeaning == Meaning::ESCAPE ? 2 : 1;
	}
	out_buffer.setEnd(pTo);
	return p;
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

void Input::close() {
	if (pLargeBuffer) {
		releaseMemory(pLargeBuffer);
		pLargeBuffer = nullptr;
	}
	oFile.close();
	oStream.close();
}

/// Reads a file that the buffer holds, as nearly all templates are, and closes it before anything else happens. A stream
/// would take a quarter longer, and user code could find it. (The rest of a longer one then begins where a page of memory
/// does: four bytes before that, the kernel's copies into a buffer that begins with a page would take six times as long.)
void Input::readPlainFile(int nDescriptor) {
	ssize_t nRead;
	do {
		nRead = read(nDescriptor, file_buffer + buffer_end, FileBuffers::BUFFER_SIZE - buffer_end);
		buffer_end += std::max<ssize_t>(nRead, 0);
	} while (nRead > 0 && buffer_end < static_cast<ptrdiff_t>(FileBuffers::BUFFER_SIZE));
	if (nRead == 0) {
		::close(nDescriptor);
		return;
	}
	nFileSize = nRead > 0 ? regularFileSize(nDescriptor) : 0;
	if (nFileSize >= FileBuffers::BUFFER_SIZE) {
		oFile.adopt(nDescriptor);
		return;
	}
	// A pipe is read on by a stream. An error is left to one, too: it meets it again, and knows what to do.
	if (lseek(nDescriptor, 0, SEEK_SET) == 0) {
		buffer_end = 0;
	}
	oStream.adopt(nDescriptor);
}

/// Reads on in a long file on disk, and closes it at its end. Returns false when there was nothing left.
bool Input::fetchPlainFile() {
	size_t nChunk = std::min(LARGE_CHUNK_SIZE, nFileSize);
	if (!pLargeBuffer) {
		pLargeBuffer = static_cast<char*>(requestMemory(nChunk));
	}
	buffer = pLargeBuffer;
	ssize_t nRead = read(oFile.descriptor(), pLargeBuffer, nChunk);
	if (nRead < 0) {
		oStream.adopt(oFile.detach()); // which meets the error again
		buffer = file_buffer;
		return fetchStream();
	}
	buffer_end = nRead;
	if (nRead == 0) {
		oFile.close();
	}
	return nRead > 0;
}

/// Whether nothing is left to be read.
bool Input::atEnd() const {
	return !oFile.isOpen() && (!oStream.isOpen() || oStream.atEnd());
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
	if (oFile.isOpen()) {
		return fetchPlainFile();
	}
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
	bRestExpected = buffer_end >= static_cast<ptrdiff_t>(CHUNK_SIZE);
	if (!bRestExpected) {
		return;
	}
	if (size_t nSize = oStream.isOpen() ? oStream.fileSize() : nFileSize) {
		out_buffer.expect(nSize, true);
	}
}

bool Input::readLiteral(TextBuffer& out_buffer) {
	for (;;) {
		const char* p = buffer + buffer_start;
		const char* pEnd = buffer + buffer_end;
		if (p > pEnd) {
			throwReadError(); // no text has a negative length
		}
		// A text in string mode is taken in steps like those of a long file, since room is made for each.
		const char* pStop = p + std::min(pEnd - p, static_cast<ptrdiff_t>(LARGE_CHUNK_SIZE));
		const char* pBrace = appendLiteral(out_buffer, p, pStop);
		buffer_start = pBrace - buffer;
		if (pStop - pBrace >= 2) {
			++buffer_start;
			return true;
		}
		if (pStop < pEnd) {
			continue;
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
		// The last brace of a chunk: what it means stands in the next one.
		char ch = *pBrace;
		++buffer_start;
		while (buffer_start >= buffer_end) {
			if (!fetchStream()) {
				out_buffer.append(ch);
				return false;
			}
		}
		switch (meaningOf(ch, buffer[buffer_start])) {
			case Meaning::TAG:
				return true;
			case Meaning::ESCAPE:
				++buffer_start;
				break;
			case Meaning::LITERAL:
				break;
		}
		out_buffer.append(ch);
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
	readSplitTag(scratch);
	return scratch.view();
}

/// Appends the rest of a tag to `out_buffer`.
void Input::readSplitTag(TextBuffer& out_buffer) {
	for (;;) {
		const char* p = buffer + buffer_start;
		const char* pEnd = buffer + buffer_end;
		if (p > pEnd) {
			throwReadError();
		}
		const char* pBrace = byte_scan::find<byte_scan::Brace>(p, pEnd);
		out_buffer.append(p, pBrace - p);
		buffer_start = pBrace - buffer;
		if (pBrace == pEnd) {
			if (!fetchStream()) {
				return;
			}
			continue;
		}
		++buffer_start;
		if (*pBrace == '}') {
			return;
		}
		// A "{" inside a tag takes the whole rest of the input with it, one "{" for each byte.
		do {
			out_buffer.append(static_cast<size_t>(std::max<ptrdiff_t>(buffer_end - buffer_start, 0)), '{');
			buffer_start = buffer_end;
		} while (fetchStream());
		out_buffer.append('{');
		return;
	}
}
