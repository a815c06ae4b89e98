#pragma once

#include <string>

#include "platform/windows/Win32.h"

// Loads system libraries and programs only from the system folder. Without a full path, Windows searches the folder of
// this program first, and other users may be able to write to that folder.
namespace platform::windows {

// Returns the path of the system folder, without a trailing backslash.
std::string SystemFolder();

// Removes the current folder from the library search and, on Windows 10 version 1607 and later, makes the system folder
// take precedence over the program's folder for every library loaded from now on. Apart from that, libraries are found
// as in any other program, so that outside components load here as they do in the suite.
void ProtectLibrarySearch();

// Returns the function `name` of version.dll, or null if it is unavailable. Loads the library on first use: it isn't
// one of the KnownDLLs, so importing it would let a copy in the program's folder take its place.
FARPROC VersionFunction(const char* name);

// Calls the function `name` of version.dll. Returns 0, its failure result, if it is unavailable.
template <typename Function, typename... Arguments>
auto VersionCall(const char* name, Arguments... arguments) {
    auto* const function = reinterpret_cast<Function*>(reinterpret_cast<void*>(VersionFunction(name)));
    return function == nullptr ? 0 : function(arguments...);
}

}  // namespace platform::windows
