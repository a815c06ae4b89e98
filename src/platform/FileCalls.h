#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/Handle.h"

// Files by path: "C:\folder\name", in the system's 8-bit code page, found without regard to case. A file's handle is
// closed with CloseHandle.
namespace platform {

inline constexpr std::uint32_t GenericRead = 0x80000000U;
inline constexpr std::uint32_t GenericWrite = 0x40000000U;

inline constexpr std::uint32_t CreateNew = 1;     // fails with StatusFileExists on a file that is there
inline constexpr std::uint32_t CreateAlways = 2;  // empties a file that is there
inline constexpr std::uint32_t OpenExisting = 3;

// Opens a file with `access` (GenericRead or GenericWrite) under `disposition`. `file` is 0 on failure: 2 for a missing
// file, 3 for a missing folder or drive, 5 for a folder, a read-only file or a refused right, 19 on a disk that
// takes no writes, 123 for a name that cannot be one, 206 for one that is too long.
Status CreateFileA(const std::string& path, std::uint32_t access, std::uint32_t disposition, Handle& file);

// Reads up to `buffer` bytes; `read` is their number, 0 at the end of the file.
Status ReadFile(Handle file, std::span<char> buffer, std::uint32_t& read);

// Writes all of `data`, or fails (112 when the disk is full, 1295 when the user's share of it is). A failed write may
// have written a part.
Status WriteFile(Handle file, std::string_view data);

// Hands what was written to the disk itself.
Status FlushFileBuffers(Handle file);

// Gives `from` the name `to` in one step, in the place of a file of that name: 5 when that one is read-only or a
// folder.
Status MoveFileExA(const std::string& from, const std::string& to);

// Puts the file `replacement` in the place of the existing file `replaced` in one step. What `replaced` had for rights
// stays: on Windows its access list and attributes, on the host its owner and mode. 2 when one of them is missing, 5
// when `replaced` is read-only or may not be given up, 17 when the two are on different disks.
Status ReplaceFileA(const std::string& replaced, const std::string& replacement);

// Deletes a file: 2 or 3 when it is missing, 5 when it is read-only or a folder.
Status DeleteFileA(const std::string& path) noexcept;

// A directory search with the normal attribute set: the name of the first file that matches `path`, the empty text for
// none. Hidden files, system files and folders do not match.
std::string FindNormalFile(const std::string& path);

// True for a file of any attributes; false for a folder.
bool IsFile(const std::string& path);

// True when both paths lead to one file or folder, by whatever names; false where one of them is missing.
bool IsSameFile(const std::string& path, const std::string& other);

// The time of the file's last change as a local date value (days since 30 December 1899): 2 or 3 when it is missing or
// a folder.
Status DateLastModified(const std::string& path, double& date);

}  // namespace platform
