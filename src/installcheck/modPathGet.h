#pragma once

#include "common/Text.h"

// True if the path is an accessible file that is neither hidden nor a system file. False for folders.
bool FileExists(const Text& path);
