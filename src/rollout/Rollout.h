#pragma once

#include <vector>

#include "common/Text.h"
#include "rollout/Report.h"

// Runs the command that the arguments describe. Prints findings and results to standard output. If the command fails,
// prints the reason as one line to standard error.
RolloutResult RunRollout(const std::vector<Text>& arguments);
