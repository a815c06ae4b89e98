#pragma once

#include "common/Text.h"

// True for a plain file. Folders, hidden files and system files do not count, nor does what cannot be reached.
bool FileExists(const Text& path);
