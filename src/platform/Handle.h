#pragma once

#include <cstdint>

namespace platform {

// A handle of the system: a registry key, a file, a process or a window. 0 is no handle. The predefined registry roots
// are negative numbers (0x80000000 and up); every other handle fits 32 bits on all systems that we run on.
using Handle = std::int32_t;

// The number by which a call of the system tells how it ended; 0 is success. The numbers are those of Windows, on every
// system, because they reach the user and the callers' rules as error numbers.
using Status = std::int32_t;

inline constexpr Status StatusSuccess = 0;
inline constexpr Status StatusFileNotFound = 2;       // ERROR_FILE_NOT_FOUND; also a missing registry key or value
inline constexpr Status StatusPathNotFound = 3;       // ERROR_PATH_NOT_FOUND
inline constexpr Status StatusAccessDenied = 5;       // ERROR_ACCESS_DENIED
inline constexpr Status StatusInvalidHandle = 6;      // ERROR_INVALID_HANDLE
inline constexpr Status StatusNotSameDevice = 17;     // ERROR_NOT_SAME_DEVICE: two disks, where one is needed
inline constexpr Status StatusWriteProtect = 19;      // ERROR_WRITE_PROTECT: the disk takes no writes
inline constexpr Status StatusSharingViolation = 32;  // ERROR_SHARING_VIOLATION
inline constexpr Status StatusLockViolation = 33;     // ERROR_LOCK_VIOLATION
inline constexpr Status StatusHandleDiskFull = 39;    // ERROR_HANDLE_DISK_FULL
inline constexpr Status StatusBadNetPath = 53;        // ERROR_BAD_NETPATH: the computer of a network path is away
inline constexpr Status StatusBadNetName = 67;        // ERROR_BAD_NET_NAME: it has no such share
inline constexpr Status StatusFileExists = 80;        // ERROR_FILE_EXISTS
inline constexpr Status StatusInvalidParameter = 87;  // ERROR_INVALID_PARAMETER
inline constexpr Status StatusDiskFull = 112;         // ERROR_DISK_FULL
inline constexpr Status StatusInvalidName = 123;      // ERROR_INVALID_NAME
inline constexpr Status StatusNameTooLong = 206;      // ERROR_FILENAME_EXCED_RANGE
inline constexpr Status StatusMoreData = 234;         // ERROR_MORE_DATA: the buffer is too small
inline constexpr Status StatusNoMoreItems = 259;      // ERROR_NO_MORE_ITEMS: the end of an enumeration
inline constexpr Status StatusKeyDeleted = 1018;      // ERROR_KEY_DELETED: the open key is gone
inline constexpr Status StatusIoDevice = 1117;        // ERROR_IO_DEVICE: any other failure of a read or a write
inline constexpr Status StatusDiskQuota = 1295;       // ERROR_DISK_QUOTA_EXCEEDED

// Closes a handle of a file or a process. StatusInvalidHandle for anything else, 0 included.
Status CloseHandle(Handle handle) noexcept;

}  // namespace platform
