#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform::host {

// The arguments of a command line, the program's name first. Blanks part them, double quotes hold blanks together, and
// nothing else has a meaning.
std::vector<std::string> CommandLineArguments(std::string_view commandLine);

}  // namespace platform::host
