#pragma once

#include "common/Text.h"

// Time stamps of fixed width that sort chronologically. A date value counts days since 30 December 1899; its fraction,
// without the sign, is the time of day. 0 means that no date is set. A date outside the years 100 to 9999 raises 5
// (invalid argument).

// Returns a stamp such as "20171216 101640", rounded to the nearest second, or 15 spaces if no date is set.
Text DateTimeStamp(double when);

// Returns a stamp such as "20171216", or an empty string if no date is set.
Text DateStamp(double when);
