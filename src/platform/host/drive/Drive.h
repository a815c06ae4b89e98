#pragma once

#include <sys/stat.h>

#include <ctime>
#include <string>
#include <string_view>

#include "platform/Handle.h"

// The machine's drives. Drive C: is the folder drives/c in the machine's folder.
//
// Lookups are case-insensitive but prefer the exact spelling. Names are UTF-8 on the host and code page 1252 on the
// machine. A path with neither a drive nor a "\" is a path on the host. ".." is resolved lexically and stops at the
// drive's root. Symbolic links are followed.
//
// A file or folder without the owner's write bit is read-only, even for root. A file whose name begins with "." is
// hidden.
namespace platform::host {

struct ResolvedPath {
    Status status;          // StatusFileNotFound if only the last component doesn't exist
    std::string path = {};  // host path; if only the last component doesn't exist, the path at which to create it
    mode_t mode = 0;
    std::time_t modified = 0;  // last modification time

    [[nodiscard]] bool IsFolder() const { return S_ISDIR(mode); }
    [[nodiscard]] bool IsFile() const { return S_ISREG(mode); }
    [[nodiscard]] bool IsMissing() const { return status == StatusFileNotFound && !path.empty(); }
    [[nodiscard]] bool IsWritable() const { return (mode & S_IWUSR) != 0; }
};

// `path` is in the 8-bit code page.
ResolvedPath ResolvePath(std::string_view path);

}  // namespace platform::host
