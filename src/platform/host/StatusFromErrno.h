#pragma once

#include "platform/Handle.h"

namespace platform::host {

// Returns the Windows status for an errno, or StatusIoDevice if there is no equivalent.
Status StatusFromErrno(int number);

}  // namespace platform::host
