#pragma once

#include "php/headers.h"
#include "tree/compared_value.h"
#include "tree/keywords.h"
#include "tree/my_list.h"
#include "tree/reference.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

// The block tree: what analysis leaves to be rendered. All blocks live in the arena of their call, which owns them; none has
// a destructor. Literal text is a range of the call's text buffer; other texts are views on copies in the arena.

class DynamicBlock;

/// A part of the call's text buffer: literal text and values that were known during analysis.
struct TextRange {
	size_t nStart = 0;
	size_t nLength = 0;
};

/// Base of all blocks.
class Block : public BlockTypes {
public:
	Block* oNext = nullptr;
	/// The text in front of the block. It is nearly always there: a block of its own would cost a second dispatch.
	TextRange oText;

	BLOCK_TYPE getType() const { return type; }
	BlockFamily getFamily() const { return eFamily; }

protected:
	explicit Block(BLOCK_TYPE _type) : type(_type), eFamily(KEYWORDS_BY_TYPE[_type].eFamily) {}

private:
	BLOCK_TYPE type;
	BlockFamily eFamily;
};

/// The text behind the last tag of a body.
class TextBlock : public Block {
public:
	TextBlock() : Block(TEXT) {}
};

/// A reference that depends on a dynamic block. Which block that is stands fast as soon as the tag is read, because
/// a body is rendered inside exactly those blocks inside which it was written.
struct DynamicReference {
	/// What is to be found there.
	enum TARGET : uint8_t {
		NOTHING, ///< no enclosing block bears that name
		COLUMN,  ///< what stands under a string key in the element, which is usual
		PATH,    ///< the element itself or what another path leads to
		KEY,     ///< the element's key
	};

	const DynamicBlock* oDynamicBlock; ///< null for NOTHING
	const Index* listIndexes;          ///< the path in the element; for COLUMN, the one key
	TARGET eTarget;
};

/// A tag that prints one reference. As itself an escaping tag; a variable tag is the other kind.
class VariableBlock : public Block {
public:
	VariableBlock(BLOCK_TYPE _type, const DynamicReference& _oReference)
		: Block(_type), eEscaping(KEYWORDS_BY_TYPE[_type].eEscaping), oReference(_oReference) {}

	Escaping eEscaping;
	DynamicReference oReference;
};

/// One of the further references that a variable tag lists.
struct Alternative {
	/// What is known of it since analysis.
	enum KIND : uint8_t {
		DYNAMIC_VALUE, ///< to be found in the element of a dynamic block
		FOUND,         ///< found in the user data
		MALFORMED,     ///< an error, but only if it is ever tried
	};

	Alternative* oNext;
	KIND eKind;
	ReferenceError eError;       ///< MALFORMED
	DynamicReference oReference; ///< DYNAMIC_VALUE
	const zval* phpVariable;     ///< FOUND; borrowed from the user data
	std::string_view sReference; ///< MALFORMED: as it was written
};

/// A variable tag that depends on a dynamic block: its own reference is the first that does. References known to find
/// nothing are left out.
class MultiVariableBlock : public VariableBlock {
public:
	MultiVariableBlock(const DynamicReference& _oReference, MyList<Alternative> _listVariables,
					   std::optional<std::string_view> _sText, std::string_view _sVariables)
		: VariableBlock(VARIABLE, _oReference), listVariables(_listVariables), sText(_sText), sVariables(_sVariables) {}

	MyList<Alternative> listVariables;     ///< what is tried when the own reference finds nothing
	std::optional<std::string_view> sText; ///< the fallback text, if there is one
	std::string_view sVariables;           ///< the whole argument, to echo the tag
};

/// Base of the blocks that have a body.
class SubBlock : public Block {
public:
	MyList<Block> listSubBlocks;
	DynamicReference oReference;

protected:
	SubBlock(BLOCK_TYPE _type, const DynamicReference& _oReference) : Block(_type), oReference(_oReference) {}
};

/// A section that is shown or hidden by the element or key of a dynamic block. (What other values decide is decided
/// during analysis and leaves no block.) The last block of its body leads on to what follows the section, so that
/// rendering neither calls itself nor returns for a section.
class OptionalBlock : public SubBlock {
public:
	OptionalBlock(const DynamicReference& _oReference, const ComparedValue& _oValue, bool negation)
		: SubBlock(negation ? NOPTIONAL : _OPTIONAL, _oReference), oValue(_oValue) {}

	ComparedValue oValue;
};

/// What rendering keeps of a loop: the element at which it stands and the table that it walks.
struct LoopState {
	ElementKey phpKey;
	const zval* phpValue = nullptr;
	const HashTable* oColumns = nullptr; ///< what the element has under string keys, found once for all tags of a row
	HashTable* phpTable = nullptr;       ///< one reference is held
	DynamicBlock* oOuterLoop = nullptr;  ///< the next enclosing block that holds a table
};

/// A section that is repeated for each element of an array. (What analysis keeps of it is a DynamicScope.)
class DynamicBlock : public SubBlock {
public:
	/// The data lies in the element of an enclosing block.
	DynamicBlock(const DynamicReference& _oReference, bool bReverse)
		: SubBlock(bReverse ? RDYNAMIC : DYNAMIC, _oReference) {}
	/// The data was found in the user data.
	DynamicBlock(const zval* _phpVariable, bool bReverse)
		: SubBlock(bReverse ? RDYNAMIC : DYNAMIC, {}), phpVariable(_phpVariable) {}

	const zval* phpVariable = nullptr; ///< borrowed from the user data; null when it is found at render time
	LoopState oLoop;
};
