#include "platform/FileCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <system_error>

#include "platform/Regional.h"
#include "platform/host/FileDescriptor.h"
#include "platform/host/HandleTable.h"
#include "platform/host/HostStatus.h"
#include "platform/host/DateValue.h"
#include "platform/host/NameOrder.h"
#include "platform/host/Unicode.h"
#include "platform/host/drive/Drive.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

// A folder's owner write bit counts for root too, as a file's does.
Status FolderRefusal(const fs::path& path) {
    struct stat folder {};
    if (stat(path.parent_path().c_str(), &folder) != 0) {
        return host::StatusFromErrno(errno);
    }
    return (folder.st_mode & S_IWUSR) == 0 ? StatusAccessDenied : StatusSuccess;
}

// What speaks against changing, replacing or deleting what is there.
Status ChangeRefusal(const host::DrivePlace& place) {
    if (place.status != StatusSuccess) {
        return place.status;
    }
    return place.IsFile() && place.IsWritable() ? StatusSuccess : StatusAccessDenied;
}

Status OpenRefusal(const host::DrivePlace& place, std::uint32_t access, std::uint32_t disposition) {
    const bool creates = disposition == CreateNew || disposition == CreateAlways;
    if (!creates && disposition != OpenExisting) {
        return StatusInvalidParameter;
    }
    if (place.status == StatusFileNotFound && creates && !place.path.empty()) {
        return FolderRefusal(place.path);
    }
    if (place.status != StatusSuccess) {
        return place.status;
    }
    if (disposition == CreateNew) {
        return StatusFileExists;
    }
    if (!place.IsFile() || ((access & GenericRead) != 0 && !place.IsReadable())) {
        return StatusAccessDenied;
    }
    return (access & GenericWrite) != 0 || creates ? ChangeRefusal(place) : StatusSuccess;
}

int OpenFlags(std::uint32_t access, std::uint32_t disposition) {
    const bool writes = (access & GenericWrite) != 0;
    const int mode = !writes ? O_RDONLY : (access & GenericRead) != 0 ? O_RDWR : O_WRONLY;
    const int creation = disposition == CreateNew      ? O_CREAT | O_EXCL
                         : disposition == CreateAlways ? O_CREAT | O_TRUNC
                                                       : 0;
    return mode | creation | O_CLOEXEC | O_NOCTTY;
}

// The new name stands already; a folder that cannot be handed to the disk by itself takes nothing back.
void SyncFolder(const fs::path& folder) {
    if (const host::FileDescriptor opened(open(folder.c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY)); opened) {
        host::Uninterrupted([&] { return fsync(opened.Get()); });
    }
}

// Gives one file the owner and mode of another. The mode comes last: a change of owner may take bits from it.
bool RightsTaken(const fs::path& file, const fs::path& from) {
    struct stat rights {};
    struct stat present {};
    if (stat(from.c_str(), &rights) != 0 || stat(file.c_str(), &present) != 0) {
        return false;
    }
    const bool sameOwner = rights.st_uid == present.st_uid && rights.st_gid == present.st_gid;
    return (sameOwner || chown(file.c_str(), rights.st_uid, rights.st_gid) == 0) &&
           chmod(file.c_str(), rights.st_mode & 07777U) == 0;
}

bool IsHidden(std::string_view name) {
    return name.starts_with('.');
}

