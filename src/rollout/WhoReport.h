#pragma once

#include <vector>

#include "common/Text.h"
#include "rollout/CheckedTable.h"
#include "version/VersionResolution.h"

struct ResolutionReport {
    std::vector<Text> lines;     // for each product, one line per step and then the resulting version
    std::vector<Text> findings;  // a warning for each registry entry that isn't a number from the version list
};

// Describes, in German, how each product's version is resolved for a user. Reads the entries from the registry as the
// products do; if `trial` isn't null, uses it instead of the local machine's tables. Raises 6 (overflow) if an entry's
// text is a number that exceeds 32 bits.
ResolutionReport DescribeResolution(const UserNames& user, const CheckedTables* trial = nullptr);
