#pragma once

#include <string>

#include "rollout/CheckedTable.h"

// Returns the tables as a .reg file for `reg import /reg:32`, in UTF-16 with a byte order mark. Like an import, the
// file deletes each table's key and recreates it unless the table is empty.
std::string RegFileBytes(const CheckedTables& tables);
