#include "platform/host/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iterator>

namespace platform::host {

namespace {

namespace fs = std::filesystem;

// Gives one file the owner and mode of another. The mode comes last: a change of owner may take bits from it.
bool TakeRights(const fs::path& file, const fs::path& from) {
    struct stat rights {};
    struct stat present {};
    if (stat(from.c_str(), &rights) != 0 || stat(file.c_str(), &present) != 0) {
        return false;
    }
    const bool sameOwner = rights.st_uid == present.st_uid && rights.st_gid == present.st_gid;
    return (sameOwner || chown(file.c_str(), rights.st_uid, rights.st_gid) == 0) &&
           chmod(file.c_str(), rights.st_mode & 07777U) == 0;
}

}  // namespace

std::string ReadWhole(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Status WriteAll(const FileDescriptor& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = Uninterrupted([&] { return write(file.Get(), bytes.data(), bytes.size()); });
        if (written < 0) {
            return StatusFromErrno(errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return StatusSuccess;
}

Status Synchronise(const FileDescriptor& file) {
    return Uninterrupted([&] { return fsync(file.Get()); }) == 0 ? StatusSuccess : StatusFromErrno(errno);
}

Status TakePlace(const fs::path& from, const fs::path& to) {
    if ((access(to.c_str(), F_OK) == 0 && !TakeRights(from, to)) || std::rename(from.c_str(), to.c_str()) != 0) {
        return StatusFromErrno(errno);
    }
    // The new name stands already; a folder that cannot be handed to the disk by itself takes nothing back.
    if (const FileDescriptor folder(open(to.parent_path().c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY)); folder) {
        Synchronise(folder);
    }
    return StatusSuccess;
}

Status WriteWhole(const fs::path& path, std::string_view bytes) {
    const std::string beside = path.native() + '.' + std::to_string(getpid()) + ".tmp";
    const FileDescriptor file(open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (!file) {
        return StatusFromErrno(errno);
    }
    Status status = WriteAll(file, bytes);
    status = status == StatusSuccess ? Synchronise(file) : status;
    status = status == StatusSuccess ? TakePlace(beside, path) : status;
    if (status != StatusSuccess) {
        unlink(beside.c_str());
    }
    return status;
}

}  // namespace platform::host
