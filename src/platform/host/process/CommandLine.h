#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform::host {

// The arguments of a command line under Windows' rules. The program's name comes first and ends at a blank, or at its
// second double quote when it begins with one. In the others double quotes hold blanks together, a doubled one within
// them is one of the text, and backslashes before a double quote count half: an odd one left over takes the quote's
// meaning from it. Nothing else has a meaning.
std::vector<std::string> CommandLineArguments(std::string_view commandLine);

}  // namespace platform::host
