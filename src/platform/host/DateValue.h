#pragma once

#include <ctime>

namespace platform::host {

// Returns the date value of a moment: days since 30 December 1899 in local time, with the time of day as the fraction.
double DateValueOf(std::time_t moment);

}  // namespace platform::host
