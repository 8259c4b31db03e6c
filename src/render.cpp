#include "template.h"

#include "byte_scan.h"
#include "escape.h"
#include "memory.h"
#include "number_text.h"
#include "time_limit.h"
#include "value_text.h"

// Rendering: the walk over the block tree, once per element inside dynamic blocks. All of it stands in one file so that
// the compiler joins the small steps: a value costs a few nanoseconds, as much as two calls.

namespace {

void appendKey(TextBuffer& sOutput, const ElementKey& oKey) {
	if (oKey.sKey) {
		sOutput.append(oKey.sPrinted);
	} else {
		appendInteger(sOutput, static_cast<zend_long>(oKey.nIndex));
	}
}

/// Appends a value that is no string.
void appendEscapedValue(TextBuffer& sOutput, Block::BLOCK_TYPE eType, const zval* phpVariable) {
	switch (Z_TYPE_P(phpVariable)) {
		case IS_NULL:
		case IS_FALSE:
		case IS_TRUE:
		case IS_LONG:
			appendValue(sOutput, phpVariable);
			return;
		case IS_DOUBLE:
			// Only the plus sign of an exponent is ever escaped.
			if (eType != Block::RAWURLENCODE) {
				appendValue(sOutput, phpVariable);
				return;
			}
			break;
		default:
			break;
	}
	OwnedString sText(convertToString(phpVariable));
	throwIfPhpFailed();
	appendEscaped(sOutput, eType, sText.get(), EscapeTime::RENDER);
}

} // namespace

zend_string* Template::getResult() {
	Block* oFirst = listBlocks.first();
	if (!oFirst || (oFirst == listBlocks.last() && oFirst->getType() == Block::TEXT)) {
		// Nothing was left for rendering: the text that analysis gathered is the result.
		return call.sTexts.take();
	}
	call.sTexts.reserve(TextBuffer::PADDING); // the texts in front of blocks are taken to be padded
	call.sOutput.expect(2 * call.sTexts.size());
	_getResult(listBlocks, call.sOutput);
	return call.sOutput.take();
}

void Template::_getResult(const BlockList& subBlockList, TextBuffer& sOutput) {
	checkStack();
	const char* pTexts = call.sTexts.view().data();
	for (Block* oBlock = subBlockList.first(); oBlock; oBlock = oBlock->oNext) {
		checkTimeLimit();
		std::string_view sBefore(pTexts + oBlock->oText.nStart, oBlock->oText.nLength);
		switch (oBlock->getType()) {
			case Block::VARIABLE:
				_getResultVariable(static_cast<const MultiVariableBlock&>(*oBlock), sBefore, sOutput);
				break;
			case Block::ADDSLASHES:
			case Block::HTMLENTITIES:
			case Block::HTMLSPECIALCHARS:
			case Block::RAWURLENCODE:
				_getResultEscaped(static_cast<const VariableBlock&>(*oBlock), sBefore, sOutput);
				break;
			case Block::_OPTIONAL:
			case Block::NOPTIONAL:
				sOutput.appendPadded(sBefore);
				_getResultOptional(static_cast<const OptionalBlock&>(*oBlock), sOutput);
				break;
			case Block::DYNAMIC:
			case Block::RDYNAMIC:
				sOutput.appendPadded(sBefore);
				_getResultDynamic(static_cast<DynamicBlock&>(*oBlock), sOutput);
				break;
			case Block::TEXT:
				sOutput.appendPadded(sBefore);
				break;
			case Block::UNKNOWN:
			case Block::INCLUDE:
			case Block::OPTIONAL_CLOSE:
			case Block::DYNAMIC_CLOSE:
			case Block::RDYNAMIC_CLOSE:
				break;
		}
	}
}

/// Finds a value in the element that a dynamic block is rendering; null when there is none.
inline const zval* Template::findDynamicValue(const DynamicReference& oReference) const {
	const DynamicBlock* oBlock = oReference.oDynamicBlock;
	if (!oBlock) {
		return nullptr;
	}
	if (EXPECTED(oReference.oColumn)) {
		return PHPInterface::hashFindIn(*oReference.oColumn, oBlock->phpValue);
	}
	return findVariable(oReference.listIndexes, oBlock->phpValue);
}

// Strings are what nearly every tag prints. They are appended together with the text in front of the tag.

inline void Template::_getResultVariable(const MultiVariableBlock& oBlock, std::string_view sBefore,
										 TextBuffer& sOutput) {
	const DynamicReference& oReference = oBlock.oReference;
	if (oReference.bKey && oReference.oDynamicBlock) {
		const ElementKey& oKey = oReference.oDynamicBlock->phpKey;
		sOutput.appendPadded(sBefore, oKey.sPrinted);
		if (!oKey.sKey) {
			appendInteger(sOutput, static_cast<zend_long>(oKey.nIndex));
		}
		return;
	}
	const zval* phpVariable = oReference.bKey ? nullptr : findDynamicValue(oReference);
	if (!phpVariable) {
		sOutput.appendPadded(sBefore);
		printAlternative(oBlock, sOutput);
	} else if (EXPECTED(Z_TYPE_P(phpVariable) == IS_STRING)) {
		sOutput.appendPadded(sBefore, byte_scan::upToNul(Z_STR_P(phpVariable)));
	} else {
		sOutput.appendPadded(sBefore);
		appendValue(sOutput, phpVariable);
	}
}

