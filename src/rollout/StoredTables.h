#pragma once

#include <vector>

#include "common/Text.h"
#include "rollout/CheckedTable.h"

// The local machine's tables. Unlike an export, includes the entries that follow an unreadable entry.
struct StoredTables {
    CheckedTables tables = EmptyTables();
    std::vector<Text> findings;  // a German warning for each entry that can't be read as a number
};

// Reads the tables; a missing table is empty. Raises a registry error if a table can't be opened or enumerated.
StoredTables ReadStoredTables();
