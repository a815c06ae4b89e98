#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "SeamCalls.h"
#include "common/Text.h"
#include "platform/WindowSystem.h"

// The seam with faults in it. This test program is linked so that each call of the platform that SeamCalls.cmake names
// passes through here first: it is counted, and one of them can be made to fail, or preceded by something else. Calls
// that the platform makes within itself are not counted and do not fail.
enum class Seam : std::size_t {
#define SEAM_NAME(name, symbol) name,
    SEAM_CALLS(SEAM_NAME) Count
#undef SEAM_NAME
};

// One call that fails with `result` and does nothing, but for two kinds: a close closes all the same, and a write
// writes a half. A call that gives bytes gives none, and one that gives a text one of two lines.
struct SeamFault {
    Seam call = Seam::Count;  // none
    int occurrence = 0;       // from 1, counted from SeamStart on
    std::int64_t result = 0;
};

// What another process, or the user, does right before one call.
struct SeamHook {
    Seam call = Seam::Count;
    int occurrence = 0;
    std::function<void()> action{};
};

// Calls are counted, and the fault and the hook happen, between these two alone. The second gives what message boxes
// told meanwhile but for questions and successes: the number of its kind, a blank and its text.
void SeamStart(const SeamFault& fault, const SeamHook& hook = {});
Text SeamStop();

// How often each call was made from the last SeamStart on; those that were not made are not there.
std::map<Seam, int> SeamCalls();

// Returns the calls from ShellExecuteA on (see SeamCalls.cmake) since the last SeamStart, one per line: the name and
// the arguments, each after a "|". "it" is the process or window that was opened last.
std::string SeamRecord();

// The window that was created last, and what it is told of its events.
platform::Handle SeamWindow();
platform::WindowEvents SeamEvents();

// The results with which a call can fail, each with what a message that goes on behind its head ends in.
std::map<std::int64_t, Text> FailuresOf(Seam call);
