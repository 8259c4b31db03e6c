#pragma once

#include "call.h"
#include "source/input.h"
#include "tree/block.h"
#include "tree/reference.h"

#include <initializer_list>
#include <string_view>

class ElementWalk;
class TextCursor;

/// One template source: analysed once into the block tree, then, if it is the call's own, rendered.
///
/// The two passes share the tree and the call, and nothing else: what belongs to analysis stands in analysis/, what
/// belongs to rendering in rendering/.
///
/// Every error ends the call with a TemplateError. The template is to be destroyed outside of any catch block: closing
/// its file may run user code.
class Template {
public:
	/// `_sFileName` is the path of a file or, in string mode, the text itself. It ends in a zero byte and, like `_call`,
	/// outlives the template.
	Template(std::string_view _sFileName, Call& _call) : call(_call), sFileName(_sFileName) {}
	~Template();
	Template(const Template&) = delete;
	Template& operator=(const Template&) = delete;

	/// Opens the file, or takes the name itself for the text. Returns false when the file can't be opened.
	bool open(bool string_mode);

	/// Throws the error of a call's own template that can't be opened.
	[[noreturn]] void failToOpen() const;

	/// Reads the whole source.
	void analyzeTemplate();

	/// Renders what `analyzeTemplate` has read; returns the text as a new PHP string with one reference.
	zend_string* getResult();

private:
	using BlockList = MyList<Block>;

	// --- Both passes ------------------------------------------------------------------------------------------------

	Call& call;
	std::string_view sFileName;
	BlockList listBlocks;

	/// Walks a path from `phpVarRoot`, or from the user data when it is null. Returns null when there is no such value.
	const zval* findVariable(const Index* oIndex, const zval* phpVarRoot) const;

	/// Writes a variable tag back between its braces.
	static void echoTag(TextBuffer& sOutput, std::string_view sArgument);

	/// Throws the message made of `listParts`, " in " and this template's name.
	[[noreturn]] void fail(std::initializer_list<std::string_view> listParts) const;
	[[noreturn]] void throwMessage(std::initializer_list<std::string_view> listParts,
								   std::string_view sBeforeName) const;
	[[noreturn]] void failReference(ReferenceError eError, std::string_view sArgument) const;
	/// Ends the call when the stack is nearly used up.
	void checkStack() {
		if (UNEXPECTED(call.oStack.exhausted())) {
			fail({"Blocks nested too deeply"});
		}
	}

	// --- Analysis ---------------------------------------------------------------------------------------------------

	/// The argument of a variable tag.
	struct VariableTag;

	Input input;

	// The driver.
	void _analyzeTemplate(BlockList& subBlockList, Block::BLOCK_TYPE eClosingTag);
	bool analyzeTag(BlockList& subBlockList, Block::BLOCK_TYPE eClosingTag);
	static Block::BLOCK_TYPE matchInput(std::string_view sBuffer, std::string_view& sArgument);
	void storeBlock(BlockList& subBlockList, Block* oBlock);
	void storeTextBlock(BlockList& subBlockList);
	void analyzeHiddenBody(Block::BLOCK_TYPE eClosingTag);

	// References.
	Reference parseArgument(std::string_view sArgument);
	Reference analyzeVariable(std::string_view sArgument, ArgumentForm eForm, const zval*& phpVariable);
	DynamicReference resolveNamespace(const Reference& oReference) const;

	// Variable and escaping tags.
	void analyzeVariableBlock(BlockList& subBlockList, std::string_view sArgument);
	void analyzeVariableTag(BlockList& subBlockList, std::string_view sArgument, const VariableTag& oTag,
							ArgumentForm eForm);
	VariableTag splitVariableTag(std::string_view sArgument) const;
	MyList<Alternative> keepAlternatives(std::string_view sReferences);
	Alternative* keepAlternative(std::string_view sReference);
	void analyzeEscapingBlock(BlockList& subBlockList, std::string_view sArgument, Block::BLOCK_TYPE eType);

	// Structured blocks.
	void analyzeIncludeBlock(BlockList& subBlockList, std::string_view sArgument);
	bool isInIncludeChain(std::string_view sName) const;
	void analyzeIncludedFile(BlockList& subBlockList);
	void analyzeOptionalBlock(BlockList& subBlockList, std::string_view sArgument, Block::BLOCK_TYPE eType);
	void analyzeDynamicBlock(BlockList& subBlockList, std::string_view sArgument, Block::BLOCK_TYPE eType);
	DynamicBlock* makeDynamicBlock(std::string_view sArgument, bool bReverse);
	void analyzeDynamicBody(DynamicBlock& oBlock, std::string_view sDynamicName, DynamicScope* oNamesake,
							Block::BLOCK_TYPE eClosingTag);

	// --- Rendering --------------------------------------------------------------------------------------------------

	void _getResult(const BlockList& subBlockList, ElementWalk* oElements, TextBuffer& sBuffer);
	void _getResultVariable(const MultiVariableBlock& oBlock, std::string_view sBefore, TextCursor& sOutput);
	void _getResultEscaped(const VariableBlock& oBlock, std::string_view sBefore, TextCursor& sOutput);
	bool isShown(const OptionalBlock& oBlock) const;
	[[gnu::noinline]] void _getResultDynamic(DynamicBlock& oBlock, TextBuffer& sOutput);
	const zval* findDynamicValue(const DynamicReference& oReference) const;
	const zval* findDynamicData(const DynamicBlock& oBlock) const;
	void printAlternative(const MultiVariableBlock& oBlock, TextBuffer& sOutput) const;
};
