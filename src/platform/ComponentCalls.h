#pragma once

#include <cstdint>
#include <string>

#include "platform/Handle.h"

// Outside components: objects by programmatic identifier, and functions of a library.
namespace platform {

// An object of an outside component; 0 is none.
using ObjectReference = std::intptr_t;

// Creates an object from its programmatic identifier. On failure `object` is 0 and the status is the component object
// model's (a negative number), to be told in words by StatusText.
Status CreateObject(const std::u16string& programmaticIdentifier, ObjectReference& object);

// Releases an object; 0 is passed over.
void ReleaseObject(ObjectReference object) noexcept;

// Loads the library at `libraryPath` and calls its `function` (stdcall on 32-bit systems) with one text. All three are
// in the system's 8-bit code page. The library stays loaded to the process' end. `result` is set on StatusSuccess
// alone; 126 for a library that is missing, or another one that it needs, 127 when it has no such function.
Status CallTextFunction(const std::string& libraryPath, const std::string& function, const std::string& text,
                        std::int32_t& result);

// The system's description of a status, in the user's language, without a line end; empty for an unknown one.
std::u16string StatusText(Status status);

}  // namespace platform
