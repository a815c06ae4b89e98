#pragma once

#include <sys/types.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <variant>

#include "platform/Handle.h"

// The table of open files, processes and registry keys. Their handles come from one sequence of numbers. Numbers aren't
// reused, so that a closed handle is never mistaken for an open one.
namespace platform::host {

struct CloseFile {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

using ProcessReference = pid_t;

struct OpenKey {
    bool isUsers;      // true if the key is in the user's registry file, false if in the machine's
    std::int64_t key;  // the key's id in that registry file; ids of deleted keys aren't reused
    std::int32_t rights;
};

using HandleObject = std::variant<OpenFile, ProcessReference, OpenKey>;

Handle HandleAdd(HandleObject object);

// Returns false if the handle is invalid.
bool HandleRemove(Handle handle) noexcept;

// Returns null if the handle is invalid.
HandleObject* HandleFind(Handle handle);

}  // namespace platform::host
