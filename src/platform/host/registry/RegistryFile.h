#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/Handle.h"
#include "platform/host/registry/Database.h"

namespace platform::host {

inline constexpr Status StatusBusy = 170;              // ERROR_BUSY: another process keeps the file locked
inline constexpr Status StatusDatabaseDamaged = 1009;  // ERROR_BADDB: the file is no registry, or a damaged one

// What ends a call on the registry beside an SQLite::Exception.
struct RegistryFailure {
    Status status;
};

// Keys that each file has from its beginning, by their numbers. They are never deleted.
inline constexpr std::int64_t UsersKey = 1;  // HKEY_USERS in the user's file; takes no changes
inline constexpr std::int64_t RootKey = 2;   // what the file is: HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER
inline constexpr std::int64_t ClassesKey = 4;

// A file of the registry. A missing one is an empty registry; it is made, with its folder, by the first change.
class RegistryFile {
public:
    // `root` is the name under which the file is shown to those who look in from outside.
    RegistryFile(std::filesystem::path path, std::u16string root);

    // The database as it is at this moment: opened anew when the path leads to another file or its rights have changed.
    Database& ForReading();
    // The same, made where it is missing. Fails with status 5 when changes are refused.
    Database& ForWriting();

    // False when the owner's write bit of the file is off, or when this process may not write there.
    bool IsWritable();

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    // The status for a failure that the database has just thrown.
    [[nodiscard]] Status StatusOf(const SQLite::Exception& failure);

private:
    [[nodiscard]] Database OpenFile() const;
    void CreateFile() const;
    void CreateTables(Database& database) const;

    std::filesystem::path path_;
    std::u16string root_;
    std::optional<Database> database_;
    struct stat opened_ = {};  // of the file that is open; all zero when there is none
    bool writable_ = false;
};

// What the user is told of a status that a file of the registry gave, with the file's path; empty for any other status.
std::u16string RegistryStatusText(Status status);

}  // namespace platform::host
