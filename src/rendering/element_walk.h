#pragma once

#include "php/table.h"
#include "text/byte_scan.h"
#include "tree/block.h"

/// Takes a dynamic block from one element of its data to the next.
class ElementWalk {
public:
	/// `_oTable` must not change during the walk.
	ElementWalk(DynamicBlock& _oBlock, const HashTable* _oTable)
		: oBlock(_oBlock), oTable(_oTable), nStep(0), bReverse(_oBlock.getType() == Block::RDYNAMIC) {
		oBlock.oLoop.phpKey = {};
	}

	/// Sets the block's key and value; false when no element is left.
	bool next() {
		LoopState& oLoop = oBlock.oLoop;
		uint32_t nSlots = numberOfSlots(oTable);
		while (nStep < nSlots) {
			uint32_t nSlot = bReverse ? nSlots - 1 - nStep : nStep;
			++nStep;
			if (isPacked(oTable)) {
				oLoop.phpValue = packedValueAt(oTable, nSlot);
				oLoop.phpKey.nIndex = nSlot;
			} else {
				TableElement oElement = keyedElementAt(oTable, nSlot);
				oLoop.phpValue = oElement.phpValue;
				oLoop.phpKey = {oElement.sKey, oElement.nIndex,
								oElement.sKey ? byte_scan::upToNul(oElement.sKey) : std::string_view()};
			}
			if (EXPECTED(oLoop.phpValue)) {
				oLoop.oColumns = columnsOf(oLoop.phpValue);
				return true;
			}
		}
		return false;
	}

	bool isOutermost() const { return !oBlock.oLoop.oOuterLoop; }

	/// How many elements were walked, and how many are left at most.
	size_t walked() const { return nStep; }
	size_t left() const { return numberOfSlots(oTable) - nStep; }

private:
	DynamicBlock& oBlock;
	const HashTable* oTable;
	uint32_t nStep;
	bool bReverse;
};
