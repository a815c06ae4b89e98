#include "platform/host/LocalDate.h"

#include <algorithm>
#include <chrono>

namespace platform::host {

double LocalDate(std::time_t moment) {
    using namespace std::chrono;
    std::tm local{};
    localtime_r(&moment, &local);
    const sys_days day = sys_days(year(local.tm_year + 1900) / 1 / 1) + days(local.tm_yday);
    const double days = static_cast<double>((day - sys_days(December / 30 / 1899)).count());
    // A leap second has no date value of its own.
    const double fraction = (local.tm_hour * 3600 + local.tm_min * 60 + std::min(local.tm_sec, 59)) / 86400.0;
    return days < 0 ? days - fraction : days + fraction;
}

}  // namespace platform::host
