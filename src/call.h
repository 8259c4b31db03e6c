#pragma once

#include "data/php_interface.h"
#include "php/stack_guard.h"
#include "source/input.h"
#include "text/arena.h"
#include "text/text_buffer.h"
#include "tree/dynamic_names.h"

/// What the templates of one call share, and the one owner of the call's memory.
///
/// Nothing in it needs a destructor: `release` frees all in one step, on every way out. A fatal error of PHP may jump
/// over any frame of the engine; what it jumps over is then still owned here.
class Call {
public:
	explicit Call(const zval* userData) : php(userData) {}
	Call(const Call&) = delete;
	Call& operator=(const Call&) = delete;

	PHPInterface php;
	StackGuard oStack;
	Arena oArena;

	/// All literal text and all values known during analysis, in the order of the source. Blocks point into it.
	TextBuffer sTexts;
	/// From here on `sTexts` is pending: read, but not part of a block yet.
	size_t nPendingText = 0;
	/// A tag that does not lie in one piece in its input.
	TextBuffer sTag;

	DynamicNames oNames;
	/// The innermost dynamic block in whose body the analysis stands, over all files of the include chain.
	const DynamicBlock* oInnermost = nullptr;

	TextBuffer sOutput;

	/// Starts to walk the table of a dynamic block's data. Returns null when there is nothing to walk.
	HashTable* beginLoop(DynamicBlock& oBlock, const zval* phpData);
	/// Ends the innermost walk. May run user code: the table may have been the last to hold an object.
	void endLoop();
	/// Leaves the tables of all walks to PHP. For after a fatal error, when no user code may run any more.
	void abandonLoops() { oInnermostLoop = nullptr; }

	/// Room for one open file.
	char* takeFileBuffer();
	void giveFileBuffer(char* pBuffer);

	/// Frees everything. May run user code, like `endLoop`, when a walk was broken off.
	void release();

private:
	union FileBuffer {
		char aBytes[Input::BUFFER_SIZE];
		FileBuffer* oNext;
	};

	DynamicBlock* oInnermostLoop = nullptr;
	FileBuffer* oFreeFileBuffers = nullptr;
	bool bFirstFileBufferTaken = false;
	// Most pages are one file, or open one at a time beside their own.
	FileBuffer oFirstFileBuffer;
};
