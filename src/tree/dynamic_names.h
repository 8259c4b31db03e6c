#pragma once

#include "tree/block.h"

/// The names of the dynamic blocks inside which the analysis stands, over all files of the include chain.
class DynamicNames {
public:
	/// The innermost open block of that name, or null.
	DynamicBlock* find(std::string_view sName) const {
		return table ? static_cast<DynamicBlock*>(zend_hash_str_find_ptr(table, sName.data(), sName.size())) : nullptr;
	}

	/// Enters the body of a named block.
	void open(zend_string* sName, DynamicBlock* oBlock) {
		if (!table) {
			table = zend_new_array(0);
		}
		if (auto* oOuter = static_cast<DynamicBlock*>(zend_hash_find_ptr(table, sName))) {
			oBlock->oOuterNamesake = oOuter;
			oBlock->oOutermostNamesake = oOuter->oOutermostNamesake;
		}
		zend_hash_update_ptr(table, sName, oBlock);
	}

	/// Leaves the body of a named block.
	void close(zend_string* sName, const DynamicBlock* oBlock) {
		if (oBlock->oOuterNamesake) {
			zend_hash_update_ptr(table, sName, oBlock->oOuterNamesake);
		} else {
			zend_hash_del(table, sName);
		}
	}

	void release() {
		if (table) {
			zend_array_destroy(table);
			table = nullptr;
		}
	}

private:
	// A table and not a walk over the open blocks: their number is the template author's choice.
	HashTable* table = nullptr;
};
