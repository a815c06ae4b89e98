#include "platform/FileCalls.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "platform/Regional.h"
#include "platform/host/DateValue.h"
#include "platform/host/HandleTable.h"
#include "platform/host/StatusFromErrno.h"
#include "platform/host/Unicode.h"
#include "platform/host/drive/Drive.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

// Returns success if the file may be changed, replaced or deleted; otherwise the error status.
Status CheckChange(const host::ResolvedPath& resolved) {
    const bool isProtected = !resolved.IsFile() || !resolved.IsWritable();
    return resolved.status == StatusSuccess && isProtected ? StatusAccessDenied : resolved.status;
}

// Returns success if names may be added to or removed from the parent folder; otherwise the error status. The folder's
// owner write bit applies to root too.
Status CheckParentFolder(const fs::path& path) {
    std::error_code error;
    const fs::perms permissions = fs::status(path.parent_path(), error).permissions();
    const bool isReadOnly = (permissions & fs::perms::owner_write) == fs::perms::none;
    return !error && isReadOnly ? StatusAccessDenied : host::StatusFromErrno(error.value());
}

Status CheckOpen(const host::ResolvedPath& resolved, std::uint32_t access, std::uint32_t disposition) {
    if (resolved.IsMissing() && disposition != OpenExisting) {
        return CheckParentFolder(resolved.path);
    }
    if (access == GenericWrite) {
        return CheckChange(resolved);
    }
    return resolved.status == StatusSuccess && !resolved.IsFile() ? StatusAccessDenied : resolved.status;
}

Status StatusIf(bool succeeded) {
    return succeeded ? StatusSuccess : host::StatusFromErrno(errno);
}

// Runs `operation` on the open file. On failure, `operation` returns false and sets errno.
template <typename Operation>
Status UseFile(Handle handle, const Operation& operation) {
    const auto* const opened = std::get_if<host::OpenFile>(host::HandleFind(handle));
    return opened == nullptr ? StatusInvalidHandle : StatusIf(operation(opened->get()));
}

// Ignores failures: the file already has its new name, and not every file system can flush a folder.
void FlushFolder(const fs::path& path) {
    if (const host::OpenFile folder(std::fopen(path.c_str(), "re")); folder) {
        fsync(fileno(folder.get()));
    }
}

}  // namespace

Status CreateFileA(const std::string& path, std::uint32_t access, std::uint32_t disposition, Handle& file) {
    file = 0;
    const host::ResolvedPath resolved = host::ResolvePath(path);
    if (const Status status = CheckOpen(resolved, access, disposition); status != StatusSuccess) {
        return status;
    }
    // "x" opens with O_EXCL, which also refuses a symbolic link.
    const char* const mode = access == GenericRead         ? "re"
                             : disposition == CreateAlways ? "we"
                             : disposition == CreateNew    ? "wxe"
                                                           : "r+e";
    host::OpenFile opened(std::fopen(resolved.path.c_str(), mode));
    if (opened) {
        std::setvbuf(opened.get(), nullptr, _IONBF, 0);  // unbuffered, so that a failed write is reported immediately
        file = host::HandleAdd(std::move(opened));
    }
    return StatusIf(file != 0);
}

Status ReadFile(Handle file, std::span<char> buffer, std::uint32_t& read) {
    read = 0;
    return UseFile(file, [&](std::FILE* opened) {
        read = static_cast<std::uint32_t>(std::fread(buffer.data(), 1, buffer.size(), opened));
        return std::ferror(opened) == 0;
    });
}

Status WriteFile(Handle file, std::string_view data) {
    return UseFile(file, [&](auto* opened) { return std::fwrite(data.data(), 1, data.size(), opened) == data.size(); });
}

Status FlushFileBuffers(Handle file) {
    return UseFile(file, [](auto* opened) { return fsync(fileno(opened)) == 0; });
}

Status CopyPermissions(const std::string& path, Handle file) {
    const host::ResolvedPath source = host::ResolvePath(path);
    if (const Status status = CheckChange(source); status != StatusSuccess) {
        return status;
    }
    return UseFile(file, [&](std::FILE* opened) {
        struct stat permissions {};
        // Sets the mode last, because changing the owner may clear some mode bits.
        return stat(source.path.c_str(), &permissions) == 0 &&
               fchown(fileno(opened), permissions.st_uid, permissions.st_gid) == 0 &&
               fchmod(fileno(opened), permissions.st_mode & 07777U) == 0;
    });
}

Status MoveFileExA(const std::string& from, const std::string& to) {
    const host::ResolvedPath source = host::ResolvePath(from);
    const host::ResolvedPath target = host::ResolvePath(to);
    if (const Status status = CheckChange(target); status != StatusSuccess && !target.IsMissing()) {
        return status;
    }
    std::error_code error;
    const fs::path file = fs::weakly_canonical(target.path, error);
    if (const Status status = CheckParentFolder(file); status != StatusSuccess) {
        return status;
    }
    if (std::rename(source.path.c_str(), file.c_str()) != 0) {
        return host::StatusFromErrno(errno);
    }
    FlushFolder(file.parent_path());
    return StatusSuccess;
}

Status DeleteFileA(const std::string& path) noexcept {
    const host::ResolvedPath resolved = host::ResolvePath(path);
    Status status = CheckChange(resolved);
    if (status == StatusSuccess) {
        status = CheckParentFolder(resolved.path);
    }
    return status == StatusSuccess ? StatusIf(unlink(resolved.path.c_str()) == 0) : status;
}

std::string FindNormalFile(const std::string& path) {
    const host::ResolvedPath resolved = host::ResolvePath(path);
    const std::string name = fs::path(resolved.path).filename().native();
    const bool isHidden = name.starts_with('.');
    return resolved.IsFile() && !isHidden ? AnsiFromText(host::FromUtf8(name)) : std::string();
}

bool IsFile(const std::string& path) {
    return host::ResolvePath(path).IsFile();
}

bool IsSameFile(const std::string& path, const std::string& other) {
    std::error_code error;
    return fs::equivalent(host::ResolvePath(path).path, host::ResolvePath(other).path, error);
}

Status DateLastModified(const std::string& path, double& date) {
    const host::ResolvedPath resolved = host::ResolvePath(path);
    if (!resolved.IsFile()) {
        return resolved.status == StatusSuccess ? StatusFileNotFound : resolved.status;
    }
    date = host::DateValueOf(resolved.modified);
    return StatusSuccess;
}

}  // namespace platform
