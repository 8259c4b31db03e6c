#pragma once

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
PlainFile openPlainFile(const char* sFileName);
