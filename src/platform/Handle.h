#pragma once

#include <cstdint>

namespace platform {

// A system handle to a registry key, file, process or window, or 0. The predefined registry roots are negative numbers
// (0x80000000 and up); all other handles fit in 32 bits on every supported system.
using Handle = std::int32_t;

// The result of a system call; 0 is success. The numbers are the Windows error codes on every platform, because they
// are shown to the user and callers depend on them.
using Status = std::int32_t;

inline constexpr Status StatusSuccess = 0;
inline constexpr Status StatusFileNotFound = 2;       // ERROR_FILE_NOT_FOUND; also a missing registry key or value
inline constexpr Status StatusPathNotFound = 3;       // ERROR_PATH_NOT_FOUND
inline constexpr Status StatusAccessDenied = 5;       // ERROR_ACCESS_DENIED
inline constexpr Status StatusInvalidHandle = 6;      // ERROR_INVALID_HANDLE
inline constexpr Status StatusWriteProtect = 19;      // ERROR_WRITE_PROTECT: the disk is write-protected
inline constexpr Status StatusSharingViolation = 32;  // ERROR_SHARING_VIOLATION
inline constexpr Status StatusLockViolation = 33;     // ERROR_LOCK_VIOLATION
inline constexpr Status StatusHandleDiskFull = 39;    // ERROR_HANDLE_DISK_FULL
inline constexpr Status StatusBadNetPath = 53;        // ERROR_BAD_NETPATH: the computer in a network path wasn't found
inline constexpr Status StatusBadNetName = 67;        // ERROR_BAD_NET_NAME: the share in a network path wasn't found
inline constexpr Status StatusFileExists = 80;        // ERROR_FILE_EXISTS
inline constexpr Status StatusInvalidParameter = 87;  // ERROR_INVALID_PARAMETER
inline constexpr Status StatusDiskFull = 112;         // ERROR_DISK_FULL
inline constexpr Status StatusInvalidName = 123;      // ERROR_INVALID_NAME
inline constexpr Status StatusNameTooLong = 206;      // ERROR_FILENAME_EXCED_RANGE
inline constexpr Status StatusMoreData = 234;         // ERROR_MORE_DATA: the buffer is too small
inline constexpr Status StatusNoMoreItems = 259;      // ERROR_NO_MORE_ITEMS: the end of an enumeration
inline constexpr Status StatusKeyDeleted = 1018;      // ERROR_KEY_DELETED: the open key was deleted
inline constexpr Status StatusIoDevice = 1117;        // ERROR_IO_DEVICE: any other read or write failure
inline constexpr Status StatusDiskQuota = 1295;       // ERROR_DISK_QUOTA_EXCEEDED

// Closes a file or process handle. Returns StatusInvalidHandle for anything else, including 0.
Status CloseHandle(Handle handle) noexcept;

}  // namespace platform
