#pragma once

#include "platform/windows/Win32.h"

namespace platform::windows {

// A point of time as days since 30 December 1899, with the time of day, to the second, as the fraction.
double DateValueOf(SYSTEMTIME time);

}  // namespace platform::windows
