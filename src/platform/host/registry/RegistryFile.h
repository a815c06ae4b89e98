#pragma once

#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "platform/Handle.h"
#include "platform/host/registry/Database.h"

namespace platform::host {

// Thrown to end a registry call. If the registry file caused the failure, the German description names that file;
// otherwise the description is empty.
struct RegistryFailure {
    Status status;
    std::u16string description = {};
};

// Ids of the keys that every registry file contains. These keys can't be deleted.
inline constexpr std::int64_t UsersKey = 1;  // HKEY_USERS, in the user's registry file; read-only
inline constexpr std::int64_t RootKey = 2;   // HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER
inline constexpr std::int64_t ClassesKey = 4;

// A registry file. A missing file is an empty registry; the first change creates the file and its folder.
class RegistryFile {
public:
    // `root` is the name of the file's root key in the view `registry`.
    RegistryFile(std::filesystem::path path, std::string root) : path_(std::move(path)), root_(std::move(root)) {}

    // Returns the database in its current state. Reopens the file if it was replaced or its mode has changed.
    Database& ForReading();
    // Like ForReading, but creates the file if it is missing. Throws status 5 if the file is read-only.
    Database& ForWriting();
    // Throws status 5 if the file was read-only when ForReading last opened it: its owner write bit was off, or this
    // process couldn't write to it.
    void RequireWritable() const;

    // Converts a database exception to a registry failure.
    [[nodiscard]] RegistryFailure FailureFrom(const SQLite::Exception& exception);

private:
    [[nodiscard]] RegistryFailure Failure(Status status) const;
    [[nodiscard]] struct stat FileStatus() const;
    [[nodiscard]] int BusyMilliseconds() const;
    Database Open(const std::string& path, int flags) const;
    [[nodiscard]] Database RolledBackCopy() const;

    std::filesystem::path path_;
    std::string root_;
    std::optional<Database> database_;
    struct stat opened_ = {};  // the status of the open file; all zero if the file is missing
    bool writable_ = false;
    std::chrono::steady_clock::time_point endOfPause_ = {};  // until then, calls don't wait for a lock
};

// If the last failed registry call returned `status` because of its registry file, returns a German description of the
// problem; otherwise returns an empty string.
std::u16string RegistryStatusText(Status status);

}  // namespace platform::host
