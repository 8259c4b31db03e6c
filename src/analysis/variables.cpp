#include "data/escape.h"
#include "data/value_text.h"
#include "php/error.h"
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

// --- References -----------------------------------------------------------------------------------------------------

void Template::failReference(ReferenceError eError, std::string_view sArgument) const {
	switch (eError) {
		case ReferenceError::TOO_MANY_COLONS:
			fail({"Bad formated parameter'", sArgument, "': too many :"});
		case ReferenceError::KEY_NOT_LAST:
			fail({"Bad formated parameter: [*] must be last"});
		case ReferenceError::TOO_MANY_STARS:
			fail({"Bad formated parameter'", sArgument, "': too many *"});
		case ReferenceError::TOO_MANY_STARS_LEFTMOST:
			fail({"Bad formated parameter: too many *"});
		case ReferenceError::TOO_MANY_NAMESPACES:
			fail({"Bad formated parameter'", sArgument, "': too many namespaces"});
		case ReferenceError::TOO_MANY_NAMESPACES_LEFTMOST:
		case ReferenceError::NO_ERROR:
			break;
	}
	fail({"Bad formated parameter: too many namespaces"});
}

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
		Arena::Mark oMark = call.oArena.mark();
		oReference = parseArgument(sArgument);
		if (oReference.eType != IMMEDIATE) {
			return oReference;
		}
		phpFound = findVariable(oReference.listIndexes.first(), nullptr);
		oReference.listIndexes = {};
		call.oArena.rewind(oMark);
	}
	if (phpFound) {
		phpVariable = phpFound;
	} else {
		oReference.eType = NONE;
	}
	return oReference;
}

/// Walks a path from `phpVarRoot`, or from the user data when it is null. Returns null when there is no such value.
const zval* Template::findVariable(const Index* oIndex, const zval* phpVarRoot) const {
	if (!oIndex) {
		return phpVarRoot;
	}
	for (;;) {
		const zval* phpFound = oIndex->sKey ? call.php.hashFind(*oIndex, phpVarRoot)
											: PHPInterface::hashIndexFind(oIndex->nIndex, phpVarRoot);
		oIndex = oIndex->oNext;
		if (!oIndex || !phpFound) {
			return phpFound;
		}
		if (Z_TYPE_P(phpFound) != IS_ARRAY) {
			return nullptr;
		}
		phpVarRoot = phpFound;
	}
}

/// Finds the dynamic block that a star or key reference means: the outermost of its namespace, or the innermost of all.
DynamicReference Template::resolveNamespace(const Reference& oReference) const {
	const DynamicBlock* oBlock = call.oInnermost;
	if (!oReference.sNamespace.empty()) {
		const DynamicBlock* oNamesake = call.oNames.find(oReference.sNamespace);
		oBlock = oNamesake ? oNamesake->oOutermostNamesake : nullptr;
	}
	const Index* oIndex = oReference.listIndexes.first();
	DynamicReference::TARGET eTarget = DynamicReference::PATH;
	if (!oBlock) {
		eTarget = DynamicReference::NOTHING;
	} else if (oReference.eType == KEY) {
		eTarget = DynamicReference::KEY;
	} else if (oIndex && oIndex->sKey && !oIndex->oNext) {
		eTarget = DynamicReference::COLUMN;
	}
	return {oBlock, oIndex, eTarget};
}

// --- Analysis of tags -----------------------------------------------------------------------------------------------

/// Splits the argument of a variable tag, which has no white space around it.
void Template::splitVariableTag(std::string_view sArgument, VariableTag& oTag) const {
	bool bString = false;
	size_t iFirstEnd = 0;
	size_t iPos = 0;
	for (; iPos < sArgument.size(); ++iPos) {
		char ch = sArgument[iPos];
		if (isSpace(ch)) {
			iFirstEnd = iFirstEnd ? iFirstEnd : iPos;
			bString = false;
		} else if (ch != '\'') {
			bString = true;
		} else if (bString) {
			fail({"Variable block bad parameter '", sArgument, "': ' is forbidden in variable"});
		} else {
			size_t iLast = sArgument.size() - 1;
			if (iPos == iLast || sArgument[iLast] != '\'') {
				fail({"Variable block bad parameter '", sArgument, "': could not find second ' as the last character"});
			}
			oTag.bText = true;
			oTag.sText = sArgument.substr(iPos + 1, iLast - iPos - 1);
			break;
		}
	}
	iFirstEnd = iFirstEnd ? iFirstEnd : iPos;
	oTag.sFirst = sArgument.substr(0, iFirstEnd);
	oTag.sRest = sArgument.substr(iFirstEnd, iPos - iFirstEnd);
}

void Template::analyzeVariableBlock(BlockList& subBlockList, std::string_view sArgument) {
	ArgumentForm eForm = formOf(sArgument);
	if (eForm == ArgumentForm::NAME) {
		if (const zval* phpVariable = call.php.find(sArgument)) {
			appendValue(call.sTexts, phpVariable);
		} else {
			echoTag(call.sTexts, sArgument);
		}
		return;
	}
	VariableTag oTag;
	oTag.sFirst = sArgument;
	if (eForm == ArgumentForm::OTHER) {
		splitVariableTag(sArgument, oTag);
		eForm = formOf(oTag.sFirst);
	}
	std::string_view sRest = oTag.sRest;
	for (std::string_view sReference = oTag.sFirst; !sReference.empty();
		 sReference = takeReference(sRest), eForm = formOf(sReference)) {
		checkTimeLimit();
		const zval* phpVariable = nullptr;
		Reference oReference = analyzeVariable(sReference, eForm, phpVariable);
		if (oReference.eType == IMMEDIATE) {
			appendValue(call.sTexts, phpVariable);
			return;
		}
		if (oReference.eType == NONE) {
			continue;
		}
		// What came before finds nothing at render time either: the path to a value can't change during a call.
		DynamicReference oDynamic = resolveNamespace(oReference);
		MyList<Alternative> listVariables;
		bool bMayFail = true;
		while (bMayFail && !sRest.empty() && !(sReference = takeReference(sRest)).empty()) {
			checkTimeLimit();
			if (Alternative* oNext = keepAlternative(sReference)) {
				listVariables.append(oNext);
				bMayFail = oNext->eKind == Alternative::DYNAMIC_VALUE;
			}
		}
		std::string_view sVariables = call.oArena.copy(sArgument);
		storeBlock(subBlockList, oTag.bText ? call.oArena.make<MultiVariableBlock>(
												  oDynamic, listVariables, call.oArena.copy(oTag.sText), sVariables)
											: call.oArena.make<MultiVariableBlock>(oDynamic, listVariables, sVariables));
		return;
	}
	if (oTag.bText) {
		call.sTexts.append(oTag.sText);
	} else {
		echoTag(call.sTexts, sArgument);
	}
}

/// Makes what a later alternative is at render time; null when it will find nothing.
Alternative* Template::keepAlternative(std::string_view sReference) {
	Arena::Mark oMark = call.oArena.mark();
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
			call.oArena.rewind(oMark);
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
		appendEscaped(call.sTexts, eType, Z_STR_P(phpVariable), EscapeTime::ANALYSIS);
	}
}

void Template::echoTag(TextBuffer& sOutput, std::string_view sArgument) {
	sOutput.append('{');
	sOutput.append(sArgument);
	sOutput.append('}');
}
