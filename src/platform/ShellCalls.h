#pragma once

#include <cstdint>
#include <string>

#include "platform/Handle.h"

// Documents opened by association, and processes. Texts are in the system's 8-bit code page.
namespace platform {

inline constexpr std::int32_t ShowNormal = 1;          // SW_SHOWNORMAL
inline constexpr std::int32_t ShowMinimisedFocus = 2;  // started minimised, with the focus

inline constexpr std::int32_t Synchronize = 0x100000;  // the right to wait for a process

inline constexpr std::uint32_t WaitObject0 = 0;             // the process has ended
inline constexpr std::uint32_t WaitTimeout = 0x102;         // the time ran out
inline constexpr std::uint32_t WaitFailed = 0xFFFFFFFFU;    // no such handle
inline constexpr std::uint32_t WaitInfinite = 0xFFFFFFFFU;  // a time-out that never comes

// Opens the document `file` (a path, in double quotes or not) with the program associated with its type, and does not
// wait for that program. 33 and above is success; below it an error code: 2 no such file, 3 no such folder, 5 access
// denied, 31 no association.
std::int32_t ShellExecuteA(Handle owner, const std::string& verb, const std::string& file,
                           const std::string& parameters, const std::string& directory, std::int32_t show);

// Starts a command line and returns at once with the identifier of the new process: 2 when there is no such program,
// otherwise what the system says.
Status StartCommandLine(const std::string& command, std::int32_t windowStyle, std::int32_t& processId);

// A handle on a running process, to be closed with CloseHandle; 0 when there is none. `inherit` is a Boolean, all bits
// set for true.
Handle OpenProcess(std::int32_t access, std::int32_t inherit, std::int32_t processId);

// Waits until the process has ended, but no longer than `milliseconds`. The process goes on running after that.
std::uint32_t WaitForSingleObject(Handle process, std::uint32_t milliseconds);

}  // namespace platform
