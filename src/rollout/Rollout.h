#pragma once

#include <vector>

#include "common/Text.h"

// How the program ends; software distribution goes by these numbers.
enum class RolloutResult { NothingPassedOver = 0, SomethingPassedOver = 1, NothingWritten = 2 };

// Checks a control file, tells the findings, and writes the tables to a target, if one is given: `arguments` is the
// control file's path and the target's, which ends in ".reg" or ".xml". The target is written last and is never the
// control file. What went wrong is told in one line on standard error.
RolloutResult RunRollout(const std::vector<Text>& arguments);
