#pragma once

#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/Handle.h"
#include "platform/host/registry/Database.h"

namespace platform::host {

// Ends a registry call. The description is in German and names the registry file; it is empty if the file isn't the
// cause.
struct RegistryFailure {
    Status status;
    std::u16string description = {};
};

// Ids of keys that every registry file has from the start. They can't be deleted.
inline constexpr std::int64_t UsersKey = 1;  // HKEY_USERS in the user's file; read-only
inline constexpr std::int64_t RootKey = 2;   // HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER
inline constexpr std::int64_t ClassesKey = 4;

// A registry file. A missing file is an empty registry; the first change creates the file and its folder.
class RegistryFile {
public:
    // `root` is the name of the file's root key in the view `registry`.
    RegistryFile(std::filesystem::path path, std::string root);

    // Returns the database in its present state. Reopens it if the path leads to another file or the file's mode has
    // changed.
    Database& ForReading();
    // Returns the same database, after creating a missing file. Throws status 5 if the file is read-only.
    Database& ForWriting();
    // Throws status 5 if the owner's write bit of the file is off or this process can't write to the file.
    void RequireWritable();

    // Returns the failure that stands for an exception of the database.
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
    std::optional<std::chrono::steady_clock::time_point> lastBusy_;
};

// Returns the German description of a failure of a registry file that ended the latest failed registry call, or an
// empty string if that call had another status or cause.
std::u16string RegistryStatusText(Status status);

}  // namespace platform::host
