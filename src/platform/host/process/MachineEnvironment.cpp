#include "platform/host/process/MachineEnvironment.h"

#include <fstream>

#include "platform/Regional.h"
#include "platform/host/Machine.h"
#include "platform/host/Unicode.h"

namespace platform::host {

std::map<std::u16string, std::u16string> MachineEnvironment() {
    std::map<std::u16string, std::u16string> variables;
    std::ifstream file(MachineFolder() / "environment");
    for (std::string line; std::getline(file, line);) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        if (const std::size_t equals = line.find('='); equals != std::string::npos && equals > 0) {
            variables[CharUpperW(FromUtf8(line.substr(0, equals)))] = FromUtf8(line.substr(equals + 1));
        }
    }
    return variables;
}

}  // namespace platform::host
