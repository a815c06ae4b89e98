#include "platform/host/process/CommandLine.h"

#include <algorithm>

namespace platform::host {

namespace {

constexpr std::string_view Blanks = " \t";

void BlanksPass(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(Blanks), rest.size()));
}

std::string ProgramName(std::string_view& rest) {
    const bool quoted = rest.starts_with('"');
    rest.remove_prefix(quoted ? 1 : 0);
    const std::size_t length = std::min(quoted ? rest.find('"') : rest.find_first_of(Blanks), rest.size());
    std::string name(rest.substr(0, length));
    rest.remove_prefix(std::min(length + (quoted ? 1 : 0), rest.size()));
    return name;
}

// Takes the backslashes before a double quote, and that quote itself when they make it one of the text.
void BackslashesTake(std::string_view& rest, std::string& argument) {
    const std::size_t count = std::min(rest.find_first_not_of('\\'), rest.size());
    rest.remove_prefix(count);
    if (!rest.starts_with('"')) {
        argument.append(count, '\\');
        return;
    }
    argument.append(count / 2, '\\');
    if (count % 2 != 0) {
        argument += '"';
        rest.remove_prefix(1);
    }
}

std::string Argument(std::string_view& rest) {
    std::string argument;
    bool quoted = false;
    while (!rest.empty() && (quoted || Blanks.find(rest.front()) == std::string_view::npos)) {
        if (rest.front() == '\\') {
            BackslashesTake(rest, argument);
        } else if (quoted && rest.starts_with("\"\"")) {
            argument += '"';
            rest.remove_prefix(2);
        } else {
            if (rest.front() == '"') {
                quoted = !quoted;
            } else {
                argument += rest.front();
            }
            rest.remove_prefix(1);
        }
    }
    return argument;
}

}  // namespace

std::vector<std::string> CommandLineArguments(std::string_view commandLine) {
    BlanksPass(commandLine);
    std::vector<std::string> arguments = {ProgramName(commandLine)};
    for (BlanksPass(commandLine); !commandLine.empty(); BlanksPass(commandLine)) {
        arguments.push_back(Argument(commandLine));
    }
    return arguments;
}

}  // namespace platform::host
