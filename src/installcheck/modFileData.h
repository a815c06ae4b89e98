#pragma once

#include <optional>

#include "common/Text.h"
#include "common/Variant.h"

// A file with any attributes.
struct File {
    Date dateLastModified;  // in local time
};

// Returns nothing if the file is missing or inaccessible, or if the path is a folder.
std::optional<File> FileGet(const Text& path);

// Returns the date of the file's last change, or Null if FileGet returns nothing.
Variant FileDateGet(const Text& path);
