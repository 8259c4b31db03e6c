#pragma once

#include "text/name_table.h"

/// A file whose analysis is under way, by the name under which it was included.
struct IncludedFile : NamedItem<IncludedFile> {};
