// Dates under German regional settings.
#include "platform/host/DateValue.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "platform/Regional.h"

namespace platform {

namespace {

constexpr std::chrono::sys_days DateValueStart = std::chrono::December / 30 / 1899;
constexpr int SecondsPerDay = 86400;

}  // namespace

double host::DateValueOf(std::time_t moment) {
    using namespace std::chrono;
    std::tm local{};
    localtime_r(&moment, &local);
    const sys_days day = sys_days(year(local.tm_year + 1900) / 1 / 1) + days(local.tm_yday);
    const int second = local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
    return static_cast<double>((day - DateValueStart).count()) + static_cast<double>(second) / SecondsPerDay;
}

std::u16string VarBstrFromDate(double date) {
    using namespace std::chrono;
    const seconds sinceStart(std::llround(date * SecondsPerDay));
    const sys_days day = DateValueStart + floor<days>(sinceStart);
    const year_month_day calendar(day);
    const hh_mm_ss time(sinceStart - floor<days>(sinceStart));
    std::array<char, 48> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%02u.%02u.%04d %02d:%02d:%02d", static_cast<unsigned>(calendar.day()),
                  static_cast<unsigned>(calendar.month()), static_cast<int>(calendar.year()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    const std::string_view text(buffer.data());
    const bool midnight = time.to_duration() == seconds(0);
    return TextFromAnsi(std::string(midnight ? text.substr(0, text.find(' ')) : text));
}

}  // namespace platform
