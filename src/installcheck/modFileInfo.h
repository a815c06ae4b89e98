#pragma once

#include "common/Text.h"

// What a file's fixed version information says of it.
struct FileInfo {
    Text Name;      // behind the path's last backslash
    Text TypeText;  // the file's type in words; empty for a type that has none
    Text Version;   // four signed 16-bit numbers with points between them
    Text Path;      // as it was passed in
};

// A file without version information, or one that cannot be read, has the version 0.0.0.0 and the type "Unbekannt".
FileInfo FileInfoGet(const Text& path);