// "*" stands for any characters, "?" for one. `star` and `resume` are where the last "*" may take one more.
bool Matches(std::u16string_view name, std::u16string_view pattern) {
    std::size_t at = 0;
    std::size_t want = 0;
    std::size_t star = std::u16string_view::npos;
    std::size_t resume = 0;
    while (at < name.size()) {
        if (want < pattern.size() && pattern[want] == u'*') {
            star = want++;
            resume = at;
        } else if (want < pattern.size() &&
                   (pattern[want] == u'?' || host::Capital(pattern[want]) == host::Capital(name[at]))) {
            ++want;
            ++at;
        } else if (star != std::u16string_view::npos) {
            want = star + 1;
            at = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', want) == std::u16string_view::npos;
}

// The first in the order of names, as Windows' own disks give it.
std::u16string FirstMatch(const host::FilePattern& pattern) {
    // "*.*" is the old way to say all names, those without a point too.
    const std::u16string_view wanted = pattern.name == u"*.*" ? std::u16string_view(u"*") : pattern.name;
    std::u16string first;
    std::error_code error;
    for (fs::directory_iterator entry(pattern.folder, error), end; !error && entry != end; entry.increment(error)) {
        const fs::path onDisk = entry->path().filename();
        const std::u16string name = host::FromUtf8(onDisk.native());
        std::error_code unknown;
        const fs::file_status status = entry->status(unknown);
        const bool system = (status.permissions() & fs::perms::sticky_bit) != fs::perms::none;
        if (!IsHidden(onDisk.native()) && !system && Matches(name, wanted) && fs::is_regular_file(status) &&
            (first.empty() || host::NameLess()(name, first))) {
            first = name;
        }
    }
    return first;
}

}  // namespace

Status CreateFileA(const std::string& path, std::uint32_t access, std::uint32_t disposition, Handle& file) {
    file = 0;
    const host::DrivePlace place = host::FindPlace(path);
    if (const Status refusal = OpenRefusal(place, access, disposition); refusal != StatusSuccess) {
        return refusal;
    }
    host::FileDescriptor opened(
        host::Uninterrupted([&] { return open(place.path.c_str(), OpenFlags(access, disposition), 0666); }));
    if (!opened) {
        return host::StatusFromErrno(errno);
    }
    file = host::HandleAdd(std::move(opened));
    return StatusSuccess;
}

Status ReadFile(Handle file, std::span<char> buffer, std::uint32_t& read) {
    read = 0;
    const auto* const opened = host::HandleFindAs<host::FileDescriptor>(file);
    if (opened == nullptr) {
        return StatusInvalidHandle;
    }
    const std::size_t size = std::min<std::size_t>(buffer.size(), std::numeric_limits<std::int32_t>::max());
    const ssize_t got = host::Uninterrupted([&] { return ::read(opened->Get(), buffer.data(), size); });
    if (got < 0) {
        return host::StatusFromErrno(errno);
    }
    read = static_cast<std::uint32_t>(got);
    return StatusSuccess;
}

Status WriteFile(Handle file, std::string_view data) {
    const auto* const opened = host::HandleFindAs<host::FileDescriptor>(file);
    if (opened == nullptr) {
        return StatusInvalidHandle;
    }
    while (!data.empty()) {
        const ssize_t written = host::Uninterrupted([&] { return write(opened->Get(), data.data(), data.size()); });
        if (written < 0) {
            return host::StatusFromErrno(errno);
        }
        data.remove_prefix(static_cast<std::size_t>(written));
    }
    return StatusSuccess;
}

Status FlushFileBuffers(Handle file) {
    const auto* const opened = host::HandleFindAs<host::FileDescriptor>(file);
    if (opened == nullptr) {
        return StatusInvalidHandle;
    }
    const int result = host::Uninterrupted([&] { return fsync(opened->Get()); });
    return result == 0 ? StatusSuccess : host::StatusFromErrno(errno);
}

Status MoveFileExA(const std::string& from, const std::string& to) {
    const host::DrivePlace source = host::FindPlace(from);
    if (source.status != StatusSuccess) {
        return source.status;
    }
    const host::DrivePlace target = host::FindPlace(to);
    const bool isNew = target.status == StatusFileNotFound && !target.path.empty();
    if (const Status refusal = isNew ? StatusSuccess : ChangeRefusal(target); refusal != StatusSuccess) {
        return refusal;
    }
    for (const fs::path place : {source.path, target.path}) {
        if (const Status refusal = FolderRefusal(place); refusal != StatusSuccess) {
            return refusal;
        }
    }
    if (!source.IsFile()) {
        return StatusAccessDenied;
    }
    std::error_code failure;
    const fs::path place = isNew ? fs::path(target.path) : fs::canonical(target.path, failure);  // a link stays one
    if (!isNew) {
        fs::permissions(source.path, fs::status(place, failure).permissions(), failure);
    }
    if (std::rename(source.path.c_str(), place.c_str()) != 0) {
        return host::StatusFromErrno(errno);
    }
    SyncFolder(place.parent_path());
    return StatusSuccess;
}

Status ReplaceFileA(const std::string& replaced, const std::string& replacement) {
    const host::DrivePlace source = host::FindPlace(replacement);
    const host::DrivePlace target = host::FindPlace(replaced);
    for (const host::DrivePlace* const place : {&source, &target}) {
        if (const Status refusal = ChangeRefusal(*place); refusal != StatusSuccess) {
            return refusal;
        }
    }
    std::error_code failure;
    const fs::path place = fs::canonical(target.path, failure);  // a link stays one
    for (const fs::path& each : {fs::path(source.path), place}) {
        if (const Status refusal = FolderRefusal(each); refusal != StatusSuccess) {
            return refusal;
        }
    }
    if (!RightsTaken(source.path, place) || std::rename(source.path.c_str(), place.c_str()) != 0) {
        return host::StatusFromErrno(errno);
    }
    SyncFolder(place.parent_path());
    return StatusSuccess;
}

Status DeleteFileA(const std::string& path) noexcept {
    try {
        const host::DrivePlace place = host::FindPlace(path);
        if (const Status refusal = ChangeRefusal(place); refusal != StatusSuccess) {
            return refusal;
        }
        if (const Status refusal = FolderRefusal(place.path); refusal != StatusSuccess) {
            return refusal;
        }
        return unlink(place.path.c_str()) == 0 ? StatusSuccess : host::StatusFromErrno(errno);
    } catch (const std::bad_alloc&) {
        return host::StatusFromErrno(ENOMEM);
    }
}

std::string FindNormalFile(const std::string& path) {
    if (path.find_first_of("*?") != std::string::npos) {
        const std::optional<host::FilePattern> pattern = host::FindPattern(path);
        return pattern ? AnsiFromText(FirstMatch(*pattern)) : std::string();
    }
    const host::DrivePlace place = host::FindPlace(path);
    const std::string_view name = std::string_view(place.path).substr(place.path.rfind('/') + 1);
    return place.IsFile() && !place.IsSystem() && !IsHidden(name) ? AnsiFromText(host::FromUtf8(name)) : std::string();
}

bool FileExists(const std::string& path) {
    return host::FindPlace(path).IsFile();
}

Status DateLastModified(const std::string& path, double& date) {
    const host::DrivePlace place = host::FindPlace(path);
    if (place.status != StatusSuccess) {
        return place.status;
    }
    if (!place.IsFile()) {
        return StatusFileNotFound;
    }
    date = host::DateValueOf(place.changed);
    return StatusSuccess;
}

}  // namespace platform
