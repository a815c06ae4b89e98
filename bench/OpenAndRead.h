#pragma once

#include <fcntl.h>

#include <array>

#include "platform/host/FileDescriptor.h"

// Opens a file by its path on the host's disk and reads it to its end, and nothing else. False when that cannot be
// done.
inline bool OpenAndRead(const char* path) {
    static std::array<char, 65536> buffer;
    const platform::host::FileDescriptor file(open(path, O_RDONLY | O_CLOEXEC));
    ssize_t got = 1;
    while (file && got > 0) {
        got = read(file.Get(), buffer.data(), buffer.size());
    }
    return got == 0;
}
