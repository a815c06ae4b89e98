#include "platform/host/MachineEnvironment.h"

#include <fstream>

#include "platform/host/Machine.h"
#include "platform/host/Unicode.h"

namespace platform::host {

std::map<std::u16string, std::u16string, NameLess> MachineEnvironment() {
    std::map<std::u16string, std::u16string, NameLess> variables;
    std::ifstream file(MachineFolder() / "environment", std::ios::binary);
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

}  // namespace platform::host
