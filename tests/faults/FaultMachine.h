#pragma once

#include <functional>
#include <set>
#include <string>

#include "TestMachine.h"
#include "faults/FaultySeam.h"

// Runs `steps` and checks that it closes all key, file and process handles that it opens.
void CheckNoHandleLeaks(const std::function<void()>& steps);

// The messages a program run showed and the state it left behind.
struct Outcome {
    Text messages;      // SeamStop's result, then "check failed" and ", report copied" if the program reported these
    std::string state;  // the result of State()
    bool operator==(const Outcome&) const = default;
};

// A machine with the complete suite, entries in both tables, a control file with other entries, and an editor that
// exits immediately.
class FaultMachine : public TestMachine {
public:
    // Omits the components in `without` (see InstalledSuiteAdd).
    explicit FaultMachine(const std::set<std::string>& without = {});

    // Restores the initial tables and control file.
    void Reset();

    // Runs the program with `input` until it exits. Checks that no handle leaks, no error stays pending, and the
    // control file's folder contains no other file.
    Outcome Session(const std::string& input, const SeamFault& fault = {}, const SeamHook& hook = {});

    // Returns both tables as item strings, one per line, then the control file with its line endings replaced by ";".
    // An exported control file is reduced to its tables.
    [[nodiscard]] std::string State() const;
};
