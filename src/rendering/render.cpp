#include "data/escape.h"
#include "data/value_text.h"
#include "php/memory.h"
#include "php/time_limit.h"
#include "rendering/element_walk.h"
#include "template.h"
#include "text/byte_scan.h"
#include "text/text_cursor.h"

// Rendering: the walk over the block tree, once per element inside dynamic blocks. The small steps
// are joined into the loop by the compiler: a value costs a few nanoseconds, as much as two calls.

namespace {

[[gnu::always_inline]] inline void appendKey(TextCursor& sOutput, const ElementKey& oKey) {
	if (oKey.sKey) {
		sOutput.append(oKey.sPrinted);
	} else {
		sOutput.setEnd(writeInteger(sOutput.reserve(NUMBER_ROOM), static_cast<zend_long>(oKey.nIndex)));
	}
}

} // namespace

zend_string* Template::getResult() {
	Block* oFirst = listBlocks.first();
	if (!oFirst || (oFirst == listBlocks.last() && oFirst->getType() == Block::TEXT)) {
		// Nothing was left for rendering: the text that analysis gathered is the result.
		return call.sTexts.take();
	}
	call.sTexts.reserve(PADDING); // the texts in front of blocks are taken to be padded
	call.oRendering.sOutput.expect(2 * call.sTexts.size());
	_getResult(listBlocks, nullptr, call.oRendering.sOutput);
	return call.oRendering.sOutput.take();
}

/// Renders a body: once for each element, or once when it belongs to no dynamic block.
void Template::_getResult(const BlockList& subBlockList, ElementWalk* oElements, TextBuffer& sBuffer) {
	checkStack();
	const char* pTexts = call.sTexts.view().data();
	TextCursor sOutput(sBuffer);
	size_t nStart = sOutput.size();
	while (!oElements || oElements->next()) {
		checkTimeLimit(); // often enough: a body without a loop renders in less time than its analysis took
		size_t nRowStart = sOutput.size();
		Block* oNext;
		for (Block* oBlock = subBlockList.first(); oBlock; oBlock = oNext) {
			std::string_view sBefore(pTexts + oBlock->oText.nStart, oBlock->oText.nLength);
			oNext = oBlock->oNext;
			switch (oBlock->getFamily()) {
				case BlockFamily::VARIABLE:
					_getResultVariable(static_cast<const MultiVariableBlock&>(*oBlock), sBefore, sOutput);
					break;
				case BlockFamily::ESCAPING:
					_getResultEscaped(static_cast<const VariableBlock&>(*oBlock), sBefore, sOutput);
					break;
				case BlockFamily::OPTIONAL: {
					const auto& oOptional = static_cast<const OptionalBlock&>(*oBlock);
					sOutput.appendPadded(sBefore);
					if (isShown(oOptional) && !oOptional.listSubBlocks.empty()) {
						oNext = oOptional.listSubBlocks.first();
					}
					break;
				}
				case BlockFamily::DYNAMIC:
					sOutput.appendPadded(sBefore);
					sOutput.lend(
						[&](TextBuffer& sLent) { _getResultDynamic(static_cast<DynamicBlock&>(*oBlock), sLent); });
					break;
				case BlockFamily::TEXT:
					sOutput.appendPadded(sBefore);
					break;
				case BlockFamily::INCLUDE:
				case BlockFamily::CLOSING:
					ZEND_UNREACHABLE(); // never stored
			}
		}
		if (!oElements) {
			break;
		}
		// Rows are much alike: what the rest will take is known long before it comes. For a large page that is one move
		// of the output instead of ten, and no more memory than the result itself.
		if (oElements->isOutermost() && UNEXPECTED(sOutput.room() < 4 * (sOutput.size() - nRowStart))) {
			size_t nRow = (sOutput.size() - nStart) / oElements->walked() + 1;
			size_t nRest = nRow * oElements->left();
			// A hundred rows tell of the others: each move of a large page costs fresh memory of its size.
			bool bKnown = oElements->walked() >= 100;
			sOutput.lend([=](TextBuffer& sLent) { sLent.expect(nRest + nRest / 32 + 4 * nRow, bKnown); });
		}
	}
	sOutput.store();
}

/// Finds a value in the element that a dynamic block is rendering; null when there is none.
inline const zval* Template::findDynamicValue(const DynamicReference& oReference) const {
	switch (oReference.eTarget) {
		case DynamicReference::COLUMN:
			return PHPInterface::hashFindIn(*oReference.listIndexes, oReference.oDynamicBlock->oLoop.oColumns);
		case DynamicReference::PATH:
			return findVariable(oReference.listIndexes, oReference.oDynamicBlock->oLoop.phpValue);
		case DynamicReference::NOTHING:
		case DynamicReference::KEY:
			break;
	}
	return nullptr;
}

// Strings are what nearly every tag prints. They are appended together with the text in front of the tag.

