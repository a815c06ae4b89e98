#pragma once

#include "common/Text.h"

// True for a plain file. Folders, hidden files and system files do not count, nor does what cannot be reached.
bool FileExists(const Text& path);

// The path of the same plain file with its name spelled as it is stored; empty where FileExists is false. Where the
// disk below regards case, a name in another spelling costs a search of its folder at each access.
Text FilePathStored(const Text& path);
