#pragma once

#include <vector>

#include "common/Text.h"
#include "rollout/CheckedTable.h"
#include "version/VersionResolution.h"

struct ResolutionReport {
    std::vector<Text> lines;     // a line for each step, and the resulting version, of each product
    std::vector<Text> findings;  // a warning for each number that isn't in the version list
};

// Describes, in German, how each product's version is resolved for a user, with the given tables as those of the local
// machine.
ResolutionReport DescribeResolution(const UserNames& user, const CheckedTables& tables);
