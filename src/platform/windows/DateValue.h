#pragma once

#include "platform/windows/Win32.h"

namespace platform::windows {

// Converts a time to a date value: days since 30 December 1899, with the time of day, in whole seconds, as the
// fraction.
double DateValueOf(SYSTEMTIME time);

}  // namespace platform::windows
