#include "call.h"

#include "php/failure.h"
#include "tree/block.h"

HashTable* Call::beginLoop(DynamicBlock& oBlock, const zval* phpData) {
	HashTable* oTable = PHPInterface::acquireTable(phpData);
	if (oTable) {
		oBlock.oLoop.phpTable = oTable;
		oBlock.oLoop.oOuterLoop = oRendering.oInnermostLoop;
		oRendering.oInnermostLoop = &oBlock;
	}
	throwIfPhpFailed();
	return oTable;
}

void Call::endLoop() {
	LoopState& oLoop = oRendering.oInnermostLoop->oLoop;
	oRendering.oInnermostLoop = oLoop.oOuterLoop;
	zend_array_release(oLoop.phpTable);
}

void Call::release() {
	while (oRendering.oInnermostLoop) {
		endLoop();
	}
	php.release();
	oRendering.sOutput.release();
	oAnalysis.oIncludes.release();
	oAnalysis.oScopes.release();
	oAnalysis.sTag.release();
	sTexts.release();
	oFileBuffers.release();
	oArena.release();
}
