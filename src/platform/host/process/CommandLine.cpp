#include "platform/host/process/CommandLine.h"

namespace platform::host {

std::vector<std::string> CommandLineArguments(std::string_view commandLine) {
    std::vector<std::string> arguments;
    bool quoted = false;
    bool within = false;
    for (const char character : commandLine) {
        const bool parts = !quoted && (character == ' ' || character == '\t');
        if (!parts && !within) {
            arguments.emplace_back();
        }
        within = !parts;
        if (character == '"') {
            quoted = !quoted;
        } else if (within) {
            arguments.back() += character;
        }
    }
    return arguments;
}

}  // namespace platform::host
