#pragma once

#include <string>

#include "platform/windows/Win32.h"

// Loads system libraries and programs only from the system folder. Given a bare name, Windows would search this
// program's own folder first, which other users may be able to write to.
namespace platform::windows {

// Returns the path of the system folder, without a trailing backslash.
std::string SystemFolder();

// Removes the current directory from the DLL search order and, on Windows 10 version 1607 and later, moves the system
// folder ahead of the program's folder. Makes no other change to the search order, so that external components load as
// they do in the suite.
void ProtectLibrarySearch();

// Returns the function `name` of version.dll, or null if it is unavailable. Loads the library explicitly on first use:
// version.dll isn't a KnownDLL, so if it were imported, a copy in the program's folder would be loaded instead.
FARPROC VersionFunction(const char* name);

// Calls the function `name` of version.dll. If the function is unavailable, returns 0, as the function does on failure.
template <typename Function, typename... Arguments>
auto VersionCall(const char* name, Arguments... arguments) {
    auto* const function = reinterpret_cast<Function*>(reinterpret_cast<void*>(VersionFunction(name)));
    return function == nullptr ? 0 : function(arguments...);
}

}  // namespace platform::windows