[[gnu::always_inline]] inline void Template::_getResultVariable(const MultiVariableBlock& oBlock,
																std::string_view sBefore, TextCursor& sOutput) {
	const DynamicReference& oReference = oBlock.oReference;
	if (oReference.eTarget == DynamicReference::KEY) {
		const ElementKey& oKey = oReference.oDynamicBlock->oLoop.phpKey;
		if (EXPECTED(oKey.sKey)) {
			sOutput.appendPadded(sBefore, oKey.sPrinted);
		} else {
			sOutput.appendPadded(sBefore);
			appendKey(sOutput, oKey);
		}
		return;
	}
	const zval* phpVariable = findDynamicValue(oReference);
	if (!phpVariable) {
		sOutput.appendPadded(sBefore);
		sOutput.lend([&](TextBuffer& sLent) { printAlternative(oBlock, sLent); });
	} else if (EXPECTED(Z_TYPE_P(phpVariable) == IS_STRING)) {
		sOutput.appendTill<byte_scan::Nul>(sBefore, Z_STR_P(phpVariable));
	} else {
		sOutput.appendPadded(sBefore);
		appendValue(sOutput, phpVariable);
	}
}

/// What finds nothing prints nothing here, not even the tag.
[[gnu::always_inline]] inline void Template::_getResultEscaped(const VariableBlock& oBlock, std::string_view sBefore,
															   TextCursor& sOutput) {
	const DynamicReference& oReference = oBlock.oReference;
	const zval* phpVariable = nullptr;
	const zend_string* sFound = nullptr;
	if (UNEXPECTED(oReference.eTarget == DynamicReference::KEY)) {
		const ElementKey& oKey = oReference.oDynamicBlock->oLoop.phpKey;
		if (!oKey.sKey) {
			// No escaping changes a digit or a minus sign.
			sOutput.appendPadded(sBefore);
			appendKey(sOutput, oKey);
			return;
		}
		sFound = oKey.sKey;
	} else {
		phpVariable = findDynamicValue(oReference);
		sFound = phpVariable && Z_TYPE_P(phpVariable) == IS_STRING ? Z_STR_P(phpVariable) : nullptr;
	}
	if (sFound && oBlock.eEscaping == Escaping::HTMLSPECIALCHARS) {
		const char* pSpecial = sOutput.appendTill<byte_scan::HtmlSpecial>(sBefore, sFound);
		const char* pEnd = ZSTR_VAL(sFound) + ZSTR_LEN(sFound);
		if (pSpecial < pEnd) {
			sOutput.lend([=](TextBuffer& sLent) { appendHtmlSpecialchars(sLent, pSpecial, pEnd); });
		}
		return;
	}
	sOutput.appendPadded(sBefore);
	sOutput.lend([&](TextBuffer& sLent) {
		if (sFound) {
			appendEscaped(sLent, oBlock.eEscaping, sFound, EscapeTime::RENDER);
		} else if (phpVariable) {
			appendEscapedValue(sLent, oBlock.eEscaping, phpVariable);
		}
	});
}

/// Prints the first of the further alternatives that finds something, else the fallback text or the tag itself.
void Template::printAlternative(const MultiVariableBlock& oBlock, TextBuffer& sOutput) const {
	for (const Alternative* oTried = oBlock.listVariables.first(); oTried; oTried = oTried->oNext) {
		checkTimeLimit();
		switch (oTried->eKind) {
			case Alternative::DYNAMIC_VALUE:
				if (oTried->oReference.eTarget == DynamicReference::KEY) {
					TextCursor sCursor(sOutput);
					appendKey(sCursor, oTried->oReference.oDynamicBlock->oLoop.phpKey);
					sCursor.store();
					return;
				}
				if (const zval* phpVariable = findDynamicValue(oTried->oReference)) {
					appendValue(sOutput, phpVariable);
					return;
				}
				break;
			case Alternative::FOUND:
				appendValue(sOutput, oTried->phpVariable);
				return;
			case Alternative::MALFORMED:
				failReference(oTried->eError, oTried->sReference);
		}
	}
	if (oBlock.sText) {
		sOutput.append(*oBlock.sText);
	} else {
		echoTag(sOutput, oBlock.sVariables);
	}
}

/// Whether an optional section is shown. One that depends on a block that isn't there never is, not even when negated.
inline bool Template::isShown(const OptionalBlock& oBlock) const {
	const DynamicReference& oReference = oBlock.oReference;
	bool bHolds = false;
	switch (oReference.eTarget) {
		case DynamicReference::NOTHING:
			return false;
		case DynamicReference::KEY:
			bHolds = oBlock.oValue.equalsKey(oReference.oDynamicBlock->oLoop.phpKey);
			break;
		case DynamicReference::COLUMN:
		case DynamicReference::PATH:
			bHolds = checkIfOptionalIsVisible(findDynamicValue(oReference), oBlock.oValue);
			break;
	}
	return bHolds != (oBlock.getType() == Block::NOPTIONAL);
}

/// Finds the data of a block in the element of an enclosing block; null when there is none to walk.
const zval* Template::findDynamicData(const DynamicBlock& oBlock) const {
	const zval* phpVariable = findDynamicValue(oBlock.oReference);
	return phpVariable && Z_TYPE_P(phpVariable) == IS_ARRAY ? PHPInterface::findRows(phpVariable) : nullptr;
}

void Template::_getResultDynamic(DynamicBlock& oBlock, TextBuffer& sOutput) {
	const zval* phpData = oBlock.phpVariable ? oBlock.phpVariable : findDynamicData(oBlock);
	const HashTable* oTable = phpData ? call.beginLoop(oBlock, phpData) : nullptr;
	if (!oTable) {
		return;
	}
	ElementWalk oElements(oBlock, oTable);
	_getResult(oBlock.listSubBlocks, &oElements, sOutput);
	call.endLoop();
	throwIfPhpFailed();
}
