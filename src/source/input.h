#pragma once

#include "php/stream.h"

#include <cstddef>
#include <string_view>

class TextBuffer;

/// The source of one template: a text, or a file, read in chunks, by way of PHP's stream layer unless it is a short one on
/// disk. Resolves brace escapes.
class Input {
public:
	Input() = default;
	Input(const Input&) = delete;
	Input& operator=(const Input&) = delete;

	/// Reads from `sText`, which has to outlive the input.
	void openText(std::string_view sText);

	/// Opens a file, also along the include path. `_file_buffer` has FileBuffers::BUFFER_SIZE bytes, lent while the input is open.
	/// Returns false when it can't be opened; throws when opening it made user code throw.
	bool openFile(const char* sFileName, char* _file_buffer);

	/// May run user code (a stream wrapper's), so never let an exception be in flight then.
	void close() { oStream.close(); }

	/// The buffer lent to `openFile`; null in string mode.
	char* fileBuffer() const { return file_buffer; }

	/// Whether any input is left.
	bool good() const;

	/// Appends text to `out_buffer` up to `mark`. With "{": literal text with its brace escapes resolved, up to the
	/// start of a tag. With "}": the rest of a tag. Returns false when the input ended first.
	/// Throws when the stream reports an error or user code threw.
	bool fillBufferTillMark(TextBuffer& out_buffer, char mark);

	/// Reads the rest of a tag, like `fillBufferTillMark` with "}". The text lies in the input's own buffer when it
	/// stands there in one piece, else in `scratch`; it is valid until the next read.
	std::string_view readTag(TextBuffer& scratch);

private:
	void readPlainFile(int nDescriptor);
	bool atEnd() const;
	bool fetchStream();
	void expectRest(TextBuffer& out_buffer);
	static const char* appendLiteral(TextBuffer& out_buffer, const char* p, const char* pEnd);

	bool string_mode = true;
	bool string_end = true;
	bool bRestExpected = false;
	OwnedStream oStream;
	char* file_buffer = nullptr;
	const char* buffer = nullptr;
	// A failed read leaves buffer_end below buffer_start.
	ptrdiff_t buffer_start = 0;
	ptrdiff_t buffer_end = 0;
};
