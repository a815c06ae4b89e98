#pragma once

#include "common/Text.h"

// Returns the environment variable `name`, or an empty string if it isn't set.
Text EnvironmentVariable(const Text& name);
