#include "php/error.h"
#include "template.h"

#include <optional>

// Structured blocks: the analysis of includes, optional and dynamic sections.

// --- Include --------------------------------------------------------------------------------------------------------

void Template::analyzeIncludeBlock(BlockList& subBlockList, std::string_view sArgument) {
	const zval* phpVariable = nullptr;
	Reference oReference = analyzeVariable(sArgument, formOf(sArgument), phpVariable);
	if (oReference.eType == ASTERISK || oReference.eType == KEY) {
		fail({"Include block bad parameter '", sArgument, "': asterisk in filename is forbidden"});
	}
	std::string_view sIncluded = sArgument;
	if (oReference.eType == IMMEDIATE && Z_TYPE_P(phpVariable) == IS_STRING) {
		sIncluded = Z_STRVAL_P(phpVariable);
	} else if (sArgument.empty()) {
		fail({"Include block bad parameter: no parameter found"});
	}
	if (isInIncludeChain(sIncluded)) {
		fail({"Include block bad parameter '", sArgument, "': circle is detected"});
	}

	// The included file is closed only when its error is out of the catch block: that may run user code.
	std::optional<TemplateError> oError;
	{
		Template oTemplate(call.oArena.copy(sIncluded), *this);
		try {
			// A file that can't be opened is left out without a word.
			if (oTemplate.open(false)) {
				oTemplate._analyzeTemplate(subBlockList, Block::UNKNOWN);
			}
		} catch (const TemplateError& oCaught) {
			oError = oCaught;
		}
	}
	if (oError) {
		throw *oError;
	}
	throwIfPhpFailed();
}

bool Template::isInIncludeChain(std::string_view sName) const {
	for (const Template* oTemplate = this; oTemplate; oTemplate = oTemplate->oIncluder) {
		if (oTemplate->sFileName == sName) {
			return true;
		}
	}
	return false;
}

// --- Optional -------------------------------------------------------------------------------------------------------

void Template::analyzeOptionalBlock(BlockList& subBlockList, std::string_view sArgument, bool bNegation) {
	size_t iBlank = sArgument.find(' ');
	std::string_view sArgument1 = sArgument.substr(0, iBlank);
	std::string_view sArgument2 = iBlank == std::string_view::npos ? "" : sArgument.substr(iBlank + 1);

	const zval* phpVariable = nullptr;
	Reference oReference = analyzeVariable(sArgument1, formOf(sArgument1), phpVariable);
	Arena::Mark oMark = call.oArena.mark();
	ComparedValue oValue(call.oArena.copy(sArgument2));

	if (oReference.eType == ASTERISK || oReference.eType == KEY) {
		auto* oBlock = call.oArena.make<OptionalBlock>(resolveNamespace(oReference), oValue, bNegation);
		storeBlock(subBlockList, oBlock);
		_analyzeTemplate(oBlock->listSubBlocks, Block::OPTIONAL_CLOSE);
		storeTextBlock(oBlock->listSubBlocks);
		return;
	}

	// Decided here and now. (Null, no such value, counts as a condition that does not hold.)
	bool bVisible = checkIfOptionalIsVisible(phpVariable, oValue) != bNegation;
	call.oArena.rewind(oMark);
	if (bVisible) {
		_analyzeTemplate(subBlockList, Block::OPTIONAL_CLOSE);
	} else {
		analyzeHiddenBody(Block::OPTIONAL_CLOSE);
	}
}

// --- Dynamic --------------------------------------------------------------------------------------------------------

void Template::analyzeDynamicBlock(BlockList& subBlockList, std::string_view sArgument, bool bReverse) {
	Block::BLOCK_TYPE eClosingTag = bReverse ? Block::RDYNAMIC_CLOSE : Block::DYNAMIC_CLOSE;
	std::string_view sDynamicName;
	size_t iPos = sArgument.find(',');
	if (iPos != std::string_view::npos) {
		sDynamicName = sArgument.substr(0, iPos);
		sArgument.remove_prefix(iPos + 1);
	}
	// The innermost block of that name is this template's own if any is: those of the includers lie further out.
	const DynamicBlock* oNamesake = sDynamicName.empty() ? nullptr : call.oNames.find(sDynamicName);
	if (oNamesake && oNamesake->oTemplate == this) {
		fail({"Dynamic block bad parameter '", sArgument, "': namespace is used already"});
	}
	DynamicBlock* oBlock = makeDynamicBlock(sArgument, bReverse);
	if (!oBlock) {
		analyzeHiddenBody(eClosingTag);
		return;
	}
	storeBlock(subBlockList, oBlock);

	zend_string* sName = sDynamicName.empty() ? nullptr : call.oArena.makeKey(sDynamicName);
	const DynamicBlock* oOuter = call.oInnermost;
	oBlock->oTemplate = this;
	call.oInnermost = oBlock;
	if (sName) {
		call.oNames.open(sName, oBlock);
	}
	_analyzeTemplate(oBlock->listSubBlocks, eClosingTag);
	storeTextBlock(oBlock->listSubBlocks);
	if (sName) {
		call.oNames.close(sName, oBlock);
	}
	call.oInnermost = oOuter;
}

/// Makes the block of a dynamic tag; null when it is known to have no data.
DynamicBlock* Template::makeDynamicBlock(std::string_view sArgument, bool bReverse) {
	const zval* phpVariable = nullptr;
	Reference oReference = analyzeVariable(sArgument, formOf(sArgument), phpVariable);
	switch (oReference.eType) {
		case ASTERISK:
			return call.oArena.make<DynamicBlock>(resolveNamespace(oReference), bReverse);
		case KEY:
			fail({"Dynamic block bad parameter '", sArgument, "': [*] is forbidden"});
		case IMMEDIATE: {
			if (Z_TYPE_P(phpVariable) == IS_ARRAY) {
				if (const zval* phpNumVariable = zend_hash_str_find(Z_ARRVAL_P(phpVariable), ZEND_STRL("num"))) {
					phpVariable = phpNumVariable;
				}
			}
			ZVAL_DEREF(phpVariable);
			if (Z_TYPE_P(phpVariable) == IS_ARRAY) {
				return call.oArena.make<DynamicBlock>(phpVariable, bReverse);
			}
			break;
		}
		case NONE:
			break;
	}
	if (sArgument.empty()) {
		fail({"Dynamic block bad parameter '", sArgument, "': no parameter found"});
	}
	return nullptr;
}
