#pragma once

#include <string>

#include "rollout/ControlFileCheck.h"

// The tables as a file for `reg import ... /reg:32`: each key is deleted and, unless its table is empty, made anew with
// its entries, as an import of the control file does. UTF-16 with a byte order mark, lines ended by CR LF.
std::string RegistryFileOf(const CheckedTable& mainTable, const CheckedTable& reportingTable);
