#pragma once

#include "common/Text.h"

// The environment variable of this name; the empty text when it is unset.
Text EnvironmentVariable(const Text& name);
