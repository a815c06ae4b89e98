#include "platform/FileCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <new>

#include "platform/Regional.h"
#include "platform/host/DateValue.h"
#include "platform/host/FileDescriptor.h"
#include "platform/host/HandleTable.h"
#include "platform/host/Unicode.h"
#include "platform/host/WholeFile.h"
#include "platform/host/drive/Drive.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

// What speaks against changing, replacing or deleting what is there.
Status ChangeRefusal(const host::DrivePlace& place) {
    if (place.status != StatusSuccess) {
        return place.status;
    }
    return place.IsFile() && place.IsWritable() ? StatusSuccess : StatusAccessDenied;
}

// What speaks against changing the names of the folder that a path is in. Its owner's write bit counts for root too.
Status FolderRefusal(const fs::path& path) {
    struct stat folder {};
    if (stat(path.parent_path().c_str(), &folder) != 0) {
        return host::StatusFromErrno(errno);
    }
    return (folder.st_mode & S_IWUSR) == 0 ? StatusAccessDenied : StatusSuccess;
}

Status OpenRefusal(const host::DrivePlace& place, std::uint32_t access, std::uint32_t disposition) {
    if (place.IsMissing() && disposition != OpenExisting) {
        return FolderRefusal(place.path);
    }
    if (place.status != StatusSuccess) {
        return place.status;
    }
    if (access == GenericWrite) {
        return ChangeRefusal(place);
    }
    return place.IsFile() && place.IsReadable() ? StatusSuccess : StatusAccessDenied;
}

int OpenFlags(std::uint32_t access, std::uint32_t disposition) {
    const int creation = disposition == CreateNew      ? O_CREAT | O_EXCL
                         : disposition == CreateAlways ? O_CREAT | O_TRUNC
                                                       : 0;
    return (access == GenericWrite ? O_WRONLY : O_RDONLY) | creation | O_CLOEXEC | O_NOCTTY;
}

// Puts one file in the place of another, which need not be there when `mayBeNew` is set.
Status TakePlace(const std::string& from, const std::string& to, bool mayBeNew) {
    const host::DrivePlace source = host::FindPlace(from);
    const host::DrivePlace target = host::FindPlace(to);
    const bool isNew = mayBeNew && target.IsMissing();
    if (const Status refusal = isNew ? StatusSuccess : ChangeRefusal(target); refusal != StatusSuccess) {
        return refusal;
    }
    std::error_code failure;
    const fs::path place = isNew ? fs::path(target.path) : fs::canonical(target.path, failure);  // a link stays one
    const Status refusal = FolderRefusal(place);
    return refusal == StatusSuccess ? host::TakePlace(source.path, place) : refusal;
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
    const ssize_t got = host::Uninterrupted([&] { return ::read(opened->Get(), buffer.data(), buffer.size()); });
    read = got < 0 ? 0 : static_cast<std::uint32_t>(got);
    return got < 0 ? host::StatusFromErrno(errno) : StatusSuccess;
}

Status WriteFile(Handle file, std::string_view data) {
    const auto* const opened = host::HandleFindAs<host::FileDescriptor>(file);
    return opened == nullptr ? StatusInvalidHandle : host::WriteAll(*opened, data);
}

Status FlushFileBuffers(Handle file) {
    const auto* const opened = host::HandleFindAs<host::FileDescriptor>(file);
    return opened == nullptr ? StatusInvalidHandle : host::Synchronise(*opened);
}

Status MoveFileExA(const std::string& from, const std::string& to) {
    return TakePlace(from, to, true);
}

Status ReplaceFileA(const std::string& replaced, const std::string& replacement) {
    return TakePlace(replacement, replaced, false);
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
    const host::DrivePlace place = host::FindPlace(path);
    const std::string name = fs::path(place.path).filename().native();
    const bool hidden = name.starts_with('.');
    return place.IsFile() && !hidden ? AnsiFromText(host::FromUtf8(name)) : std::string();
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
