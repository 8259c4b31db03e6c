#pragma once

#include "php/memory.h"

#include <cstddef>

/// The buffers through which the files of one call are read. Each open file has one.
class FileBuffers {
public:
	/// The size of a buffer in bytes.
	static constexpr size_t BUFFER_SIZE = 4096;

	FileBuffers() {}
	FileBuffers(const FileBuffers&) = delete;
	FileBuffers& operator=(const FileBuffers&) = delete;

	char* take() {
		if (Buffer* oBuffer = oFree) {
			oFree = oBuffer->oNext;
			return oBuffer->aBytes;
		}
		if (!bFirstTaken) {
			bFirstTaken = true;
			return oFirst.aBytes;
		}
		return static_cast<Buffer*>(requestMemory(sizeof(Buffer)))->aBytes;
	}

	void giveBack(char* pBuffer) {
		auto* oBuffer = reinterpret_cast<Buffer*>(pBuffer);
		oBuffer->oNext = oFree;
		oFree = oBuffer;
	}

	/// Frees the buffers that were given back; after a fatal error PHP frees the others.
	void release() {
		while (Buffer* oBuffer = oFree) {
			oFree = oBuffer->oNext;
			if (oBuffer != &oFirst) {
				releaseMemory(oBuffer);
			}
		}
	}

private:
	union Buffer {
		char aBytes[BUFFER_SIZE];
		Buffer* oNext;
	};

	Buffer* oFree = nullptr;
	bool bFirstTaken = false;
	// Most pages are one file, or open one at a time beside their own.
	Buffer oFirst;
};
