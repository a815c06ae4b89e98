#pragma once

#include <map>
#include <string>

#include "platform/host/NameOrder.h"

namespace platform::host {

// The machine's environment variables: the lines "NAME=value" of its file `environment`, in UTF-8. Names are found
// without regard to case, a later line wins, and a line without a name or without "=" is passed over. Read again when
// the file or the machine has changed: the reference is good until the next call.
using MachineVariables = std::map<std::u16string, std::u16string, NameLess>;
const MachineVariables& MachineEnvironment();

}  // namespace platform::host
