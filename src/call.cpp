#include "call.h"

#include "php/memory.h"

HashTable* Call::beginLoop(DynamicBlock& oBlock, const zval* phpData) {
	HashTable* oTable = PHPInterface::acquireTable(phpData);
	if (oTable) {
		oBlock.phpTable = oTable;
		oBlock.oOuterLoop = oInnermostLoop;
		oInnermostLoop = &oBlock;
	}
	throwIfPhpFailed();
	return oTable;
}

void Call::endLoop() {
	DynamicBlock* oBlock = oInnermostLoop;
	oInnermostLoop = oBlock->oOuterLoop;
	zend_array_release(oBlock->phpTable);
}

char* Call::takeFileBuffer() {
	if (FileBuffer* oBuffer = oFreeFileBuffers) {
		oFreeFileBuffers = oBuffer->oNext;
		return oBuffer->aBytes;
	}
	if (!bFirstFileBufferTaken) {
		bFirstFileBufferTaken = true;
		return oFirstFileBuffer.aBytes;
	}
	return static_cast<FileBuffer*>(requestMemory(sizeof(FileBuffer)))->aBytes;
}

void Call::giveFileBuffer(char* pBuffer) {
	auto* oBuffer = reinterpret_cast<FileBuffer*>(pBuffer);
	oBuffer->oNext = oFreeFileBuffers;
	oFreeFileBuffers = oBuffer;
}

void Call::release() {
	while (oInnermostLoop) {
		endLoop();
	}
	oNames.release();
	sTexts.release();
	sTag.release();
	sOutput.release();
	while (FileBuffer* oBuffer = oFreeFileBuffers) {
		oFreeFileBuffers = oBuffer->oNext;
		if (oBuffer != &oFirstFileBuffer) {
			efree(oBuffer);
		}
	}
	oArena.release();
}
