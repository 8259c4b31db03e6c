#pragma once

#include "php/headers.h"

#include <cstddef>
#include <string_view>

class TextBuffer;

/// The source of one template: a text, or a file, read in chunks, by way of PHP's stream layer unless it is a short one on
/// disk. Resolves brace escapes.
class Input {
public:
	/// Room that a file's chunks need.
	static constexpr size_t BUFFER_SIZE = 4096;

	Input() = default;
	Input(const Input&) = delete;
	Input& operator=(const Input&) = delete;

	/// Closes the file. That may run user code (a stream wrapper's), so never let an exception be in flight then.
	~Input() { close(); }

	/// Has to be called once, when the module starts.
	static void startUp(int nModule);

	/// Reads from `sText`, which has to outlive the input.
	void openText(std::string_view sText);

	/// Opens a file, also along the include path. `_file_buffer` has BUFFER_SIZE bytes, lent while the input is open.
	/// Returns false when it can't be opened; throws when opening it made user code throw.
	bool openFile(const char* sFileName, char* _file_buffer);

	void close();

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
	php_stream* openStream() const;
	bool atEnd() const;
	bool fetchStream();
	void expectRest(TextBuffer& out_buffer);
	static const char* appendLiteral(TextBuffer& out_buffer, const char* p, const char* pEnd);

	bool string_mode = true;
	bool string_end = true;
	bool bRestExpected = false;
	// The resource that owns the stream; null when there is no stream.
	zend_resource* resource = nullptr;
	char* file_buffer = nullptr;
	const char* buffer = nullptr;
	// A failed read leaves buffer_end below buffer_start.
	ptrdiff_t buffer_start = 0;
	ptrdiff_t buffer_end = 0;
};
