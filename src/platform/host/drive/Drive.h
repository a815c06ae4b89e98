#pragma once

#include <sys/stat.h>

#include <ctime>
#include <string>
#include <string_view>

#include "platform/Handle.h"

// The machine's drives: drive C: is the folder drives/c of the machine, and so on.
//
// Names are found without regard to case, the exact spelling first. On the disk they are UTF-8, in the machine code
// page 1252. A path begins with its drive; one with neither drive nor "\" is the host's own, as a shell takes it.
// ".." is resolved in the path's text and ends at the drive's root. A symbolic link that a person put into a drive is
// followed.
//
// A file or folder is read-only when its owner's write bit is off, for root too. A file whose name begins with "." is
// hidden.
namespace platform::host {

// Where a path leads.
struct ResolvedPath {
    // StatusSuccess: to a file or folder; StatusFileNotFound: to a name that its folder has not; any other: nowhere.
    Status status;
    std::string path = {};     // on the host's disk, in the missing case where such a file would be
    mode_t mode = 0;           // of what is there
    std::time_t modified = 0;  // its content's last change

    [[nodiscard]] bool IsFolder() const { return S_ISDIR(mode); }
    [[nodiscard]] bool IsFile() const { return S_ISREG(mode); }
    [[nodiscard]] bool IsMissing() const { return status == StatusFileNotFound && !path.empty(); }
    [[nodiscard]] bool IsWritable() const { return (mode & S_IWUSR) != 0; }
};

// `path` is in the 8-bit code page.
ResolvedPath ResolvePath(std::string_view path);

}  // namespace platform::host
