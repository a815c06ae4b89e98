#pragma once

#include "common/Text.h"

// Stamps of fixed width that sort in the order of time. A date value counts days since 30 December 1899; its fraction,
// without its sign, is the time of day. 0 means that no date is set. A date outside the years 100 to 9999 is an invalid
// argument (5).

// "20171216 101640", to the nearest second; 15 blanks for no date.
Text DateTimeStamp(double when);

// "20171216"; the empty text for no date.
Text DateStamp(double when);
