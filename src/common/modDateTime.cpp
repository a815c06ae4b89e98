#include "common/modDateTime.h"

#include <chrono>
#include <cmath>
#include <cstdint>

#include "common/Error.h"
#include "common/modStringLibrary.h"

namespace {

constexpr std::int16_t StampWidth = 15;
constexpr std::int16_t DateWidth = 8;
constexpr std::int32_t SecondsPerDay = 86400;

constexpr std::chrono::sys_days BaseDate = std::chrono::year{1899} / 12 / 30;
constexpr std::chrono::sys_days FirstDate = std::chrono::year{100} / 1 / 1;
constexpr std::chrono::sys_days LastDate = std::chrono::year{9999} / 12 / 31;

Text TwoDigits(std::int32_t number) {
    return ZeroPadLong(number, 2);
}

// Returns the date `days` days after the base date.
std::chrono::year_month_day DayOf(double days) {
    if (!(days >= (FirstDate - BaseDate).count() && days <= (LastDate - BaseDate).count())) {
        Raise(RuntimeError::InvalidArgument);
    }
    return BaseDate + std::chrono::days(static_cast<std::int32_t>(days));
}

}  // namespace

Text DateTimeStamp(double when) {
    if (when == 0) {
        return Text(StampWidth, u' ');
    }
    double days = std::trunc(when);
    double seconds = std::round(std::abs(when - days) * SecondsPerDay);
    // The last half second of a day rounds up to the next day.
    if (seconds == SecondsPerDay) {
        days += 1;
        seconds = 0;
    }
    const std::chrono::year_month_day day = DayOf(days);
    const auto second = static_cast<std::int32_t>(seconds);
    return ZeroPadLong(static_cast<int>(day.year()), 4) + TwoDigits(static_cast<std::int32_t>(unsigned{day.month()})) +
           TwoDigits(static_cast<std::int32_t>(unsigned{day.day()})) + u" " + TwoDigits(second / 3600) +
           TwoDigits(second / 60 % 60) + TwoDigits(second % 60);
}

Text DateStamp(double when) {
    return Trim(MidFixed(DateTimeStamp(when), 1, DateWidth));
}
