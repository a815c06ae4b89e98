#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/Handle.h"

// Files. Paths such as "C:\folder\name" are case-insensitive and in the system's 8-bit code page. File handles are
// closed with CloseHandle.
namespace platform {

inline constexpr std::uint32_t GenericRead = 0x80000000U;
inline constexpr std::uint32_t GenericWrite = 0x40000000U;

inline constexpr std::uint32_t CreateNew = 1;  // fails with StatusFileExists if the name exists, even if it is a link
inline constexpr std::uint32_t CreateAlways = 2;  // truncates an existing file
inline constexpr std::uint32_t OpenExisting = 3;

// Opens or creates a file, depending on `disposition`. `access` is GenericRead or GenericWrite. On failure, sets `file`
// to 0 and returns 2 if the file is missing; 3 if its folder or drive is missing; 5 if the path is a folder, access is
// denied, or a read-only file is opened for writing; 19 if the disk is write-protected; 123 if the name is invalid; 206
// if it is too long.
Status CreateFileA(const std::string& path, std::uint32_t access, std::uint32_t disposition, Handle& file);

// Reads up to `buffer.size()` bytes and sets `read` to the number of bytes read, 0 at the end of the file.
Status ReadFile(Handle file, std::span<char> buffer, std::uint32_t& read);

// Writes all of `data`. Returns 112 if the disk is full, 1295 if the user's disk quota is exceeded. A failed write may
// have written part of the data.
Status WriteFile(Handle file, std::string_view data);

// Flushes the file's data to disk.
Status FlushFileBuffers(Handle file);

// Copies the permissions of the file at `path` to a file that is open for writing: the access control list and
// attributes on Windows, the owner and mode on the host. Returns 2 if `path` is missing; 5 if it is read-only or isn't
// a file, or if its permissions can't be copied.
Status CopyPermissions(const std::string& path, Handle file);

// Renames `from` to `to` atomically, replacing an existing file. Returns 5 if that file is read-only or a folder. On
// the host, if `to` is a symbolic link, replaces the file it points to.
Status MoveFileExA(const std::string& from, const std::string& to);

// Deletes a file. Returns 2 or 3 if it is missing, 5 if it is read-only or a folder.
Status DeleteFileA(const std::string& path) noexcept;

// Returns the name of the first file that matches `path`, or an empty string. Ignores hidden files, system files and
// folders.
std::string FindNormalFile(const std::string& path);

// True if the path is a file, even a hidden one. False for a folder.
bool IsFile(const std::string& path);

// True if both paths refer to the same existing file or folder.
bool IsSameFile(const std::string& path, const std::string& other);

// Sets `date` to the file's last modification time as a local date value (days since 30 December 1899). Returns 2 or 3
// if the file is missing or a folder.
Status DateLastModified(const std::string& path, double& date);

}  // namespace platform
