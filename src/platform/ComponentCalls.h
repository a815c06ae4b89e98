#pragma once

#include <cstdint>
#include <string>

#include "platform/Handle.h"

// External components: COM objects created by ProgID, and library functions.
namespace platform {

// A reference to an object of an external component, or 0.
using ObjectReference = std::intptr_t;

// Creates an object from its ProgID. On failure sets `object` to 0 and returns a COM status (a negative number), which
// StatusText describes.
Status CreateObject(const std::u16string& progId, ObjectReference& object);

// Releases an object. Does nothing if `object` is 0.
void ReleaseObject(ObjectReference object) noexcept;

// Loads the library at `libraryPath` and calls `function` (stdcall on 32-bit systems) with the string `text`. All three
// strings are in the system's 8-bit code page. The library stays loaded until the process exits. Sets `result` only on
// StatusSuccess. Returns 126 if the library or one of its dependencies is missing, 127 if the library doesn't export
// the function.
Status CallTextFunction(const std::string& libraryPath, const std::string& function, const std::string& text,
                        std::int32_t& result);

// Returns the system's description of a status in the user's language, without a trailing line break, or an empty
// string if the status is unknown.
std::u16string StatusText(Status status);

}  // namespace platform
