#include "platform/host/Machine.h"

#include <cstdlib>
#include <string>

namespace platform::host {

namespace {

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

}  // namespace

std::filesystem::path MachineFolder() {
    if (const std::string machine = Variable("VTV4V_MACHINE"); !machine.empty()) {
        return machine;
    }
    std::filesystem::path data = Variable("XDG_DATA_HOME");
    if (data.empty()) {
        data = Variable("HOME") + "/.local/share";
    }
    return data / "vtv4v" / "machine";
}

}  // namespace platform::host
