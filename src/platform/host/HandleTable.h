#pragma once

#include <sys/types.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <variant>

#include "platform/Handle.h"

// What the handles of files, processes and registry keys stand for. They share their numbers; a number is not given out
// again, so that a stale handle is told from a live one.
namespace platform::host {

struct CloseFile {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

struct ProcessReference {
    pid_t number;
};

struct OpenKey {
    bool isUsers;      // in the user's file, not in the machine's
    std::int64_t key;  // its number there; that of a deleted key is not used again
    std::int32_t rights;
};

using HandleObject = std::variant<OpenFile, ProcessReference, OpenKey>;

Handle HandleAdd(HandleObject object);

// False when there is no such handle.
bool HandleRemove(Handle handle) noexcept;

// Null when there is no such handle.
HandleObject* HandleFind(Handle handle);

// The object when the handle stands for one of this type, null otherwise.
template <typename Object>
Object* HandleFindAs(Handle handle) {
    return std::get_if<Object>(HandleFind(handle));
}

}  // namespace platform::host
