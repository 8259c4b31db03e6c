#pragma once

#include "php/plain_file.h"
#include "php/stream.h"

#include <cstddef>
#include <string_view>

class TextBuffer;

/// The source of one template: a text, or a file, read in chunks, by way of PHP's stream layer unless it is a plain one on
/// disk. Resolves brace escapes.
class Input {
public:
	Input() = default;
	Input(const Input&) = delete;
	Input& operator=(const Input&) = delete;
	/// May run user code (a stream wrapper's), so never let an exception be in flight then.
	~Input() { close(); }

	/// Reads from `sText`, which has to outlive the input.
	void openText(std::string_view sText);

	/// Opens a file, also along the include path. `_file_buffer` has FileBuffers::BUFFER_SIZE bytes, lent while the input
	/// is open. Returns false when it can't be opened; throws when opening it made user code throw.
	bool openFile(const char* sFileName, char* _file_buffer);

	/// May run user code, like the destructor.
	void close();

	/// The buffer lent to `openFile`; null in string mode.
	char* fileBuffer() const { return file_buffer; }

	/// Whether any input is left.
	bool good() const;

	/// Appends literal text to `out_buffer`, its brace escapes resolved, up to the start of a tag. Returns false when the
	/// input ended first. Throws when the stream reports an error or user code threw.
	bool readLiteral(TextBuffer& out_buffer);

	/// Reads the rest of a tag, up to its closing brace or the end of the input. The text lies in the input's own buffer
	/// when it stands there in one piece, else in `scratch`; it is valid until the next read. Throws like `readLiteral`.
	std::string_view readTag(TextBuffer& scratch);

private:
	void readPlainFile(int nDescriptor);
	bool fetchPlainFile();
	bool atEnd() const;
	bool fetchStream();
	void expectRest(TextBuffer& out_buffer);
	void readSplitTag(TextBuffer& out_buffer);

	bool string_mode = true;
	bool string_end = true;
	bool bRestExpected = false;
	size_t nFileSize = 0; // in bytes, of a long file on disk
	// What is left of a long file on disk.
	OwnedFile oFile;
	// What is read by way of PHP's streams.
	OwnedStream oStream;
	char* file_buffer = nullptr;
	// Takes the place of the lent buffer for a long file; request memory, null when there is none.
	char* pLargeBuffer = nullptr;
	const char* buffer = nullptr;
	// A failed read leaves buffer_end below buffer_start.
	ptrdiff_t buffer_start = 0;
	ptrdiff_t buffer_end = 0;
};
