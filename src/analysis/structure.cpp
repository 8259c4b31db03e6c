#include "php/failure.h"
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
		Template oTemplate(call.oArena.copy(sIncluded), call);
		try {
			// A file that can't be opened is left out without a word.
			if (oTemplate.open(false)) {
				oTemplate.analyzeIncludedFile(subBlockList);
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
	return sName == call.sOwnName || call.oAnalysis.oIncludes.find(sName);
}

/// Analyses this template as a part of the one that includes it.
void Template::analyzeIncludedFile(BlockList& subBlockList) {
	IncludedFile oFile;
	oFile.setName(sFileName);
	call.oAnalysis.oIncludes.insert(&oFile);
	_analyzeTemplate(subBlockList, Block::UNKNOWN);
	call.oAnalysis.oIncludes.remove(&oFile);
}

// --- Optional -------------------------------------------------------------------------------------------------------

void Template::analyzeOptionalBlock(BlockList& subBlockList, std::string_view sArgument, Block::BLOCK_TYPE eType) {
	bool bNegation = eType == Block::NOPTIONAL;
	size_t iBlank = sArgument.find(' ');
	std::string_view sArgument1 = sArgument.substr(0, iBlank);
	std::string_view sArgument2 = iBlank == std::string_view::npos ? "" : sArgument.substr(iBlank + 1);

	const zval* phpVariable = nullptr;
	Reference oReference = analyzeVariable(sArgument1, formOf(sArgument1), phpVariable);
	Arena::Position oBefore = call.oArena.position();
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
	call.oArena.rewind(oBefore);
	if (bVisible) {
		_analyzeTemplate(subBlockList, Block::OPTIONAL_CLOSE);
	} else {
		analyzeHiddenBody(Block::OPTIONAL_CLOSE);
	}
}

// --- Dynamic --------------------------------------------------------------------------------------------------------

void Template::analyzeDynamicBlock(BlockList& subBlockList, std::string_view sArgument, Block::BLOCK_TYPE eType) {
	Block::BLOCK_TYPE eClosingTag = KEYWORDS_BY_TYPE[eType].eClosingTag;
	std::string_view sDynamicName;
	size_t iPos = sArgument.find(',');
	if (iPos != std::string_view::npos) {
		sDynamicName = sArgument.substr(0, iPos);
		sArgument.remove_prefix(iPos + 1);
	}
	// The innermost body of that name is this template's own if any is: those of the includers lie further out.
	DynamicScope* oNamesake = sDynamicName.empty() ? nullptr : call.oAnalysis.oScopes.find(sDynamicName);
	if (oNamesake && oNamesake->oTemplate == this) {
		fail({"Dynamic block bad parameter '", sArgument, "': namespace is used already"});
	}
	if (DynamicBlock* oBlock = makeDynamicBlock(sArgument, eType == Block::RDYNAMIC)) {
		storeBlock(subBlockList, oBlock);
		analyzeDynamicBody(*oBlock, sDynamicName, oNamesake, eClosingTag);
	} else {
		analyzeHiddenBody(eClosingTag);
	}
}

/// Analyses the body of a block. `oNamesake` is the innermost open one of its name.
void Template::analyzeDynamicBody(DynamicBlock& oBlock, std::string_view sDynamicName, DynamicScope* oNamesake,
								  Block::BLOCK_TYPE eClosingTag) {
	AnalysisState& oState = call.oAnalysis;
	DynamicScope oScope(&oBlock, this, oState.oInnermost, oNamesake);
	if (!sDynamicName.empty()) {
		oScope.setName(call.oArena.copy(sDynamicName));
		if (oNamesake) {
			oState.oScopes.remove(oNamesake);
		}
		oState.oScopes.insert(&oScope);
	}
	oState.oInnermost = &oScope;
	_analyzeTemplate(oBlock.listSubBlocks, eClosingTag);
	storeTextBlock(oBlock.listSubBlocks);
	oState.oInnermost = oScope.oOuter;
	if (!sDynamicName.empty()) {
		oState.oScopes.remove(&oScope);
		if (oNamesake) {
			oState.oScopes.insert(oNamesake);
		}
	}
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
		case IMMEDIATE:
			phpVariable = PHPInterface::findRows(phpVariable);
			ZVAL_DEREF(phpVariable);
			if (Z_TYPE_P(phpVariable) == IS_ARRAY) {
				return call.oArena.make<DynamicBlock>(phpVariable, bReverse);
			}
			break;
		case NONE:
			break;
	}
	if (sArgument.empty()) {
		fail({"Dynamic block bad parameter '", sArgument, "': no parameter found"});
	}
	return nullptr;
}
