#include "data/escape.h"
#include "data/value_text.h"
#include "php/failure.h"
#include "php/time_limit.h"
#include "template.h"
#include "text/white_space.h"

// Variable references, variable tags and escaping tags: their analysis.

namespace {

/// Takes the first reference off a list of references; empty when there is none left.
std::string_view takeReference(std::string_view& sReferences) {
	size_t iBegin = 0;
	while (iBegin < sReferences.size() && isSpace(sReferences[iBegin])) {
		++iBegin;
	}
	size_t iEnd = iBegin;
	while (iEnd < sReferences.size() && !isSpace(sReferences[iEnd])) {
		++iEnd;
	}
	std::string_view sReference = sReferences.substr(iBegin, iEnd - iBegin);
	sReferences.remove_prefix(iEnd);
	return sReference;
}

} // namespace

struct Template::VariableTag {
	std::string_view sFirst;               ///< the first reference; empty when there is none
	std::string_view sRest;                ///< the other ones, separated by white space
	std::optional<std::string_view> sText; ///< the fallback text, if there is one
};

// --- References -----------------------------------------------------------------------------------------------------

Reference Template::parseArgument(std::string_view sArgument) {
	Reference oReference;
	ReferenceError eError = parseReference(sArgument, call.oArena, oReference);
	if (eError != ReferenceError::NO_ERROR) {
		failReference(eError, sArgument);
	}
	return oReference;
}

/// Parses a reference of the given form. One that depends on no dynamic block is looked up at once: its type is then
/// IMMEDIATE, with the value in `phpVariable`, or NONE, and its indexes are gone.
Reference Template::analyzeVariable(std::string_view sArgument, ArgumentForm eForm, const zval*& phpVariable) {
	Reference oReference;
	const zval* phpFound;
	if (eForm == ArgumentForm::NAME) {
		phpFound = call.php.find(sArgument);
	} else {
		Arena::Position oBefore = call.oArena.position();
		oReference = parseArgument(sArgument);
		if (oReference.eType != IMMEDIATE) {
			return oReference;
		}
		phpFound = findVariable(oReference.listIndexes.first(), nullptr);
		oReference.listIndexes = {};
		call.oArena.rewind(oBefore);
	}
	if (phpFound) {
		phpVariable = phpFound;
	} else {
		oReference.eType = NONE;
	}
	return oReference;
}

/// Finds the dynamic block that a star or key reference means: the outermost of its namespace, or the innermost of all.
DynamicReference Template::resolveNamespace(const Reference& oReference) const {
	const DynamicScope* oScope = call.oAnalysis.oInnermost;
	if (!oReference.sNamespace.empty()) {
		oScope = call.oAnalysis.oScopes.find(oReference.sNamespace);
		oScope = oScope ? oScope->oOutermostNamesake : nullptr;
	}
	if (!oScope) {
		return {nullptr, nullptr, DynamicReference::NOTHING};
	}
	const Index* oIndex = oReference.listIndexes.first();
	bool bColumn = oIndex && oIndex->sKey && !oIndex->oNext;
	return {oScope->oBlock, oIndex,
			oReference.eType == KEY ? DynamicReference::KEY
			: bColumn               ? DynamicReference::COLUMN
									: DynamicReference::PATH};
}

// --- Analysis of tags -----------------------------------------------------------------------------------------------

/// Splits the argument of a variable tag, which has no white space around it.
Template::VariableTag Template::splitVariableTag(std::string_view sArgument) const {
	VariableTag oTag{{}, sArgument, {}};
	bool bReference = false;
	for (size_t iPos = 0; iPos < sArgument.size(); ++iPos) {
		char ch = sArgument[iPos];
		if (isSpace(ch)) {
			bReference = false;
		} else if (ch != '\'') {
			bReference = true;
		} else if (bReference) {
			fail({"Variable block bad parameter '", sArgument, "': ' is forbidden in variable"});
		} else {
			size_t iLast = sArgument.size() - 1;
			if (iPos == iLast || sArgument[iLast] != '\'') {
				fail({"Variable block bad parameter '", sArgument, "': could not find second ' as the last character"});
			}
			oTag.sRest = sArgument.substr(0, iPos);
			oTag.sText = sArgument.substr(iPos + 1, iLast - iPos - 1);
			break;
		}
	}
	oTag.sFirst = takeReference(oTag.sRest);
	return oTag;
}

