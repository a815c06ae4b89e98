#pragma once

#include <ctime>

namespace platform::host {

// The date value (days since 30 December 1899, the time of day as the fraction) of a moment in local time.
double LocalDate(std::time_t moment);

}  // namespace platform::host
