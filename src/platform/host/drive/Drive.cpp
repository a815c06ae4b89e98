#include "platform/host/drive/Drive.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <vector>

#include "platform/Regional.h"
#include "platform/host/HostStatus.h"
#include "platform/host/Machine.h"
#include "platform/host/NameOrder.h"
#include "platform/host/Unicode.h"

namespace platform::host {

namespace {

namespace fs = std::filesystem;

// Told from the host's root, so that a path stays good in a process with another working directory.
std::string DrivesFolder() {
    fs::path machine = MachineFolder();
    if (machine.is_relative()) {
        std::error_code error;
        const fs::path present = fs::current_path(error);
        machine = present / machine;
    }
    return machine.native() + "/drives";
}

bool IsSeparator(char16_t character) {
    return character == u'\\' || character == u'/';
}

bool IsForbidden(char16_t character) {
    switch (character) {
        case u'<':
        case u'>':
        case u'"':
        case u'|':
        case u'?':
        case u'*':
        case u':':
            return true;
        default:
            return character < u' ';
    }
}

// A path "C:\...", taken apart.
struct DrivePath {
    char16_t drive;  // the small letter
    std::vector<std::u16string> names;
    bool namesFolder;  // it ends in a separator
};

// Windows takes no notice of points and blanks at a name's end.
void NameAppend(DrivePath& path, std::u16string_view name) {
    if (name == u"..") {
        if (!path.names.empty()) {
            path.names.pop_back();
        }
        return;
    }
    name = name.substr(0, name.find_last_not_of(u". ") + 1);
    if (!name.empty()) {
        path.names.emplace_back(name);
    }
}

// Nothing when the path has no drive.
std::optional<DrivePath> Parsed(std::u16string_view path) {
    const char16_t letter = path.empty() ? u' ' : static_cast<char16_t>(path[0] | 0x20);
    if (path.size() < 3 || letter < u'a' || letter > u'z' || path[1] != u':' || !IsSeparator(path[2])) {
        return {};
    }
    DrivePath parsed{letter, {}, IsSeparator(path.back())};
    path.remove_prefix(3);
    while (!path.empty()) {
        const std::u16string_view name = path.substr(
            0, static_cast<std::size_t>(std::find_if(path.begin(), path.end(), IsSeparator) - path.begin()));
        NameAppend(parsed, name);
        path.remove_prefix(std::min(name.size() + 1, path.size()));
    }
    return parsed;
}

DrivePlace PlaceOnDisk(std::string path) {
    struct stat found {};
    if (stat(path.c_str(), &found) != 0) {
        return {StatusFromErrno(errno), std::move(path)};
    }
    return {StatusSuccess, std::move(path), found.st_mode, found.st_mtime};
}

// The place of a name in a folder.
DrivePlace FindName(const std::string& folder, std::u16string_view name) {
    DrivePlace exact = PlaceOnDisk(folder + '/' + ToUtf8(name));
    if (exact.status != StatusFileNotFound) {
        return exact;
    }
    // Of several spellings the same one is found each time.
    std::optional<fs::path> spelling;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (NameEqual()(FromUtf8(entry->path().filename().native()), name) &&
            (!spelling || entry->path() < *spelling)) {
            spelling = entry->path();
        }
    }
    if (error) {
        return {StatusFromErrno(error.value()), {}};
    }
    return spelling ? PlaceOnDisk(spelling->native()) : exact;
}

// The place of the folder that a drive's names lead to, but for the last one.
DrivePlace FindFolder(const DrivePath& path) {
    DrivePlace place = FindName(DrivesFolder(), std::u16string(1, path.drive));
    for (std::size_t number = 0; place.IsFolder() && number + 1 < path.names.size(); ++number) {
        place = FindName(place.path, path.names[number]);
    }
    if (place.status == StatusFileNotFound || (place.status == StatusSuccess && !place.IsFolder())) {
        return {StatusPathNotFound, {}};
    }
    return place;
}

// The place of a path whose names are spelled as on the disk, as most are: one look instead of one for each level. A
// failure tells nothing of other spellings.
DrivePlace FindExact(const DrivePath& path) {
    std::string place = DrivesFolder();
    place.append("/").append(1, static_cast<char>(path.drive));
    for (const std::u16string& name : path.names) {
        place.append("/").append(ToUtf8(name));
    }
    return PlaceOnDisk(std::move(place));
}

bool IsName(std::u16string_view name) {
    return std::none_of(name.begin(), name.end(), IsForbidden);
}

}  // namespace

DrivePlace FindPlace(std::string_view path) {
    const std::u16string text = TextFromAnsi(std::string(path));
    const std::optional<DrivePath> parsed = Parsed(text);
    if (!parsed) {
        const bool bareName = !text.empty() && IsName(text) && std::none_of(text.begin(), text.end(), IsSeparator);
        return {bareName ? StatusFileNotFound : StatusPathNotFound, {}};
    }
    if (!std::all_of(parsed->names.begin(), parsed->names.end(), IsName)) {
        return {StatusInvalidName, {}};
    }
    DrivePlace exact = FindExact(*parsed);
    if (exact.IsFolder() || (exact.IsFile() && !parsed->namesFolder && !parsed->names.empty())) {
        return exact;
    }
    DrivePlace folder = FindFolder(*parsed);
    if (folder.status != StatusSuccess || parsed->names.empty()) {
        return folder;
    }
    DrivePlace place = FindName(folder.path, parsed->names.back());
    if (parsed->namesFolder && !place.IsFolder()) {
        return {StatusInvalidName, {}};
    }
    return place;
}

std::optional<FilePattern> FindPattern(std::string_view path) {
    std::optional<DrivePath> parsed = Parsed(TextFromAnsi(std::string(path)));
    if (!parsed || parsed->namesFolder || parsed->names.empty()) {
        return {};
    }
    DrivePlace folder = FindFolder(*parsed);
    if (folder.status != StatusSuccess) {
        return {};
    }
    return FilePattern{std::move(folder.path), std::move(parsed->names.back())};
}

std::optional<std::u16string> DrivePathOf(const fs::path& hostPath) {
    std::error_code error;
    for (fs::directory_iterator drive(DrivesFolder(), error), end; !error && drive != end; drive.increment(error)) {
        std::error_code broken;
        const fs::path inDrive = hostPath.lexically_relative(fs::canonical(drive->path(), broken));
        const std::u16string letter = FromUtf8(drive->path().filename().native());
        if (broken || inDrive.empty() || *inDrive.begin() == ".." || letter.size() != 1) {
            continue;
        }
        std::u16string path = {Capital(letter.front()), u':', u'\\'};
        for (const fs::path& name : inDrive) {
            if (name != ".") {
                path += (path.size() > 3 ? u"\\" : u"") + FromUtf8(name.native());
            }
        }
        return path;
    }
    return {};
}

}  // namespace platform::host
