#pragma once

#include "php/headers.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

/// Memory of one call. Everything that lives as long as the block tree is cut from it and freed in one step.
///
/// The memory is PHP's request memory: memory_limit counts it, and a fatal error that jumps out of the call leaves
/// nothing behind that the interpreter would not free. No destructor is ever run, so only types without one fit.
class Arena {
	struct Chunk;

public:
	/// A point to which `rewind` can go back.
	struct Position {
		Chunk* oChunk;
		char* pFree;
		char* pEnd;
	};

	Arena() : oChunks(nullptr), pFree(aFirst), pEnd(aFirst + sizeof(aFirst)) {}
	Arena(const Arena&) = delete;
	Arena& operator=(const Arena&) = delete;

	/// Returns `nSize` bytes, aligned for any type that asks for no more than 8 bytes, as all that is kept here does.
	void* allocate(size_t nSize) {
		nSize = (nSize + (ALIGNMENT - 1)) & ~(ALIGNMENT - 1);
		if (nSize > static_cast<size_t>(pEnd - pFree)) {
			return allocateInNewChunk(nSize);
		}
		void* pResult = pFree;
		pFree += nSize;
		return pResult;
	}

	/// Constructs a `T` that lives until the arena is released or rewound.
	template <typename T, typename... Args>
	T* make(Args&&... args) {
		static_assert(std::is_trivially_destructible_v<T>, "the arena runs no destructors");
		static_assert(alignof(T) <= ALIGNMENT);
		return new (allocate(sizeof(T))) T(std::forward<Args>(args)...);
	}

	/// Copies a text; a zero byte follows the copy.
	std::string_view copy(std::string_view sText);

	/// Makes a PHP string with its hash computed, to look keys up with. Never hand it to PHP for keeping.
	zend_string* makeKey(std::string_view sText);

	Position position() const { return {oChunks, pFree, pEnd}; }

	/// Gives back all that was cut since `oPosition` was taken.
	void rewind(const Position& oPosition) {
		if (oPosition.oChunk != oChunks) {
			freeChunksAbove(oPosition.oChunk);
		}
		pFree = oPosition.pFree;
		pEnd = oPosition.pEnd;
	}

	/// Frees everything. Safe to call more than once.
	void release();

private:
	static constexpr size_t ALIGNMENT = 8;

	void* allocateInNewChunk(size_t nSize);
	void freeChunksAbove(Chunk* oKept);

	Chunk* oChunks;
	char* pFree;
	char* pEnd;
	// Small templates live here and never ask the allocator.
	alignas(ALIGNMENT) char aFirst[2048];
};
