#pragma once

#include <chrono>
#include <ctime>

// Date values: days since 30 December 1899 in local time, the time of day as the fraction.
namespace platform::host {

inline constexpr std::chrono::sys_days DateValueStart = std::chrono::December / 30 / 1899;
inline constexpr int SecondsPerDay = 86400;

// The date value of a moment.
double DateValueOf(std::time_t moment);

}  // namespace platform::host