/// What finds nothing prints nothing here, not even the tag.
inline void Template::_getResultEscaped(const VariableBlock& oBlock, std::string_view sBefore, TextBuffer& sOutput) {
	const DynamicReference& oReference = oBlock.oReference;
	const zval* phpVariable = nullptr;
	const zend_string* sFound = nullptr;
	if (!oReference.bKey) {
		phpVariable = findDynamicValue(oReference);
		sFound = phpVariable && Z_TYPE_P(phpVariable) == IS_STRING ? Z_STR_P(phpVariable) : nullptr;
	} else if (oReference.oDynamicBlock) {
		sFound = oReference.oDynamicBlock->phpKey.sKey;
	}
	if (sFound && oBlock.getType() == Block::HTMLSPECIALCHARS && !byte_scan::containsHtmlSpecial(sFound)) {
		sOutput.appendPadded(sBefore, {ZSTR_VAL(sFound), ZSTR_LEN(sFound)});
		return;
	}
	sOutput.appendPadded(sBefore);
	if (sFound) {
		appendEscaped(sOutput, oBlock.getType(), sFound, EscapeTime::RENDER);
	} else if (phpVariable) {
		appendEscapedValue(sOutput, oBlock.getType(), phpVariable);
	} else if (oReference.bKey && oReference.oDynamicBlock) {
		// No escaping changes a digit or a minus sign.
		appendInteger(sOutput, static_cast<zend_long>(oReference.oDynamicBlock->phpKey.nIndex));
	}
}

/// Prints the first of the further alternatives that finds something, else the fallback text or the tag itself.
void Template::printAlternative(const MultiVariableBlock& oBlock, TextBuffer& sOutput) const {
	for (const Alternative* oTried = oBlock.listVariables.first(); oTried; oTried = oTried->oNext) {
		checkTimeLimit();
		switch (oTried->eKind) {
			case Alternative::DYNAMIC_VALUE:
				if (oTried->oReference.bKey && oTried->oReference.oDynamicBlock) {
					appendKey(sOutput, oTried->oReference.oDynamicBlock->phpKey);
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
	if (oBlock.bText) {
		sOutput.append(oBlock.sText);
	} else {
		echoTag(sOutput, oBlock.sVariables);
	}
}

inline void Template::_getResultOptional(const OptionalBlock& oBlock, TextBuffer& sOutput) {
	const DynamicReference& oReference = oBlock.oReference;
	if (!oReference.oDynamicBlock) {
		return;
	}
	bool bVisible = oReference.bKey ? oBlock.oValue.equalsKey(oReference.oDynamicBlock->phpKey)
									: checkIfOptionalIsVisible(findDynamicValue(oReference), oBlock.oValue);
	if (bVisible != (oBlock.getType() == Block::NOPTIONAL)) {
		_getResult(oBlock.listSubBlocks, sOutput);
	}
}

/// Finds the data of a block in the element of an enclosing block; null when there is none to walk.
const zval* Template::findDynamicData(const DynamicBlock& oBlock) const {
	const zval* phpVariable = findDynamicValue(oBlock.oReference);
	if (!phpVariable || Z_TYPE_P(phpVariable) != IS_ARRAY) {
		return nullptr;
	}
	const zval* phpNumVariable = zend_hash_str_find(Z_ARRVAL_P(phpVariable), ZEND_STRL("num"));
	return phpNumVariable ? phpNumVariable : phpVariable;
}

void Template::_getResultDynamic(DynamicBlock& oBlock, TextBuffer& sOutput) {
	const zval* phpData = oBlock.phpVariable ? oBlock.phpVariable : findDynamicData(oBlock);
	const HashTable* oTable = phpData ? call.beginLoop(oBlock, phpData) : nullptr;
	if (!oTable) {
		return;
	}
	bool bReverse = oBlock.getType() == Block::RDYNAMIC;
	oBlock.phpKey = {};
	bool bOutermost = !oBlock.oOuterLoop;
	size_t nStart = sOutput.size();
	for (uint32_t nStep = 0; nStep < oTable->nNumUsed; ++nStep) {
		uint32_t nSlot = bReverse ? oTable->nNumUsed - 1 - nStep : nStep;
		const zval* phpSlot;
		if (HT_IS_PACKED(oTable)) {
			phpSlot = oTable->arPacked + nSlot;
			oBlock.phpKey.nIndex = nSlot;
		} else {
			const Bucket& oBucket = oTable->arData[nSlot];
			phpSlot = &oBucket.val;
			oBlock.phpKey = {oBucket.key, oBucket.h,
							 oBucket.key ? byte_scan::upToNul(oBucket.key) : std::string_view()};
		}
		oBlock.phpValue = PHPInterface::slotValue(phpSlot);
		size_t nRowStart = sOutput.size();
		if (oBlock.phpValue) {
			_getResult(oBlock.listSubBlocks, sOutput);
		}
		// Rows are much alike: what the rest will take is known long before it comes. For a large page that is one move
		// of the output instead of ten, and no more memory than the result itself.
		if (bOutermost && UNEXPECTED(sOutput.room() < 4 * (sOutput.size() - nRowStart))) {
			size_t nRow = (sOutput.size() - nStart) / (nStep + 1) + 1;
			size_t nRest = nRow * (oTable->nNumUsed - nStep - 1);
			sOutput.expect(nRest + nRest / 32 + 4 * nRow);
		}
	}
	call.endLoop();
	throwIfPhpFailed();
}
