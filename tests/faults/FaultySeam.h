#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "SeamCalls.h"
#include "common/Text.h"
#include "platform/WindowSystem.h"

// Injects faults into the seam. This test program is linked so that every call listed in SeamCalls.cmake first reaches
// FaultySeam.cpp, which counts it and can let it fail or run an action before it. Calls within the platform are neither
// counted nor made to fail.
enum class Seam : std::size_t {
#define SEAM_NAME(name, symbol) name,
    SEAM_CALLS(SEAM_NAME) Count
#undef SEAM_NAME
};

// A call that fails with `result` and does nothing, with two exceptions: a failing close still closes, and a failing
// write writes half of its data. A failing call that returns bytes returns none; one that returns text returns two
// lines.
struct SeamFault {
    Seam call = Seam::Count;  // no fault
    int occurrence = 0;       // 1 is the first call since SeamStart
    std::int64_t result = 0;
};

// An action of another process or of the user, immediately before a call.
struct SeamHook {
    Seam call = Seam::Count;
    int occurrence = 0;
    std::function<void()> action{};
};

// Counts calls and applies the fault and the hook only between these two calls. SeamStop returns the message boxes
// shown in between, except questions and success messages: the number of the box's type, a space and its text.
void SeamStart(const SeamFault& fault, const SeamHook& hook = {});
Text SeamStop();

// Returns the number of times each function was called since the last SeamStart, without those that weren't called.
std::map<Seam, int> SeamCalls();

// Returns the calls from ShellExecuteA on (see SeamCalls.cmake) since the last SeamStart, one per line: the name and
// the arguments, each after a "|". "it" is the process or window that was opened last.
std::string SeamRecord();

// Return the window that was created last, and its event handlers.
platform::Handle SeamWindow();
platform::WindowEvents SeamEvents();

// Returns the results with which a call can fail, each with the description that ends the resulting message.
std::map<std::int64_t, Text> FailuresOf(Seam call);
