#include "template.h"

#include "byte_scan.h"
#include "error.h"
#include "escape.h"
#include "number_text.h"
#include "time_limit.h"
#include "value_text.h"

// Rendering: the walk over the block tree, once per element inside dynamic blocks. All of it stands in one file so that
// the compiler joins the small steps: a value costs a few nanoseconds, as much as two calls.

namespace {

void appendKey(TextBuffer& sOutput, const ElementKey& oKey) {
	if (oKey.sKey) {
		sOutput.append(byte_scan::upToNul(oKey.sKey));
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
	{
		ValueText oText(phpVariable);
		if (!EG(exception)) {
			appendEscaped(sOutput, eType, oText.string(), EscapeTime::RENDER);
		}
	}
	throwIfExceptionIsPending();
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
	const Index* oIndex = oReference.listIndexes;
	if (EXPECTED(oIndex && oIndex->sKey && !oIndex->oNext)) {
		return call.php.hashFind(*oIndex, oBlock->phpValue);
	}
	return findVariable(oIndex, oBlock->phpValue);
}

/// The string that a reference finds as a key or as a value; null when it is none, or nothing is found.
/// `phpVariable` receives the value.
inline const zend_string* Template::findString(const DynamicReference& oReference, const zval*& phpVariable) const {
	if (oReference.bKey) {
		return oReference.oDynamicBlock ? oReference.oDynamicBlock->phpKey.sKey : nullptr;
	}
	phpVariable = findDynamicValue(oReference);
	return phpVariable && Z_TYPE_P(phpVariable) == IS_STRING ? Z_STR_P(phpVariable) : nullptr;
}

// Strings are what nearly every tag prints. They are appended together with the text in front of the tag.

inline void Template::_getResultVariable(const MultiVariableBlock& oBlock, std::string_view sBefore,
										 TextBuffer& sOutput) {
	const DynamicReference& oReference = oBlock.oReference;
	const zval* phpVariable = nullptr;
	if (const zend_string* sFound = findString(oReference, phpVariable)) {
		sOutput.appendPadded(sBefore, byte_scan::upToNul(sFound));
		return;
	}
	sOutput.appendPadded(sBefore);
	if (phpVariable) {
		appendValue(sOutput, phpVariable);
	} else if (oReference.bKey && oReference.oDynamicBlock) {
		appendInteger(sOutput, static_cast<zend_long>(oReference.oDynamicBlock->phpKey.nIndex));
	} else {
		printAlternative(oBlock, sOutput);
	}
}

/// What finds nothing prints nothing here, not even the tag.
inline void Template::_getResultEscaped(const VariableBlock& oBlock, std::string_view sBefore, TextBuffer& sOutput) {
	const DynamicReference& oReference = oBlock.oReference;
	const zval* phpVariable = nullptr;
	if (const zend_string* sFound = findString(oReference, phpVariable)) {
		if (oBlock.getType() == Block::HTMLSPECIALCHARS && !byte_scan::containsHtmlSpecial(sFound)) {
			sOutput.appendPadded(sBefore, {ZSTR_VAL(sFound), ZSTR_LEN(sFound)});
			return;
		}
		sOutput.appendPadded(sBefore);
		appendEscaped(sOutput, oBlock.getType(), sFound, EscapeTime::RENDER);
		return;
	}
	sOutput.appendPadded(sBefore);
	if (phpVariable) {
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
	bool bOutermost = !oBlock.oOuterLoop;
	size_t nStart = sOutput.size();
	for (uint32_t nStep = 0; nStep < oTable->nNumUsed; ++nStep) {
		uint32_t nSlot = bReverse ? oTable->nNumUsed - 1 - nStep : nStep;
		const zval* phpSlot;
		if (HT_IS_PACKED(oTable)) {
			phpSlot = oTable->arPacked + nSlot;
			oBlock.phpKey = {nullptr, nSlot};
		} else {
			const Bucket& oBucket = oTable->arData[nSlot];
			phpSlot = &oBucket.val;
			oBlock.phpKey = {oBucket.key, oBucket.h};
		}
		oBlock.phpValue = PHPInterface::slotValue(phpSlot);
		if (oBlock.phpValue) {
			_getResult(oBlock.listSubBlocks, sOutput);
		}
		// Rows are much alike: what the rest will take is known long before it comes. For a large page that is one move
		// of the output instead of ten, and no more memory than the result itself.
		if (bOutermost && sOutput.room() < sOutput.size() - nStart) {
			size_t nRow = (sOutput.size() - nStart) / (nStep + 1) + 1;
			size_t nRest = nRow * (oTable->nNumUsed - nStep - 1);
			if (sOutput.room() < nRest && sOutput.room() < 4 * nRow) {
				sOutput.expect(nRest + nRest / 32 + 4 * nRow);
			}
		}
	}
	call.endLoop();
	throwIfExceptionIsPending();
}
