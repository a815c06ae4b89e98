#pragma once

#include <functional>
#include <set>
#include <string>

#include "TestMachine.h"
#include "faults/FaultySeam.h"

// Runs `steps`, and checks that each key, file and process that they opened is closed.
void AllClosedBehind(const std::function<void()>& steps);

// What the user was told of failures while the program ran, and what it left behind.
struct Outcome {
    Text told;  // in message boxes, as SeamStop gives it; "check failed" for the check's window, ", report copied" for
                // its hint
    std::string left;  // both tables as item strings, and the control file, which of an export are its two tables
    bool operator==(const Outcome&) const = default;
};

// A machine with the whole suite, two tables, a control file with other ones, and an editor that ends at once.
class FaultMachine : public TestMachine {
public:
    // Without the components of these names (InstalledSuiteAdd).
    explicit FaultMachine(const std::set<std::string>& without = {});

    // Tables and control file as they are at the beginning.
    void Reset();

    // The program from its start to its end, fed with `input`. Checks that it leaves no handle, no file beside the
    // control file and no error behind.
    Outcome Session(const std::string& input, const SeamFault& fault = {}, const SeamHook& hook = {});

    // What is there now, as in Outcome: a line for each table, and ";" for the line ends of the control file.
    [[nodiscard]] std::string Left() const;
};
