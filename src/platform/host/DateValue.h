#pragma once

#include <ctime>

namespace platform::host {

// Converts a time to a date value: days since 30 December 1899 in local time, with the time of day as the fraction.
double DateValueOf(std::time_t moment);

}  // namespace platform::host
