#pragma once

#include <optional>

#include "common/Text.h"
#include "common/Variant.h"

// A file of any attributes.
struct File {
    Date dateLastModified;  // in local time
};

// Nothing for a file that is missing or cannot be reached, and for a folder.
std::optional<File> FileGet(const Text& path);

// The date of the file's last change; null when there is no such file.
Variant FileDateGet(const Text& path);
