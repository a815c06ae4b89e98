#pragma once

#include <cstdint>
#include <string>

// The seam with faults in it. This test program is linked so that each call of the platform that can fail
// (SeamCalls.inc) passes through here first: it is counted, and one of them can be made to fail. Calls that the
// platform makes within itself are not counted and do not fail.
enum class Seam {
#define SEAM_CALL(result, name, ...) name,
#include "faults/SeamCalls.inc"
#undef SEAM_CALL
    Count
};

std::string SeamName(Seam call);

// One call that fails with `result` and does nothing, but for two kinds: a close closes all the same, and a write
// writes a half. A call that gives a text or a range gives an empty one.
struct SeamFault {
    Seam call = Seam::Count;  // none
    int occurrence = 0;       // from 1, counted from SeamStart on
    std::int64_t result = 0;
};

// Calls are counted, and the fault happens, between these two alone.
void SeamStart(const SeamFault& fault);
void SeamStop();

// How often it was called from the last SeamStart on.
int SeamCalls(Seam call);

// Keys, files and processes opened through the seam and not closed, since the program's start.
int SeamOpenHandles();
