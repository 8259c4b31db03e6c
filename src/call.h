#pragma once

#include "data/php_interface.h"
#include "php/stack_guard.h"
#include "source/file_buffers.h"
#include "text/arena.h"
#include "text/text_buffer.h"
#include "tree/dynamic_scope.h"
#include "tree/included_file.h"

/// What analysis needs beside the source that it reads.
struct AnalysisState {
	/// From here on the call's texts are pending: read, but not part of a block yet.
	size_t nPendingText = 0;
	/// A tag that does not lie in one piece in its input.
	TextBuffer sTag;
	/// The innermost dynamic block in whose body the analysis stands, over all files of the include chain.
	const DynamicScope* oInnermost = nullptr;
	/// The innermost open bodies of each name.
	NameTable<DynamicScope> oScopes;
	/// The included files whose analysis is under way. The call's own template is the first link of their chain.
	NameTable<IncludedFile> oIncludes;
};

/// What rendering needs beside the tree.
struct RenderingState {
	TextBuffer sOutput;
	/// The innermost block that holds a table.
	DynamicBlock* oInnermostLoop = nullptr;
};

/// What the templates of one call share, and the one owner of the call's memory.
///
/// Nothing in it needs a destructor: `release` frees all in one step, on every way out. A fatal error of PHP may jump
/// over any frame of the engine; what it jumps over is then still owned here.
class Call {
public:
	/// `_sOwnName` is the name of the call's own template, or its text.
	Call(const zval* userData, std::string_view _sOwnName) : php(userData), sOwnName(_sOwnName) {}
	Call(const Call&) = delete;
	Call& operator=(const Call&) = delete;

	PHPInterface php;
	std::string_view sOwnName;
	StackGuard oStack;
	FileBuffers oFileBuffers;
	/// Holds the block tree.
	Arena oArena;
	/// All literal text and all values known during analysis, in the order of the source. Blocks point into it.
	TextBuffer sTexts;

	AnalysisState oAnalysis;
	RenderingState oRendering;

	/// Starts to walk the table of a dynamic block's data. Returns null when there is nothing to walk.
	HashTable* beginLoop(DynamicBlock& oBlock, const zval* phpData);
	/// Ends the innermost walk. May run user code: the table may have been the last to hold an object.
	void endLoop();
	/// Leaves the tables of all walks, and what was found last, to PHP. For after a fatal error, when no user code may run
	/// any more.
	void abandonData() {
		oRendering.oInnermostLoop = nullptr;
		php.abandon();
	}

	/// Frees everything. May run user code, like `endLoop`, when a walk was broken off.
	void release();
};
