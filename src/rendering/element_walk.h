#pragma once

#include "data/php_interface.h"
#include "text/byte_scan.h"
#include "tree/block.h"

/// Takes a dynamic block from one element of its data to the next.
class ElementWalk {
public:
	/// `_oTable` must not change during the walk.
	ElementWalk(DynamicBlock& _oBlock, const HashTable* _oTable)
		: oBlock(_oBlock), oTable(_oTable), nStep(0), bReverse(_oBlock.getType() == Block::RDYNAMIC) {
		oBlock.phpKey = {};
	}

	/// Sets the block's key and value; false when no element is left.
	bool next() {
		while (nStep < oTable->nNumUsed) {
			uint32_t nSlot = bReverse ? oTable->nNumUsed - 1 - nStep : nStep;
			++nStep;
			const zval* phpSlot;
			if (HT_IS_PACKED(oTable)) {
				phpSlot = oTable->arPacked + nSlot;
				oBlock.phpKey.nIndex = nSlot;
			} else {
				prefetchAfter(nSlot);
				const Bucket& oBucket = oTable->arData[nSlot];
				phpSlot = &oBucket.val;
				oBlock.phpKey = {oBucket.key, oBucket.h,
								 oBucket.key ? byte_scan::upToNul(oBucket.key) : std::string_view()};
			}
			oBlock.phpValue = PHPInterface::slotValue(phpSlot);
			if (EXPECTED(oBlock.phpValue)) {
				return true;
			}
		}
		return false;
	}

	bool isOutermost() const { return !oBlock.oOuterLoop; }

	/// How many elements were walked, and how many are left at most.
	size_t walked() const { return nStep; }
	size_t left() const { return oTable->nNumUsed - nStep; }

private:
	/// Asks for the memory of the next elements: that of small rows under string keys, as a loop in a loop walks them, lies
	/// so scattered that waiting for it is 2 to 3 % of a page.
	[[gnu::always_inline]] void prefetchAfter(uint32_t nSlot) const {
		if (oTable->nNumUsed - nSlot < 3 || bReverse) {
			return;
		}
		const Bucket& oNext = oTable->arData[nSlot + 1];
		const Bucket& oNextButOne = oTable->arData[nSlot + 2];
		if (Z_TYPE(oNextButOne.val) == IS_ARRAY) {
			__builtin_prefetch(Z_ARRVAL(oNextButOne.val));
		}
		if (Z_TYPE(oNext.val) == IS_ARRAY) {
			const auto* pElements = reinterpret_cast<const char*>(Z_ARRVAL(oNext.val)->arData);
			__builtin_prefetch(pElements);
			__builtin_prefetch(pElements + 64);
			__builtin_prefetch(oNext.key);
		}
	}

	DynamicBlock& oBlock;
	const HashTable* oTable;
	uint32_t nStep;
	bool bReverse;
};
