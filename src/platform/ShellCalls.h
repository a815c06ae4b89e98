#pragma once

#include <cstdint>
#include <string>

#include "platform/Handle.h"

// Opens documents with their associated programs and starts processes. Strings are in the system's 8-bit code page.
namespace platform {

inline constexpr std::int32_t ShowNormal = 1;          // SW_SHOWNORMAL
inline constexpr std::int32_t ShowMinimisedFocus = 2;  // SW_SHOWMINIMIZED: minimised and activated

inline constexpr std::int32_t Synchronize = 0x100000;  // SYNCHRONIZE: the right to wait for a process

inline constexpr std::uint32_t WaitObject0 = 0;             // WAIT_OBJECT_0: the process has exited
inline constexpr std::uint32_t WaitTimeout = 0x102;         // WAIT_TIMEOUT
inline constexpr std::uint32_t WaitFailed = 0xFFFFFFFFU;    // WAIT_FAILED: the handle is invalid
inline constexpr std::uint32_t WaitInfinite = 0xFFFFFFFFU;  // INFINITE: no timeout

// Opens `file` (a path, optionally in double quotes) with the program associated with its type, without waiting for the
// program. Returns 33 or more on success. Otherwise returns an error code: 2 if the file is missing, 3 if its folder is
// missing, 5 if access is denied, 31 if no program is associated with the type.
std::int32_t ShellExecuteA(Handle owner, const std::string& verb, const std::string& file,
                           const std::string& parameters, const std::string& directory, std::int32_t show);

// Starts a command line without waiting for it and sets `processId`. Returns 2 if the program is missing, or the status
// of any other failure.
Status StartCommandLine(const std::string& command, std::int32_t windowStyle, std::int32_t& processId);

// Returns a handle to a running process, or 0 on failure. Close it with CloseHandle. Child processes inherit the handle
// if `inherit` isn't 0.
Handle OpenProcess(std::int32_t access, std::int32_t inherit, std::int32_t processId);

// Waits until the process exits or `milliseconds` have passed. After a timeout, the process keeps running.
std::uint32_t WaitForSingleObject(Handle process, std::uint32_t milliseconds);

}  // namespace platform
