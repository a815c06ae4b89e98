#pragma once

#include <optional>

#include "common/Text.h"
#include "common/Variant.h"

// A file, even if it is hidden or a system file.
struct File {
    Date dateLastModified;  // in local time
};

// Returns nothing if the file is missing or inaccessible, or if the path is a folder.
std::optional<File> FileGet(const Text& path);

// Returns the file's last modification date, or Null if FileGet returns nothing.
Variant FileDateGet(const Text& path);
