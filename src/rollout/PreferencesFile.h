#pragma once

#include <string>

#include "common/Text.h"
#include "rollout/ControlFileCheck.h"

// The tables as a collection of registry items for Group Policy Preferences, one collection to a product: each entry is
// updated at its place in a 64-bit machine's registry. Nothing is deleted. XML in UTF-8. `changed` is the moment that
// the items tell as that of their last change, "YYYY-MM-DD hh:mm:ss". Raises for a name with a control character, which
// XML cannot hold.
std::string PreferencesFileOf(const CheckedTable& mainTable, const CheckedTable& reportingTable, const Text& changed);
