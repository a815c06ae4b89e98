#pragma once

#include <string>

#include "platform/Handle.h"

namespace platform::host {

// What the user is told of a status that a file of the registry gave, with the file's path; empty for any other status.
std::u16string RegistryStatusText(Status status);

}  // namespace platform::host
