#include "template.h"

#include "byte_scan.h"
#include "error.h"
#include "escape.h"
#include "number_text.h"
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

void appendEscapedKey(TextBuffer& sOutput, Block::BLOCK_TYPE eType, const ElementKey& oKey) {
	if (oKey.sKey) {
		appendEscaped(sOutput, eType, oKey.sKey, EscapeTime::RENDER);
	} else {
		// No escaping changes a digit or a minus sign.
		appendKey(sOutput, oKey);
	}
}

void appendEscapedValue(TextBuffer& sOutput, Block::BLOCK_TYPE eType, const zval* phpVariable) {
	switch (Z_TYPE_P(phpVariable)) {
		case IS_STRING:
			appendEscaped(sOutput, eType, Z_STR_P(phpVariable), EscapeTime::RENDER);
			return;
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
	call.sTexts.reserve(TextBuffer::PADDING);
	_getResult(listBlocks, call.sOutput);
	return call.sOutput.take();
}

void Template::_getResult(const BlockList& subBlockList, TextBuffer& sOutput) {
	checkLimits();
	const char* pTexts = call.sTexts.data();
	for (Block* oBlock = subBlockList.first(); oBlock; oBlock = oBlock->oNext) {
		sOutput.appendPadded(pTexts + oBlock->oText.nStart, oBlock->oText.nLength);
		switch (oBlock->getType()) {
			case Block::VARIABLE:
				_getResultVariable(static_cast<const MultiVariableBlock&>(*oBlock), sOutput);
				break;
			case Block::ADDSLASHES:
			case Block::HTMLENTITIES:
			case Block::HTMLSPECIALCHARS:
			case Block::RAWURLENCODE:
				_getResultEscaped(static_cast<const VariableBlock&>(*oBlock), sOutput);
				break;
			case Block::_OPTIONAL:
			case Block::NOPTIONAL:
				_getResultOptional(static_cast<const OptionalBlock&>(*oBlock), sOutput);
				break;
			case Block::DYNAMIC:
			case Block::RDYNAMIC:
				_getResultDynamic(static_cast<DynamicBlock&>(*oBlock), sOutput);
				break;
			case Block::UNKNOWN:
			case Block::TEXT:
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

/// Prints what a reference finds in a dynamic block. Returns false when it finds nothing.
inline bool Template::printDynamic(const DynamicReference& oReference, TextBuffer& sOutput) const {
	if (oReference.bKey) {
		if (oReference.oDynamicBlock) {
			appendKey(sOutput, oReference.oDynamicBlock->phpKey);
		}
		return oReference.oDynamicBlock;
	}
	const zval* phpVariable = findDynamicValue(oReference);
	if (phpVariable) {
		appendValue(sOutput, phpVariable);
	}
	return phpVariable;
}

inline void Template::_getResultVariable(const MultiVariableBlock& oBlock, TextBuffer& sOutput) {
	if (!printDynamic(oBlock.oReference, sOutput)) {
		printAlternative(oBlock, sOutput);
	}
}

/// Prints the first of the further alternatives that finds something, else the fallback text or the tag itself.
void Template::printAlternative(const MultiVariableBlock& oBlock, TextBuffer& sOutput) const {
	for (const Alternative* oTried = oBlock.listVariables.first(); oTried; oTried = oTried->oNext) {
		switch (oTried->eKind) {
			case Alternative::DYNAMIC_VALUE:
				if (printDynamic(oTried->oReference, sOutput)) {
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

/// What finds nothing prints nothing here, not even the tag.
inline void Template::_getResultEscaped(const VariableBlock& oBlock, TextBuffer& sOutput) {
	const DynamicReference& oReference = oBlock.oReference;
	if (oReference.bKey) {
		if (oReference.oDynamicBlock) {
			appendEscapedKey(sOutput, oBlock.getType(), oReference.oDynamicBlock->phpKey);
		}
	} else if (const zval* phpVariable = findDynamicValue(oReference)) {
		appendEscapedValue(sOutput, oBlock.getType(), phpVariable);
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
	}
	call.endLoop();
	throwIfExceptionIsPending();
}
