#include "platform/windows/DateValue.h"

namespace platform::windows {

double DateValueOf(SYSTEMTIME time) {
    double date = 0;
    ::SystemTimeToVariantTime(&time, &date);
    return date;
}

}  // namespace platform::windows
