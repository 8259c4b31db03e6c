#pragma once

#include "php/headers.h"

/// A stream of PHP's that nobody but this object can read or close. User code that closes a stream that is being read is
/// something that PHP's stream layer doesn't survive: so its resource is of a type that no function takes.
class OwnedStream {
public:
	OwnedStream() = default;
	OwnedStream(const OwnedStream&) = delete;
	OwnedStream& operator=(const OwnedStream&) = delete;
	/// May run user code (a stream wrapper's), so never let an exception be in flight then.
	/// A fatal error in user code leaves by a jump, which in WebAssembly is an exception.
	~OwnedStream() noexcept(false) { close(); }

	/// Has to be called once, when the module starts.
	static void startUp(int nModule);

	/// Opens a file or what a wrapper stands for, also along the include path. Returns false when it can't be opened;
	/// throws when opening it made user code throw.
	bool open(const char* sName);

	/// Takes an open file over.
	void adopt(int nDescriptor);

	void close();

	/// Whether a stream was opened and not closed by `close`.
	bool isOpen() const { return oOwner; }

	/// Whether user code has closed what the stream stands on.
	bool isLost() const { return oOwner->type < 0; }

	/// Whether nothing is left to be read. A lost stream is not at its end: the next read will tell. May run user code;
	/// throws when that threw.
	bool atEnd() const;

	/// Reads at most `nSize` bytes. Returns how many, or a negative number after a failure. May run user code; throws when
	/// that threw. Not for a lost stream.
	ssize_t read(char* pTo, size_t nSize);

	/// The size of the file behind the stream in bytes; 0 when it is unknown, or no file.
	size_t fileSize() const;

private:
	php_stream* stream() const { return static_cast<php_stream*>(oOwner->ptr); }

	// The resource that owns the stream; null when there is none.
	zend_resource* oOwner = nullptr;
};
