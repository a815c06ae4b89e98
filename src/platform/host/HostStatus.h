#pragma once

#include "platform/Handle.h"

namespace platform::host {

// The status that Windows gives for the failure that an errno number tells; StatusIoDevice for one without a like.
Status StatusFromErrno(int number);

}  // namespace platform::host
