#pragma once

#include <vector>

#include "common/Text.h"
#include "rollout/CheckedTable.h"
#include "version/VersionResolution.h"

struct ResolutionReport {
    std::vector<Text> lines;     // a line for each step, and the resulting version, of each product
    std::vector<Text> findings;  // a warning for each entry from the registry that isn't a number of the version list
};

// Describes, in German, how each product's version is resolved for a user. Reads the entries of the registry as the
// products do, or those of `trial` instead of the local machine's, unless it is null. Raises 6 (overflow) if an entry's
// text is a number that exceeds 32 bits.
ResolutionReport DescribeResolution(const UserNames& user, const CheckedTables* trial = nullptr);
