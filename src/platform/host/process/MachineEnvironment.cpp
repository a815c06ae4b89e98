#include "platform/host/process/MachineEnvironment.h"

#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "platform/host/Machine.h"
#include "platform/host/Unicode.h"

namespace platform::host {

namespace {

MachineVariables Read(const std::filesystem::path& path) {
    MachineVariables variables;
    std::ifstream file(path, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        if (const std::size_t equals = line.find('='); equals != std::string::npos && equals > 0) {
            variables[FromUtf8(line.substr(0, equals))] = FromUtf8(line.substr(equals + 1));
        }
    }
    return variables;
}

// The file as it was when it was last read; all zeros for one that was not there.
struct Reading {
    std::filesystem::path path;
    struct stat file {};
    MachineVariables variables;
};

bool IsSame(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_size == other.st_size &&
           one.st_mtim.tv_sec == other.st_mtim.tv_sec && one.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
}

}  // namespace

const MachineVariables& MachineEnvironment() {
    static Reading last;
    std::filesystem::path path = MachineFolder() / "environment";
    struct stat file {};
    if (stat(path.c_str(), &file) != 0) {
        file = {};
    }
    if (path.native() != last.path.native() || !IsSame(file, last.file)) {
        last = {path, file, Read(path)};
    }
    return last.variables;
}

}  // namespace platform::host
