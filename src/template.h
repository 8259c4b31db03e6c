#pragma once

#include "call.h"
#include "source/input.h"
#include "text/text_buffer.h"
#include "tree/block.h"
#include "tree/reference.h"

#include <initializer_list>
#include <string_view>

class ElementWalk;
class TextCursor;

/// One template source: analysed once into the block tree, then, if it is the call's own, rendered.
///
/// Every error ends the call with a TemplateError. The template is to be destroyed outside of any catch block: closing
/// its file may run user code.
class Template {
public:
	/// A call's own template. `_sFileName` is its path or, in string mode, its text, ends in a zero byte and, like
	/// `_call`, outlives the template.
	Template(std::string_view _sFileName, Call& _call) : call(_call), sFileName(_sFileName), oIncluder(nullptr) {}
	/// A template that `_oIncluder` includes.
	Template(std::string_view _sFileName, const Template& _oIncluder)
		: call(_oIncluder.call), sFileName(_sFileName), oIncluder(&_oIncluder) {}
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

	/// The argument of a variable tag.
	struct VariableTag {
		std::string_view sFirst; ///< the first reference; empty when there is none
		std::string_view sRest;  ///< the other ones, separated by white space
		bool bText = false;      ///< whether there is a fallback text
		std::string_view sText;  ///< the fallback text
	};

	// Analysis: the driver.
	void _analyzeTemplate(BlockList& subBlockList, Block::BLOCK_TYPE eClosingTag);
	bool analyzeTag(BlockList& subBlockList, Block::BLOCK_TYPE eClosingTag);
	static Block::BLOCK_TYPE matchInput(std::string_view sBuffer, std::string_view& sArgument);
	void storeBlock(BlockList& subBlockList, Block* oBlock);
	void storeTextBlock(BlockList& subBlockList);
	void analyzeHiddenBody(Block::BLOCK_TYPE eClosingTag);

	// Analysis: references.
	Reference parseArgument(std::string_view sArgument);
	Reference analyzeVariable(std::string_view sArgument, ArgumentForm eForm, const zval*& phpVariable);
	const zval* findVariable(const Index* oIndex, const zval* phpVarRoot) const;
	DynamicReference resolveNamespace(const Reference& oReference) const;

	// Analysis: variable and escaping tags.
	void analyzeVariableBlock(BlockList& subBlockList, std::string_view sArgument);
	void splitVariableTag(std::string_view sArgument, VariableTag& oTag) const;
	Alternative* keepAlternative(std::string_view sReference);
	void analyzeEscapingBlock(BlockList& subBlockList, std::string_view sArgument, Block::BLOCK_TYPE eType);

	// Analysis: structured blocks.
	void analyzeIncludeBlock(BlockList& subBlockList, std::string_view sArgument);
	void analyzeOptionalBlock(BlockList& subBlockList, std::string_view sArgument, bool bNegation);
	void analyzeDynamicBlock(BlockList& subBlockList, std::string_view sArgument, bool bReverse);
	DynamicBlock* makeDynamicBlock(std::string_view sArgument, bool bReverse);
	bool isInIncludeChain(std::string_view sName) const;

	// Rendering.
	void _getResult(const BlockList& subBlockList, ElementWalk* oElements, TextBuffer& sText);
	void _getResultVariable(const MultiVariableBlock& oBlock, std::string_view sBefore, TextCursor& sOutput);
	void _getResultEscaped(const VariableBlock& oBlock, std::string_view sBefore, TextCursor& sOutput);
	bool isShown(const OptionalBlock& oBlock) const;
	[[gnu::noinline]] void _getResultDynamic(DynamicBlock& oBlock, TextBuffer& sOutput);
	const zval* findDynamicValue(const DynamicReference& oReference) const;
	const zval* findDynamicData(const DynamicBlock& oBlock) const;
	void printAlternative(const MultiVariableBlock& oBlock, TextBuffer& sOutput) const;

	/// Writes a variable tag back between its braces.
	static void echoTag(TextBuffer& sOutput, std::string_view sArgument);

	/// Throws the message made of `listParts`, " in " and this template's name.
	[[noreturn]] void fail(std::initializer_list<std::string_view> listParts) const;
	[[noreturn]] void throwMessage(std::initializer_list<std::string_view> listParts, std::string_view sBeforeName) const;
	[[noreturn]] void failReference(ReferenceError eError, std::string_view sArgument) const;
	/// Ends the call when the stack is nearly used up.
	void checkStack() {
		if (UNEXPECTED(call.oStack.exhausted())) {
			fail({"Blocks nested too deeply"});
		}
	}

	Call& call;
	std::string_view sFileName;
	// The chain of includes; what the call was given ends it.
	const Template* oIncluder;
	Input input;
	BlockList listBlocks;
};
