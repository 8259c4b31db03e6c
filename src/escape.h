#pragma once

#include "block.h"
#include "text_buffer.h"

/// Where an escaping happens; the HTML ones take the text to be in another character set each time.
enum class EscapeTime {
	ANALYSIS, ///< PHP's default_charset
	RENDER,   ///< ISO-8859-1
};

/// Appends `sText` escaped by an escaping tag of kind `eType`, up to the first zero byte of the escaped text.
/// May raise PHP's own warnings; throws when user code that handles them threw.
void appendEscaped(TextBuffer& sOutput, Block::BLOCK_TYPE eType, std::string_view sText, EscapeTime eTime);