void Template::analyzeVariableBlock(BlockList& subBlockList, std::string_view sArgument) {
	switch (formOf(sArgument)) {
		case ArgumentForm::NAME:
			if (const zval* phpVariable = call.php.find(sArgument)) {
				appendValue(call.sTexts, phpVariable);
			} else {
				echoTag(call.sTexts, sArgument);
			}
			break;
		case ArgumentForm::REFERENCE:
			analyzeVariableTag(subBlockList, sArgument, {sArgument, {}, {}}, ArgumentForm::REFERENCE);
			break;
		case ArgumentForm::OTHER: {
			VariableTag oTag = splitVariableTag(sArgument);
			analyzeVariableTag(subBlockList, sArgument, oTag, formOf(oTag.sFirst));
			break;
		}
	}
}

/// Prints the first reference that finds something, or makes a block from the first on that only rendering can try.
/// `eForm` is that of the first reference.
void Template::analyzeVariableTag(BlockList& subBlockList, std::string_view sArgument, const VariableTag& oTag,
								  ArgumentForm eForm) {
	std::string_view sRest = oTag.sRest;
	for (std::string_view sReference = oTag.sFirst; !sReference.empty();
		 sReference = takeReference(sRest), eForm = formOf(sReference)) {
		checkTimeLimit();
		const zval* phpVariable = nullptr;
		Reference oReference = analyzeVariable(sReference, eForm, phpVariable);
		switch (oReference.eType) {
			case NONE:
				continue;
			case IMMEDIATE:
				appendValue(call.sTexts, phpVariable);
				return;
			case ASTERISK:
			case KEY:
				break;
		}
		// What came before finds nothing at render time either: the path to a value can't change during a call.
		DynamicReference oDynamic = resolveNamespace(oReference);
		MyList<Alternative> listVariables;
		if (!sRest.empty()) {
			listVariables = keepAlternatives(sRest);
		}
		std::optional<std::string_view> sText;
		if (oTag.sText) {
			sText = call.oArena.copy(*oTag.sText);
		}
		storeBlock(subBlockList,
				   call.oArena.make<MultiVariableBlock>(oDynamic, listVariables, sText, call.oArena.copy(sArgument)));
		return;
	}
	if (oTag.sText) {
		call.sTexts.append(*oTag.sText);
	} else {
		echoTag(call.sTexts, sArgument);
	}
}

/// Makes what the references of a list are at render time, up to the first that ends the search whatever it finds.
MyList<Alternative> Template::keepAlternatives(std::string_view sReferences) {
	MyList<Alternative> listVariables;
	for (;;) {
		std::string_view sReference = takeReference(sReferences);
		if (sReference.empty()) {
			return listVariables;
		}
		checkTimeLimit();
		if (Alternative* oNext = keepAlternative(sReference)) {
			listVariables.append(oNext);
			if (oNext->eKind != Alternative::DYNAMIC_VALUE) {
				return listVariables;
			}
		}
	}
}

/// Makes what a later alternative is at render time; null when it will find nothing.
Alternative* Template::keepAlternative(std::string_view sReference) {
	Arena::Position oBefore = call.oArena.position();
	auto* oAlternative = call.oArena.make<Alternative>();
	Reference oReference;
	oAlternative->eError = parseReference(sReference, call.oArena, oReference);
	if (oAlternative->eError != ReferenceError::NO_ERROR) {
		oAlternative->eKind = Alternative::MALFORMED;
		oAlternative->sReference = call.oArena.copy(sReference);
	} else if (oReference.eType == IMMEDIATE) {
		oAlternative->eKind = Alternative::FOUND;
		oAlternative->phpVariable = findVariable(oReference.listIndexes.first(), nullptr);
		if (!oAlternative->phpVariable) {
			call.oArena.rewind(oBefore);
			return nullptr;
		}
	} else {
		oAlternative->eKind = Alternative::DYNAMIC_VALUE;
		oAlternative->oReference = resolveNamespace(oReference);
	}
	return oAlternative;
}

void Template::analyzeEscapingBlock(BlockList& subBlockList, std::string_view sArgument, Block::BLOCK_TYPE eType) {
	const zval* phpVariable = nullptr;
	Reference oReference = analyzeVariable(sArgument, formOf(sArgument), phpVariable);
	if (oReference.eType == ASTERISK || oReference.eType == KEY) {
		storeBlock(subBlockList, call.oArena.make<VariableBlock>(eType, resolveNamespace(oReference)));
	} else if (oReference.eType == IMMEDIATE && Z_TYPE_P(phpVariable) == IS_STRING) {
		appendEscaped(call.sTexts, KEYWORDS_BY_TYPE[eType].eEscaping, Z_STR_P(phpVariable), EscapeTime::ANALYSIS);
	}
}
