#include "platform/FileCalls.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <new>

#include "platform/Regional.h"
#include "platform/host/DateValue.h"
#include "platform/host/HandleTable.h"
#include "platform/host/StatusFromErrno.h"
#include "platform/host/Unicode.h"
#include "platform/host/drive/Drive.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

// What speaks against changing, replacing or deleting what is there.
Status ChangeRefusal(const host::ResolvedPath& place) {
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

Status OpenRefusal(const host::ResolvedPath& place, std::uint32_t access, std::uint32_t disposition) {
    if (place.IsMissing() && disposition != OpenExisting) {
        return FolderRefusal(place.path);
    }
    if (access == GenericWrite) {
        return ChangeRefusal(place);
    }
    return place.status == StatusSuccess && !place.IsFile() ? StatusAccessDenied : place.status;
}

// Gives one file the owner and mode of another. The mode comes last: a change of owner may take bits from it.
bool TakeRights(const fs::path& file, const fs::path& from) {
    struct stat rights {};
    return stat(from.c_str(), &rights) == 0 && chown(file.c_str(), rights.st_uid, rights.st_gid) == 0 &&
           chmod(file.c_str(), rights.st_mode & 07777U) == 0;
}

// Puts one file in the place of another, which need not be there when `mayBeNew` is set. The owner and mode of one that
// is there stay.
Status TakePlace(const std::string& from, const std::string& to, bool mayBeNew) {
    const host::ResolvedPath source = host::ResolvePath(from);
    const host::ResolvedPath target = host::ResolvePath(to);
    const bool isNew = mayBeNew && target.IsMissing();
    if (const Status refusal = isNew ? StatusSuccess : ChangeRefusal(target); refusal != StatusSuccess) {
        return refusal;
    }
    std::error_code failure;
    const fs::path place = isNew ? fs::path(target.path) : fs::canonical(target.path, failure);  // a link stays one
    if (const Status refusal = FolderRefusal(place); refusal != StatusSuccess) {
        return refusal;
    }
    if ((!isNew && !TakeRights(source.path, place)) || std::rename(source.path.c_str(), place.c_str()) != 0) {
        return host::StatusFromErrno(errno);
    }
    // The new name stands already; a folder that cannot be handed to the disk by itself takes nothing back.
    if (const host::OpenFile folder(std::fopen(place.parent_path().c_str(), "re")); folder) {
        fsync(fileno(folder.get()));
    }
    return StatusSuccess;
}

}  // namespace

Status CreateFileA(const std::string& path, std::uint32_t access, std::uint32_t disposition, Handle& file) {
    file = 0;
    const host::ResolvedPath place = host::ResolvePath(path);
    if (const Status refusal = OpenRefusal(place, access, disposition); refusal != StatusSuccess) {
        return refusal;
    }
    const std::string mode = access == GenericRead         ? "r"
                             : disposition == CreateAlways ? "w"
                             : disposition == CreateNew    ? "wx"
                                                           : "r+";
    host::OpenFile opened(std::fopen(place.path.c_str(), (mode + "e").c_str()));
    if (!opened) {
        return host::StatusFromErrno(errno);
    }
    std::setvbuf(opened.get(), nullptr, _IONBF, 0);  // a write that fails says so at once
    file = host::HandleAdd(std::move(opened));
    return StatusSuccess;
}

Status ReadFile(Handle file, std::span<char> buffer, std::uint32_t& read) {
    read = 0;
    const auto* const opened = host::HandleFindAs<host::OpenFile>(file);
    if (opened == nullptr) {
        return StatusInvalidHandle;
    }
    read = static_cast<std::uint32_t>(std::fread(buffer.data(), 1, buffer.size(), opened->get()));
    return std::ferror(opened->get()) != 0 ? host::StatusFromErrno(errno) : StatusSuccess;
}

Status WriteFile(Handle file, std::string_view data) {
    const auto* const opened = host::HandleFindAs<host::OpenFile>(file);
    if (opened == nullptr) {
        return StatusInvalidHandle;
    }
    const bool isWhole = std::fwrite(data.data(), 1, data.size(), opened->get()) == data.size();
    return isWhole ? StatusSuccess : host::StatusFromErrno(errno);
}

Status FlushFileBuffers(Handle file) {
    const auto* const opened = host::HandleFindAs<host::OpenFile>(file);
    if (opened == nullptr) {
        return StatusInvalidHandle;
    }
    return fsync(fileno(opened->get())) == 0 ? StatusSuccess : host::StatusFromErrno(errno);
}

Status MoveFileExA(const std::string& from, const std::string& to) {
    return TakePlace(from, to, true);
}

Status ReplaceFileA(const std::string& replaced, const std::string& replacement) {
    return TakePlace(replacement, replaced, false);
}

Status DeleteFileA(const std::string& path) noexcept {
    try {
        const host::ResolvedPath place = host::ResolvePath(path);
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
    const host::ResolvedPath place = host::ResolvePath(path);
    const std::string name = fs::path(place.path).filename().native();
    const bool hidden = name.starts_with('.');
    return place.IsFile() && !hidden ? AnsiFromText(host::FromUtf8(name)) : std::string();
}

bool IsFile(const std::string& path) {
    return host::ResolvePath(path).IsFile();
}

bool IsSameFile(const std::string& path, const std::string& other) {
    std::error_code error;
    return std::filesystem::equivalent(host::ResolvePath(path).path, host::ResolvePath(other).path, error);
}

Status DateLastModified(const std::string& path, double& date) {
    const host::ResolvedPath place = host::ResolvePath(path);
    if (!place.IsFile()) {
        return place.status == StatusSuccess ? StatusFileNotFound : place.status;
    }
    date = host::DateValueOf(place.modified);
    return StatusSuccess;
}

}  // namespace platform
