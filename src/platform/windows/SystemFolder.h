#pragma once

#include <string>

#include "platform/windows/Win32.h"

// What is to come from the system's own folder and from no other. Looked for by name alone, a library or a program is
// found first in the folder that this program was started from, where anybody may have put one.
namespace platform::windows {

// The system's folder, without a backslash behind it.
std::string SystemFolder();

// From now on a library that is named without a folder is looked for in the system's alone, beside the folder of the
// one that needs it. So are those that the system's own libraries load late. A Windows 7 without its updates cannot do
// that.
void LibrarySearchRestrict();

// The function `name` of version.dll, which is loaded at first use; nullptr where it cannot be had. The library is none
// of those that the system keeps ready for all processes, and so may not be among this program's imports.
FARPROC VersionFunction(const char* name);

// Calls it. 0, which is its failure, where it cannot be had.
template <typename Function, typename... Arguments>
auto VersionCall(const char* name, Arguments... arguments) {
    auto* const function = reinterpret_cast<Function*>(reinterpret_cast<void*>(VersionFunction(name)));
    return function == nullptr ? 0 : function(arguments...);
}

}  // namespace platform::windows
