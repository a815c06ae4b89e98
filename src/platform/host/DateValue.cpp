#include "platform/host/DateValue.h"

namespace platform::host {

double DateValueOf(std::time_t moment) {
    using namespace std::chrono;
    std::tm local{};
    localtime_r(&moment, &local);
    const sys_days day = sys_days(year(local.tm_year + 1900) / 1 / 1) + days(local.tm_yday);
    const int second = local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
    return static_cast<double>((day - DateValueStart).count()) + static_cast<double>(second) / SecondsPerDay;
}

}  // namespace platform::host
