#pragma once

#include "platform/Handle.h"

namespace platform::host {

// The status that Windows gives for the failure that an errno number tells; StatusIoDevice where Windows has no like.
Status StatusFromErrno(int number);

}  // namespace platform::host
