#pragma once

#include <ctime>

// Date values are days since 30 December 1899 in local time, with the time of day as the fraction.
namespace platform::host {

constexpr double Epoch = 25569;  // the date value of 1 January 1970
constexpr int SecondsPerDay = 86400;

inline double DateValueOf(std::time_t moment) {
    std::tm local{};
    localtime_r(&moment, &local);
    return Epoch + static_cast<double>(timegm(&local)) / SecondsPerDay;
}

}  // namespace platform::host
