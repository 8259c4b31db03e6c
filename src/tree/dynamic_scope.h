#pragma once

#include "text/name_table.h"

class DynamicBlock;
class Template;

/// The body of a dynamic block while it is analysed. A name means the outermost open block that bears it.
struct DynamicScope : NamedItem<DynamicScope> {
	DynamicBlock* oBlock;
	const Template* oTemplate;  ///< the template that opened the block
	const DynamicScope* oOuter; ///< the next enclosing body, over all files of the include chain
	const DynamicScope* oOutermostNamesake;

	/// `oNamesake` is the next enclosing body of the same name, or null.
	DynamicScope(DynamicBlock* _oBlock, const Template* _oTemplate, const DynamicScope* _oOuter,
				 const DynamicScope* oNamesake)
		: oBlock(_oBlock),
		  oTemplate(_oTemplate),
		  oOuter(_oOuter),
		  oOutermostNamesake(oNamesake ? oNamesake->oOutermostNamesake : this) {}
	DynamicScope(const DynamicScope&) = delete;
	DynamicScope& operator=(const DynamicScope&) = delete;
};
