#pragma once

#include "php/headers.h"
#include "tree/compared_value.h"
#include "tree/my_list.h"
#include "tree/reference.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

// The block tree: what analysis leaves to be rendered. All blocks live in the arena of their call, which owns them;
// none has a destructor. Texts are views on copies in the same arena.

class Template;
class DynamicBlock;

/// A part of the call's text buffer: literal text and values that were known during analysis.
struct TextRange {
	size_t nStart = 0;
	size_t nLength = 0;
};

/// Base of all blocks. Both drivers dispatch on the kind.
class Block {
public:
	enum BLOCK_TYPE : uint8_t {
		UNKNOWN,
		VARIABLE,
		TEXT,
		INCLUDE,
		_OPTIONAL,
		NOPTIONAL,
		DYNAMIC,
		RDYNAMIC,
		OPTIONAL_CLOSE,
		DYNAMIC_CLOSE,
		RDYNAMIC_CLOSE,
		ADDSLASHES,
		HTMLENTITIES,
		HTMLSPECIALCHARS,
		RAWURLENCODE,
	};

	Block* oNext = nullptr;
	/// The text in front of the block. It is nearly always there: a block of its own would cost a second dispatch.
	TextRange oText;

	BLOCK_TYPE getType() const { return type; }
	bool isOptional() const { return type == _OPTIONAL || type == NOPTIONAL; }

protected:
	explicit Block(BLOCK_TYPE _type) : type(_type) {}

private:
	BLOCK_TYPE type;
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

/// A tag that prints one reference; the base of all that print values. As itself an escaping tag, the kind of which tells
/// the escaping.
class VariableBlock : public Block {
public:
	VariableBlock(BLOCK_TYPE _type, const DynamicReference& _oReference) : Block(_type), oReference(_oReference) {}

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
					   std::string_view _sVariables)
		: VariableBlock(VARIABLE, _oReference), listVariables(_listVariables), sVariables(_sVariables), bText(false) {}
	MultiVariableBlock(const DynamicReference& _oReference, MyList<Alternative> _listVariables,
					   std::string_view _sText, std::string_view _sVariables)
		: VariableBlock(VARIABLE, _oReference), listVariables(_listVariables), sText(_sText), sVariables(_sVariables),
		  bText(true) {}

	MyList<Alternative> listVariables; ///< what is tried when the own reference finds nothing
	std::string_view sText;            ///< the fallback text
	std::string_view sVariables;       ///< the whole argument, to echo the tag
	bool bText;                        ///< whether there is a fallback text
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
/// rendering neither calls itself nor returns for a section: 3 % of a page with many of them.
class OptionalBlock : public SubBlock {
public:
	OptionalBlock(const DynamicReference& _oReference, const ComparedValue& _oValue, bool negation)
		: SubBlock(negation ? NOPTIONAL : _OPTIONAL, _oReference), oValue(_oValue) {}

	ComparedValue oValue;
};

/// A section that is repeated for each element of an array.
class DynamicBlock : public SubBlock {
public:
	/// The data lies in the element of an enclosing block.
	DynamicBlock(const DynamicReference& _oReference, bool bReverse)
		: SubBlock(bReverse ? RDYNAMIC : DYNAMIC, _oReference) {}
	/// The data was found in the user data.
	DynamicBlock(const zval* _phpVariable, bool bReverse)
		: SubBlock(bReverse ? RDYNAMIC : DYNAMIC, {}), phpVariable(_phpVariable) {}

	const zval* phpVariable = nullptr; ///< borrowed from the user data; null when it is found at render time

	// While the body is analysed.
	const Template* oTemplate = nullptr;     ///< the template that opened the block
	DynamicBlock* oOuterNamesake = nullptr;  ///< the next enclosing block of the same name
	DynamicBlock* oOutermostNamesake = this; ///< the outermost one: a name means that one

	// While the block is rendered.
	ElementKey phpKey;                   ///< of the element
	const zval* phpValue = nullptr;      ///< the element
	HashTable* phpTable = nullptr;       ///< the table that is walked; one reference is held
	DynamicBlock* oOuterLoop = nullptr;  ///< the next enclosing block that holds a table
};
