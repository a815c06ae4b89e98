#pragma once

#include "common/Text.h"

// Fixed-width timestamps that sort chronologically. A date value is a number of days since 30 December 1899; the
// absolute value of its fraction is the time of day. 0 means that no date is set. Dates outside the years 100 to 9999
// raise 5 (invalid argument).

// Returns a timestamp such as "20171216 101640", rounded to the nearest second, or 15 spaces if no date is set.
Text DateTimeStamp(double when);

// Returns a date stamp such as "20171216", or an empty string if no date is set.
Text DateStamp(double when);
