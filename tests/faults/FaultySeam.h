#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "common/Text.h"

// The seam with faults in it. This test program is linked so that each call of the platform that can fail
// (SeamCalls.inc) passes through here first: it is counted, and one of them can be made to fail. Calls that the
// platform makes within itself are not counted and do not fail.
enum class Seam : std::size_t {
#define SEAM_CALL(result, name, ...) name,
#include "faults/SeamCalls.inc"
#undef SEAM_CALL
    Count
};

// One call that fails with `result` and does nothing, but for two kinds: a close closes all the same, and a write
// writes a half. A call that gives a text or a range gives an empty one.
struct SeamFault {
    Seam call = Seam::Count;  // none
    int occurrence = 0;       // from 1, counted from SeamStart on
    std::int64_t result = 0;
};

// Calls are counted, and the fault happens, between these two alone. The second gives the failures that message boxes
// told meanwhile.
void SeamStart(const SeamFault& fault);
Text SeamStop();

// How often each call was made from the last SeamStart on.
struct SeamCounts : std::array<int, static_cast<std::size_t>(Seam::Count)> {
    [[nodiscard]] int Of(Seam call) const { return (*this)[static_cast<std::size_t>(call)]; }
};
SeamCounts SeamCalls();

// Keys, files and processes opened through the seam and not closed, since the program's start.
int SeamOpenHandles();

// Gives `check` each fault that can befall the calls that were counted in `all` and not yet in `earlier`: each of them
// with each result of its failures, and with what a message tells of that one.
void EachFault(const SeamCounts& earlier, const SeamCounts& all,
               const std::function<void(const SeamFault& fault, const Text& description)>& check);
