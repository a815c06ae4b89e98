#include "platform/host/drive/Drive.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/Regional.h"
#include "platform/host/Machine.h"
#include "platform/host/StatusFromErrno.h"
#include "platform/host/Unicode.h"

namespace platform::host {

namespace {

namespace fs = std::filesystem;

ResolvedPath StatPath(const fs::path& path) {
    struct stat found {};
    if (stat(path.c_str(), &found) != 0) {
        return {StatusFromErrno(errno), path.native()};
    }
    return {StatusSuccess, path.native(), found.st_mode, found.st_mtime};
}

ResolvedPath FindName(const fs::path& folder, const std::string& name) {
    ResolvedPath exact = StatPath(folder / name);
    if (!exact.IsMissing()) {
        return exact;
    }
    const std::u16string wanted = CharUpperW(FromUtf8(name));
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (CharUpperW(FromUtf8(entry->path().filename().native())) == wanted) {
            return StatPath(entry->path());
        }
    }
    return exact;
}

ResolvedPath FindDrive(char letter) {
    ResolvedPath drive = FindName(MachineFolder() / "drives", std::string(1, static_cast<char>(letter | 0x20)));
    return drive.IsMissing() ? ResolvedPath{StatusPathNotFound} : drive;
}

ResolvedPath ResolveHostPath(const std::string& text) {
    std::error_code error;
    ResolvedPath resolved = StatPath(fs::absolute(text, error));
    if (resolved.IsMissing() && !fs::exists(fs::path(resolved.path).parent_path(), error)) {
        resolved.status = StatusPathNotFound;
    }
    return resolved;
}

}  // namespace

ResolvedPath ResolvePath(std::string_view path) {
    std::string text = ToUtf8(TextFromAnsi(std::string(path)));
    std::ranges::replace(text, '\\', '/');
    const bool hasDrive = std::isalpha(static_cast<unsigned char>(text[0])) != 0 && text.substr(1, 2) == ":/";
    if (!hasDrive) {
        const bool isHostPath = !path.empty() && path.find_first_of("\\:") == std::string_view::npos;
        return isHostPath ? ResolveHostPath(text) : ResolvedPath{StatusPathNotFound};
    }
    ResolvedPath resolved = FindDrive(text[0]);
    for (const fs::path& name : fs::path(text.substr(2)).lexically_normal().relative_path()) {
        if (!resolved.IsFolder()) {
            const bool isNoFolder = resolved.status == StatusSuccess || resolved.status == StatusFileNotFound;
            return {name.empty() ? StatusInvalidName : isNoFolder ? StatusPathNotFound : resolved.status};
        }
        if (!name.empty()) {
            resolved = FindName(resolved.path, name.native());
        }
    }
    return resolved;
}

}  // namespace platform::host
