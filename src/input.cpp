#include "input.h"

#include "error.h"
#include "text_buffer.h"
#include "time_limit.h"

#include <algorithm>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

extern "C" {
#include "php_streams.h"
}

namespace {

// Four bytes less than the buffer holds.
constexpr size_t CHUNK_SIZE = Input::BUFFER_SIZE - 4;

// So many bytes are looked at in one step.
constexpr size_t BLOCK_SIZE = 16;

/// The first "{" or "}" from `p` on, or `pEnd`.
inline const char* findBrace(const char* p, const char* pEnd) {
#ifdef __SSE2__
	// Literal text is most of a page: 16 bytes a step are about a tenth of the time of one byte a step.
	const __m128i vOpen = _mm_set1_epi8('{');
	const __m128i vClose = _mm_set1_epi8('}');
	for (; pEnd - p >= 16; p += 16) {
		__m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
		__m128i vFound = _mm_or_si128(_mm_cmpeq_epi8(v, vOpen), _mm_cmpeq_epi8(v, vClose));
		if (int nMask = _mm_movemask_epi8(vFound)) {
			return p + __builtin_ctz(nMask);
		}
	}
#endif
	while (p < pEnd && *p != '{' && *p != '}') {
		++p;
	}
	return p;
}

[[noreturn]] void throwReadError() {
	throw TemplateError(zend_string_init(ZEND_STRL("basic_string::append"), false));
}

bool isBrace(char ch) {
	return ch == '{' || ch == '}';
}

/// Copies text while no brace comes; returns how many bytes. May write up to BLOCK_SIZE bytes behind them.
/// Copying and looking at once halves the time of a page that is nearly all text.
inline size_t copyTillBrace(char* pTo, const char* p, const char* pEnd) {
	const char* pBegin = p;
#ifdef __SSE2__
	const __m128i vOpen = _mm_set1_epi8('{');
	const __m128i vClose = _mm_set1_epi8('}');
	for (; pEnd - p >= static_cast<ptrdiff_t>(BLOCK_SIZE); p += BLOCK_SIZE, pTo += BLOCK_SIZE) {
		__m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
		_mm_storeu_si128(reinterpret_cast<__m128i*>(pTo), v);
		__m128i vFound = _mm_or_si128(_mm_cmpeq_epi8(v, vOpen), _mm_cmpeq_epi8(v, vClose));
		if (int nMask = _mm_movemask_epi8(vFound)) {
			return p + __builtin_ctz(nMask) - pBegin;
		}
	}
#endif
	while (p < pEnd && !isBrace(*p)) {
		*pTo++ = *p++;
	}
	return p - pBegin;
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
	php_stream* stream =
		*sFileName ? php_stream_open_wrapper_ex(sFileName, "rb", USE_PATH, nullptr, nullptr) : nullptr;
	if (stream) {
		resource = ownStream(stream);
	}
	throwIfPhpFailed();
	return stream;
}

void Input::close() {
	if (zend_resource* oClosing = resource) {
		resource = nullptr;
		zend_list_close(oClosing);
		zend_list_delete(oClosing);
	}
}

/// The stream, or null when user code has closed one that it stands on.
php_stream* Input::openStream() const {
	return resource->type >= 0 ? static_cast<php_stream*>(resource->ptr) : nullptr;
}

/// Whether the stream is at its end. One that was closed is not: the next read will tell.
bool Input::atEnd() const {
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
	char* pTo = out_buffer.reserve(pEnd - p + BLOCK_SIZE);
	while (p < pEnd) {
		size_t nCopied = copyTillBrace(pTo, p, pEnd);
		p += nCopied;
		pTo += nCopied;
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
			} else {
				pBrace = findBrace(p, pEnd);
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
		const char* pBrace = findBrace(p, pEnd);
		if (pBrace < pEnd && *pBrace == '}') {
			buffer_start = pBrace + 1 - buffer;
			return {p, static_cast<size_t>(pBrace - p)};
		}
	}
	scratch.truncate(0);
	fillBufferTillMark(scratch, '}');
	return scratch.view();
}
