#include "text/arena.h"

#include "php/memory.h"
#include "text/copy_text.h"

#include <algorithm>

struct Arena::Chunk {
	Chunk* oBelow;
	size_t nSize;
};

namespace {

constexpr size_t SMALLEST_CHUNK = 8 * 1024;
constexpr size_t LARGEST_CHUNK = 256 * 1024;

} // namespace

void* Arena::allocateInNewChunk(size_t nSize) {
	size_t nChunk = oChunks ? std::min(oChunks->nSize * 2, LARGEST_CHUNK) : SMALLEST_CHUNK;
	nChunk = std::max(nChunk, nSize + sizeof(Chunk));
	auto* oChunk = static_cast<Chunk*>(requestMemory(nChunk));
	oChunk->oBelow = oChunks;
	oChunk->nSize = nChunk;
	oChunks = oChunk;
	char* pResult = reinterpret_cast<char*>(oChunk + 1);
	pFree = pResult + nSize;
	pEnd = reinterpret_cast<char*>(oChunk) + nChunk;
	return pResult;
}

void Arena::freeChunksAbove(Chunk* oKept) {
	while (oChunks != oKept) {
		Chunk* oBelow = oChunks->oBelow;
		releaseMemory(oChunks);
		oChunks = oBelow;
	}
}

void Arena::release() {
	freeChunksAbove(nullptr);
	pFree = aFirst;
	pEnd = aFirst + sizeof(aFirst);
}

std::string_view Arena::copy(std::string_view sText) {
	char* pCopy = static_cast<char*>(allocate(sText.size() + 1));
	copyText(pCopy, sText.data(), sText.size());
	pCopy[sText.size()] = '\0';
	return {pCopy, sText.size()};
}

zend_string* Arena::makeKey(std::string_view sText) {
	zend_string* sKey = initKey(allocate(stringSize(sText.size())), sText.size());
	copyText(ZSTR_VAL(sKey), sText.data(), sText.size());
	finishKey(sKey);
	return sKey;
}
