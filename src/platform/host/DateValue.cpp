// Formats dates with German regional settings.
#include "platform/host/DateValue.h"

#include <array>
#include <cmath>

#include "platform/Regional.h"

namespace platform {

namespace {

constexpr double Epoch = 25569;  // the date value of 1 January 1970
constexpr int SecondsPerDay = 86400;

}  // namespace

double host::DateValueOf(std::time_t moment) {
    std::tm local{};
    localtime_r(&moment, &local);
    return Epoch + static_cast<double>(timegm(&local)) / SecondsPerDay;
}

std::u16string VarBstrFromDate(double date) {
    const std::time_t moment = std::llround((date - Epoch) * SecondsPerDay);
    const bool isMidnight = moment % SecondsPerDay == 0;
    std::tm calendar{};
    gmtime_r(&moment, &calendar);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), isMidnight ? "%d.%m.%Y" : "%d.%m.%Y %H:%M:%S", &calendar);
    return TextFromAnsi(text.data());
}

}  // namespace platform
