#include "php/time_limit.h"
#include "template.h"
#include "text/white_space.h"

#include <algorithm>

// The driver of analysis: literal text and tags, one after the other.

namespace {

// For a text of more bytes no room is made that memory_limit may not allow.
constexpr size_t LARGE_TEXT = 64 * 1024;

std::string_view trim(std::string_view sSource) {
	while (!sSource.empty() && isSpace(sSource.front())) {
		sSource.remove_prefix(1);
	}
	while (!sSource.empty() && isSpace(sSource.back())) {
		sSource.remove_suffix(1);
	}
	return sSource;
}

} // namespace

bool Template::open(bool string_mode) {
	if (string_mode) {
		input.openText(sFileName);
		// It is mostly literal.
		if (sFileName.size() > LARGE_TEXT) {
			call.sTexts.expect(sFileName.size(), true);
		} else {
			call.sTexts.reserve(sFileName.size());
		}
		return true;
	}
	return input.openFile(sFileName.data(), call.oFileBuffers.take());
}

void Template::analyzeTemplate() {
	_analyzeTemplate(listBlocks, Block::UNKNOWN);
	storeTextBlock(listBlocks);
}

/// Reads up to the closing tag, or to the end when none is expected. The text behind the last tag is left pending.
void Template::_analyzeTemplate(BlockList& subBlockList, Block::BLOCK_TYPE eClosingTag) {
	checkStack();
	while (input.good()) {
		checkTimeLimit();
		if (input.readLiteral(call.sTexts) && analyzeTag(subBlockList, eClosingTag)) {
			return;
		}
	}
	if (eClosingTag != Block::UNKNOWN) {
		fail({"Missing closing tag"});
	}
}

/// Reads and analyses one tag. Returns true when it is the closing tag `eClosingTag`.
bool Template::analyzeTag(BlockList& subBlockList, Block::BLOCK_TYPE eClosingTag) {
	std::string_view sArgument;
	Block::BLOCK_TYPE eType = matchInput(input.readTag(call.oAnalysis.sTag), sArgument);
	const Keyword& oKeyword = KEYWORDS_BY_TYPE[eType];
	switch (oKeyword.eFamily) {
		case BlockFamily::VARIABLE:
			analyzeVariableBlock(subBlockList, sArgument);
			break;
		case BlockFamily::ESCAPING:
			analyzeEscapingBlock(subBlockList, sArgument, eType);
			break;
		case BlockFamily::INCLUDE:
			analyzeIncludeBlock(subBlockList, sArgument);
			break;
		case BlockFamily::OPTIONAL:
			analyzeOptionalBlock(subBlockList, sArgument, eType);
			break;
		case BlockFamily::DYNAMIC:
			analyzeDynamicBlock(subBlockList, sArgument, eType);
			break;
		case BlockFamily::CLOSING:
			if (eClosingTag != eType) {
				fail({"Unexpected closing ", oKeyword.sText.substr(1), " tag"});
			}
			return true;
		case BlockFamily::TEXT:
			break; // no tag
	}
	return false;
}

/// Tells the kind of a tag. `sArgument` receives its argument, a part of `sBuffer`.
Block::BLOCK_TYPE Template::matchInput(std::string_view sBuffer, std::string_view& sArgument) {
	const Keyword* oKeyword = findKeyword(sBuffer);
	sArgument = trim(oKeyword ? sBuffer.substr(oKeyword->sText.size()) : sBuffer);
	return oKeyword ? oKeyword->eType : Block::VARIABLE;
}

/// Appends a block; the pending text stands in front of it.
void Template::storeBlock(BlockList& subBlockList, Block* oBlock) {
	oBlock->oText = {call.oAnalysis.nPendingText, call.sTexts.size() - call.oAnalysis.nPendingText};
	call.oAnalysis.nPendingText = call.sTexts.size();
	Block* oLast = subBlockList.last();
	subBlockList.append(oBlock);
	// What follows an optional section follows its body as well.
	while (oLast && oLast->getFamily() == BlockFamily::OPTIONAL &&
		   (oLast = static_cast<OptionalBlock*>(oLast)->listSubBlocks.last())) {
		oLast->oNext = oBlock;
	}
}

/// Ends a body: makes the text that is still pending part of it.
void Template::storeTextBlock(BlockList& subBlockList) {
	if (call.oAnalysis.nPendingText < call.sTexts.size()) {
		storeBlock(subBlockList, call.oArena.make<TextBlock>());
	}
}

/// Analyses a body that is never rendered: its errors count, but nothing of it stays.
void Template::analyzeHiddenBody(Block::BLOCK_TYPE eClosingTag) {
	size_t nText = call.sTexts.size();
	size_t nPendingText = call.oAnalysis.nPendingText;
	Arena::Position oBefore = call.oArena.position();
	BlockList listHidden;
	_analyzeTemplate(listHidden, eClosingTag);
	call.oArena.rewind(oBefore);
	call.sTexts.truncate(nText);
	call.oAnalysis.nPendingText = nPendingText;
}
