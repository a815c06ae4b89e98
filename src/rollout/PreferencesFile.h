#pragma once

#include <string>

#include "common/Text.h"
#include "rollout/CheckedTable.h"

// Returns the tables as an XML file for Group Policy preferences: one collection per product with one item per entry.
// Each item updates the entry's value at its path in a 64-bit registry; items for the entries in `removed` delete the
// value. `changed` is the items' modification time, "YYYY-MM-DD hh:mm:ss". Raises 5 (invalid argument) if a name
// contains a character that XML doesn't allow, and 6 (overflow) if an escaped name is longer than 32767 characters.
std::string PreferencesFileBytes(const CheckedTables& tables, const CheckedTables& removed, const Text& changed);
