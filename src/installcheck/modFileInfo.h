#pragma once

#include "common/Text.h"

// Data from a file's fixed version information.
struct FileInfo {
    Text Name;      // the part of the path after the last backslash
    Text TypeText;  // the file type in words, or empty for an unlisted type
    Text Version;   // four signed 16-bit numbers, separated by periods
    Text Path;      // as passed to FileInfoGet
};

// Returns version 0.0.0.0 and type "Unbekannt" if the file has no version information or can't be read.
FileInfo FileInfoGet(const Text& path);
