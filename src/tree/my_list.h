#pragma once

/// A list of arena objects in the order in which they were appended, linked through their field `oNext`.
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
