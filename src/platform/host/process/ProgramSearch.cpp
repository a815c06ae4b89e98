#include "platform/host/process/ProgramSearch.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "platform/Regional.h"
#include "platform/host/NameOrder.h"
#include "platform/host/Unicode.h"
#include "platform/host/drive/Drive.h"

namespace platform::host {

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 3> ProgramEndings = {".exe", ".com", ".bat"};

// The names that a program file in a drive may have.
std::vector<std::string> DriveNames(const std::string& name) {
    std::vector<std::string> names = {name};
    for (const std::string_view ending : ProgramEndings) {
        const std::string_view end = std::string_view(name).substr(name.size() - std::min(name.size(), ending.size()));
        if (NameEqual()(FromUtf8(end), FromUtf8(ending))) {
            names.push_back(name.substr(0, name.size() - ending.size()));
            return names;
        }
    }
    for (const std::string_view ending : ProgramEndings) {
        names.push_back(name + std::string(ending));
    }
    return names;
}

// Looks at one place after the other; of several failures EACCES tells more than ENOENT.
class Search {
public:
    bool Tried(const fs::path& path) {
        struct stat found {};
        if (stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) {
            return false;
        }
        if (access(path.c_str(), X_OK) != 0) {
            failure_ = EACCES;
            return false;
        }
        failure_ = 0;
        program_ = path;
        return true;
    }

    bool TriedInDrive(const std::string& path) {
        for (const std::string& name : DriveNames(path)) {
            if (const DrivePlace place = FindPlace(name); place.IsFile() && Tried(place.path)) {
                return true;
            }
        }
        return false;
    }

    bool TriedOnPath(const std::string& name) {
        const char* const variable = std::getenv("PATH");
        std::string_view folders = variable == nullptr ? "/usr/local/bin:/usr/bin:/bin" : variable;
        while (!folders.empty()) {
            const std::string_view folder = folders.substr(0, folders.find(':'));
            // An empty entry would be the folder that we happen to stand in.
            if (folder.starts_with('/') && Tried(fs::path(folder) / name)) {
                return true;
            }
            folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        }
        return false;
    }

    [[nodiscard]] int Failure() const { return failure_; }
    [[nodiscard]] const fs::path& Program() const { return program_; }

private:
    int failure_ = ENOENT;
    fs::path program_;
};

}  // namespace

int FindProgram(const std::string& name, fs::path& program) {
    Search search;
    const std::string hostName = ToUtf8(TextFromAnsi(name));
    if (name.starts_with('/')) {
        search.Tried(hostName);
    } else if (name.find_first_of("\\/:") != std::string::npos) {
        search.TriedInDrive(name);
    } else if (!name.empty()) {
        search.TriedInDrive("C:\\Windows\\System32\\" + name) || search.TriedInDrive("C:\\Windows\\" + name) ||
            search.TriedOnPath(hostName);
    }
    program = search.Program();
    return search.Failure();
}

}  // namespace platform::host
