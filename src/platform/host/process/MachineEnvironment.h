#pragma once

#include <map>
#include <string>

namespace platform::host {

// The machine's environment variables: the lines "NAME=value" of its file `environment`, in UTF-8, read at each call.
// Names are in capital letters, in which they are found without regard to case; a later line wins, and a line without a
// name or without "=" is passed over.
std::map<std::u16string, std::u16string> MachineEnvironment();

}  // namespace platform::host
