#pragma once

#include "php/headers.h"

#include <cstddef>

/// What came of opening a file without a stream.
struct PlainFile {
	/// False when only PHP's stream layer knows what the name means, and nothing was done: the name may be that of a
	/// stream wrapper, or lead to one.
	bool bPlain;
	/// A file descriptor, which passes to the caller; -1 when the file can't be opened.
	int nDescriptor;
};

/// Opens a file for reading, the include path searched, just as PHP's stream layer does. May run user code: the error
/// handler, when open_basedir forbids the file.
PlainFile openPlainFile(const char* sName);

/// The size in bytes of an open file that has one; 0 for a pipe, a folder and the like.
size_t regularFileSize(int nDescriptor);

/// A file descriptor that stays open while user code may run. It is closed in any case: if a fatal error jumps over this
/// object, or a Fiber that holds it is never resumed, at the end of the request.
class OwnedFile {
public:
	OwnedFile() = default;
	OwnedFile(const OwnedFile&) = delete;
	OwnedFile& operator=(const OwnedFile&) = delete;
	~OwnedFile() { close(); }

	/// Has to be called once, when the module starts.
	static void startUp(int nModule);

	/// Takes an open file over. Where memory_limit is met it is closed.
	void adopt(int _nDescriptor);

	bool isOpen() const { return oOwner; }
	int descriptor() const { return nDescriptor; }

	/// Gives the descriptor away.
	int detach();

	void close();

private:
	// The resource that owns the file; null when there is none.
	zend_resource* oOwner = nullptr;
	int nDescriptor = -1;
};
