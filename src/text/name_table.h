#pragma once

#include "php/memory.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

/// What a NameTable needs of its items.
template <typename Item>
struct NamedItem {
	std::string_view sName;
	size_t nHash = 0;
	Item* oNextInBucket = nullptr;

	/// The name has to outlive the item.
	void setName(std::string_view _sName) {
		sName = _sName;
		nHash = hashOf(sName);
	}
};

/// Finds the items that are open at the moment by their names. It owns no item, only its buckets.
///
/// A table and not a walk over the items: how many are open is the template author's choice.
template <typename Item>
class NameTable {
public:
	NameTable() {}
	NameTable(const NameTable&) = delete;
	NameTable& operator=(const NameTable&) = delete;

	/// The item of that name, or null.
	Item* find(std::string_view sName) const {
		if (!nItems) {
			return nullptr;
		}
		size_t nHash = hashOf(sName);
		Item* oItem = aBuckets[nHash & nMask];
		while (oItem && (oItem->nHash != nHash || oItem->sName != sName)) {
			oItem = oItem->oNextInBucket;
		}
		return oItem;
	}

	/// Puts in an item that has a name, of which there is none yet.
	void insert(Item* oItem) {
		if (!aBuckets) {
			std::fill_n(aFirstBuckets, FEW, nullptr);
			aBuckets = aFirstBuckets;
		} else if (nItems > 2 * nMask) {
			grow();
		}
		link(aBuckets, nMask, oItem);
		++nItems;
	}

	/// Takes an item out that is in.
	void remove(Item* oItem) {
		Item** pLink = &aBuckets[oItem->nHash & nMask];
		while (*pLink != oItem) {
			pLink = &(*pLink)->oNextInBucket;
		}
		*pLink = oItem->oNextInBucket;
		--nItems;
	}

	/// Frees the buckets. The table is of no use any more.
	void release() {
		if (aBuckets && aBuckets != aFirstBuckets) {
			releaseMemory(aBuckets);
			aBuckets = nullptr;
		}
	}

private:
	static constexpr size_t FEW = 8;

	static void link(Item** aTo, size_t nToMask, Item* oItem) {
		Item*& oFirst = aTo[oItem->nHash & nToMask];
		oItem->oNextInBucket = oFirst;
		oFirst = oItem;
	}

	void grow() {
		size_t nMore = 8 * (nMask + 1);
		auto** aMore = static_cast<Item**>(requestMemory(nMore * sizeof(Item*)));
		std::fill_n(aMore, nMore, nullptr);
		for (size_t i = 0; i <= nMask; ++i) {
			for (Item* oItem = aBuckets[i]; oItem;) {
				Item* oNext = oItem->oNextInBucket;
				link(aMore, nMore - 1, oItem);
				oItem = oNext;
			}
		}
		release();
		aBuckets = aMore;
		nMask = nMore - 1;
	}

	// Most templates have no name at all: nothing is written here before the first one.
	Item* aFirstBuckets[FEW];
	Item** aBuckets = nullptr;
	size_t nMask = FEW - 1;
	size_t nItems = 0;
};
