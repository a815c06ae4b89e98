#include "platform/host/Machine.h"

#include <cstdlib>
#include <fstream>
#include <system_error>

#include "platform/Regional.h"
#include "platform/host/Unicode.h"

namespace platform::host {

std::string ProcessVariable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::filesystem::path MachineFolder() {
    std::filesystem::path folder = ProcessVariable("VTV4V_MACHINE");
    if (folder.empty()) {
        const std::filesystem::path data = ProcessVariable("XDG_DATA_HOME");
        folder =
            (data.empty() ? ProcessVariable("HOME") / std::filesystem::path(".local/share") : data) / "vtv4v/machine";
    }
    std::error_code error;  // without a working directory, the path is empty and nothing is found
    return std::filesystem::absolute(folder, error);
}

std::map<std::u16string, std::u16string> NamedValues(const char* file) {
    std::map<std::u16string, std::u16string> values;
    std::ifstream lines(MachineFolder() / file);
    for (std::string line; std::getline(lines, line);) {
        line.erase(line.find_last_not_of('\r') + 1);
        if (const std::size_t equals = line.find('='); equals != std::string::npos && equals > 0) {
            values[CharUpperW(FromUtf8(line.substr(0, equals)))] = FromUtf8(line.substr(equals + 1));
        }
    }
    return values;
}

}  // namespace platform::host
