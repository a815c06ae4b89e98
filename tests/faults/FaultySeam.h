#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "SeamCalls.h"
#include "common/Text.h"

// Injects faults into the seam. This test program is linked so that every call listed in SeamCalls.cmake first reaches
// FaultySeam.cpp, which counts the call and can make it fail. Calls within the platform are neither counted nor made to
// fail.
enum class Seam : std::size_t {
#define SEAM_NAME(name, symbol) name,
    SEAM_CALLS(SEAM_NAME) Count
#undef SEAM_NAME
};

// Makes a call do nothing and fail with `result`. However, a failing close still closes, and a failing write writes
// half of its data. A failing call that returns bytes returns none; a failing call that returns text returns two lines.
struct SeamFault {
    Seam call = Seam::Count;  // by default, no fault
    int occurrence = 0;       // 1 is the first call since SeamStart
    std::int64_t result = 0;
};

// The calls made between SeamStart and SeamStop.
struct SeamRecord {
    std::map<Seam, int> calls{};  // how often each function was called; omits functions that weren't called
    Text messages{};              // the message boxes, each as "<type> <text>", except questions and success messages
    std::string started{};        // the arguments of the last ShellExecuteA or StartCommandLine, each followed by "|"
};

// Between SeamStart and SeamStop, calls are recorded and the fault is active. Another SeamStop returns the same record.
void SeamStart(const SeamFault& fault = {});
const SeamRecord& SeamStop();

// Returns the results with which a call can fail. Each maps to the description that ends the resulting message.
std::map<std::int64_t, Text> FailuresOf(Seam call);
