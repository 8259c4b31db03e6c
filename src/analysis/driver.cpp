#include "php/memory.h"
#include "php/time_limit.h"
#include "template.h"
#include "text/white_space.h"

#include <algorithm>
#include <cstring>

namespace {

// A text in string mode is mostly literal; this much room is made for it at once.
constexpr size_t LONGEST_RESERVED_TEXT = 64 * 1024;

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

Template::~Template() {
	input.close();
	if (char* pBuffer = input.fileBuffer()) {
		call.giveFileBuffer(pBuffer);
	}
}

bool Template::open(bool string_mode) {
	if (string_mode) {
		input.openText(sFileName);
		call.sTexts.reserve(std::min(sFileName.size(), LONGEST_RESERVED_TEXT));
		return true;
	}
	return input.openFile(sFileName.data(), call.takeFileBuffer());
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
		if (input.fillBufferTillMark(call.sTexts, '{') && analyzeTag(subBlockList, eClosingTag)) {
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
	Block::BLOCK_TYPE eType = matchInput(input.readTag(call.sTag), sArgument);
	switch (eType) {
		case Block::VARIABLE:
			analyzeVariableBlock(subBlockList, sArgument);
			break;
		case Block::ADDSLASHES:
		case Block::HTMLENTITIES:
		case Block::HTMLSPECIALCHARS:
		case Block::RAWURLENCODE:
			analyzeEscapingBlock(subBlockList, sArgument, eType);
			break;
		case Block::INCLUDE:
			analyzeIncludeBlock(subBlockList, sArgument);
			break;
		case Block::_OPTIONAL:
		case Block::NOPTIONAL:
			analyzeOptionalBlock(subBlockList, sArgument, eType == Block::NOPTIONAL);
			break;
		case Block::DYNAMIC:
		case Block::RDYNAMIC:
			analyzeDynamicBlock(subBlockList, sArgument, eType == Block::RDYNAMIC);
			break;
		case Block::OPTIONAL_CLOSE:
			if (eClosingTag != eType) {
				fail({"Unexpected closing optional tag"});
			}
			return true;
		case Block::DYNAMIC_CLOSE:
			if (eClosingTag != eType) {
				fail({"Unexpected closing dynamic tag"});
			}
			return true;
		case Block::RDYNAMIC_CLOSE:
			if (eClosingTag != eType) {
				fail({"Unexpected closing rdynamic tag"});
			}
			return true;
		case Block::UNKNOWN:
		case Block::TEXT:
			break;
	}
	return false;
}

/// Tells the kind of a tag. `sArgument` receives its argument, a part of `sBuffer`.
Block::BLOCK_TYPE Template::matchInput(std::string_view sBuffer, std::string_view& sArgument) {
	// A keyword is a mere prefix: nothing has to separate it from the argument. Its first character sorts out most tags.
	auto begins = [&]<size_t nSize>(const char(&sKeyword)[nSize]) {
		constexpr size_t nLength = nSize - 1;
		if (sBuffer.size() < nLength || memcmp(sBuffer.data(), sKeyword, nLength) != 0) {
			return false;
		}
		sArgument = trim(sBuffer.substr(nLength));
		return true;
	};
	switch (sBuffer.empty() ? '\0' : sBuffer.front()) {
		case 'h':
			if (begins("htmlspecialchars")) {
				return Block::HTMLSPECIALCHARS;
			}
			if (begins("htmlentities")) {
				return Block::HTMLENTITIES;
			}
			break;
		case 'i':
			if (begins("include")) {
				return Block::INCLUDE;
			}
			break;
		case 'o':
			if (begins("optional")) {
				return Block::_OPTIONAL;
			}
			break;
		case '!':
			if (begins("!optional")) {
				return Block::NOPTIONAL;
			}
			break;
		case '/':
			if (begins("/optional")) {
				return Block::OPTIONAL_CLOSE;
			}
			if (begins("/dynamic")) {
				return Block::DYNAMIC_CLOSE;
			}
			if (begins("/rdynamic")) {
				return Block::RDYNAMIC_CLOSE;
			}
			break;
		case 'd':
			if (begins("dynamic")) {
				return Block::DYNAMIC;
			}
			break;
		case 'r':
			if (begins("rdynamic")) {
				return Block::RDYNAMIC;
			}
			if (begins("rawurlencode")) {
				return Block::RAWURLENCODE;
			}
			break;
		case 'a':
			if (begins("addslashes")) {
				return Block::ADDSLASHES;
			}
			break;
		default:
			break;
	}
	sArgument = trim(sBuffer);
	return Block::VARIABLE;
}

/// Appends a block; the pending text stands in front of it.
void Template::storeBlock(BlockList& subBlockList, Block* oBlock) {
	oBlock->oText = {call.nPendingText, call.sTexts.size() - call.nPendingText};
	call.nPendingText = call.sTexts.size();
	Block* oLast = subBlockList.last();
	subBlockList.append(oBlock);
	// What follows an optional section follows its body as well.
	while (oLast && oLast->isOptional() && (oLast = static_cast<OptionalBlock*>(oLast)->listSubBlocks.last())) {
		oLast->oNext = oBlock;
	}
}

/// Ends a body: makes the text that is still pending part of it.
void Template::storeTextBlock(BlockList& subBlockList) {
	if (call.nPendingText < call.sTexts.size()) {
		storeBlock(subBlockList, call.oArena.make<TextBlock>());
	}
}

/// Analyses a body that is never rendered: its errors count, but nothing of it stays.
void Template::analyzeHiddenBody(Block::BLOCK_TYPE eClosingTag) {
	size_t nText = call.sTexts.size();
	size_t nPendingText = call.nPendingText;
	Arena::Mark oMark = call.oArena.mark();
	BlockList listHidden;
	_analyzeTemplate(listHidden, eClosingTag);
	call.oArena.rewind(oMark);
	call.sTexts.truncate(nText);
	call.nPendingText = nPendingText;
}

void Template::throwMessage(std::initializer_list<std::string_view> listParts, std::string_view sBeforeName) const {
	size_t nLength = sBeforeName.size() + sFileName.size();
	for (std::string_view sPart : listParts) {
		nLength += sPart.size();
	}
	zend_string* sMessage = requestString(nLength);
	char* p = ZSTR_VAL(sMessage);
	for (std::string_view sPart : listParts) {
		p = std::copy(sPart.begin(), sPart.end(), p);
	}
	p = std::copy(sBeforeName.begin(), sBeforeName.end(), p);
	p = std::copy(sFileName.begin(), sFileName.end(), p);
	*p = '\0';
	throw TemplateError(sMessage);
}

void Template::fail(std::initializer_list<std::string_view> listParts) const {
	throwMessage(listParts, " in ");
}

void Template::failToOpen() const {
	throwMessage({}, "Could not open file ");
}
