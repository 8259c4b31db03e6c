#include "template.h"

#include "php/memory.h"

#include <algorithm>

// What both passes use. What belongs to one of them stands in analysis/ and in rendering/.

Template::~Template() {
	input.close();
	if (char* pBuffer = input.fileBuffer()) {
		call.oFileBuffers.giveBack(pBuffer);
	}
}

const zval* Template::findVariable(const Index* oIndex, const zval* phpVarRoot) const {
	if (!oIndex) {
		return phpVarRoot;
	}
	for (;;) {
		const zval* phpFound =
			oIndex->sKey ? call.php.hashFind(*oIndex, phpVarRoot) : call.php.hashIndexFind(oIndex->nIndex, phpVarRoot);
		oIndex = oIndex->oNext;
		if (!oIndex || !phpFound) {
			return phpFound;
		}
		if (Z_TYPE_P(phpFound) != IS_ARRAY) {
			return nullptr;
		}
		phpVarRoot = phpFound;
	}
}

void Template::echoTag(TextBuffer& sOutput, std::string_view sArgument) {
	sOutput.append('{');
	sOutput.append(sArgument);
	sOutput.append('}');
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

void Template::failReference(ReferenceError eError, std::string_view sArgument) const {
	switch (eError) {
		case ReferenceError::TOO_MANY_COLONS:
			fail({"Bad formated parameter'", sArgument, "': too many :"});
		case ReferenceError::KEY_NOT_LAST:
			fail({"Bad formated parameter: [*] must be last"});
		case ReferenceError::TOO_MANY_STARS:
			fail({"Bad formated parameter'", sArgument, "': too many *"});
		case ReferenceError::TOO_MANY_STARS_LEFTMOST:
			fail({"Bad formated parameter: too many *"});
		case ReferenceError::TOO_MANY_NAMESPACES:
			fail({"Bad formated parameter'", sArgument, "': too many namespaces"});
		case ReferenceError::TOO_MANY_NAMESPACES_LEFTMOST:
		case ReferenceError::NO_ERROR:
			break;
	}
	fail({"Bad formated parameter: too many namespaces"});
}
