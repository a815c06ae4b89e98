#pragma once

#include <vector>

#include "common/Text.h"
#include "rollout/CheckedTable.h"

// The local machine's tables. Unlike an export, includes the entries after one that can't be read.
struct StoredTables {
    CheckedTables tables = EmptyTables();
    std::vector<Text> findings;  // a warning, in German, for each entry that isn't readable or not a number
};

// Reads the tables; a missing table is empty. Raises a registry error if a table can't be opened or enumerated.
StoredTables ReadStoredTables();
