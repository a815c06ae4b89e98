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

ResolvedPath PlaceOnDisk(const fs::path& path) {
    struct stat found {};
    if (stat(path.c_str(), &found) != 0) {
        return {StatusFromErrno(errno), path.native()};
    }
    return {StatusSuccess, path.native(), found.st_mode, found.st_mtime};
}

ResolvedPath FindName(const fs::path& folder, const std::string& name) {
    ResolvedPath exact = PlaceOnDisk(folder / name);
    if (!exact.IsMissing()) {
        return exact;
    }
    const std::u16string wanted = FromUtf8(name);
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (IsSameName(FromUtf8(entry->path().filename().native()), wanted)) {
            return PlaceOnDisk(entry->path());
        }
    }
    return exact;
}

bool HasDrive(const std::string& path) {
    return std::isalpha(static_cast<unsigned char>(path[0])) != 0 && path.substr(1, 2) == ":/";
}

}  // namespace

ResolvedPath ResolvePath(std::string_view path) {
    std::string text = ToUtf8(TextFromAnsi(std::string(path)));
    std::ranges::replace(text, '\\', '/');
    if (!HasDrive(text)) {
        std::error_code error;
        const bool isHostPath = !path.empty() && path.find_first_of("\\:") == std::string_view::npos;
        return isHostPath ? PlaceOnDisk(fs::absolute(text, error)) : ResolvedPath{StatusPathNotFound};
    }
    ResolvedPath place = FindName(MachineFolder() / "drives", std::string(1, static_cast<char>(text[0] | 0x20)));
    for (const fs::path& name : fs::path(text.substr(2)).lexically_normal().relative_path()) {
        if (!place.IsFolder()) {
            const bool known = place.status == StatusSuccess || place.status == StatusFileNotFound;
            return {name.empty() ? StatusInvalidName : known ? StatusPathNotFound : place.status};
        }
        if (!name.empty()) {
            place = FindName(place.path, name.native());
        }
    }
    return place;
}

}  // namespace platform::host
