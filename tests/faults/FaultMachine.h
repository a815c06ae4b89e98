#pragma once

#include <functional>
#include <set>
#include <string>

#include "TestMachine.h"
#include "faults/FaultySeam.h"

// Runs `steps` and checks that every key, file and process handle that they opened is closed.
void CheckNoHandleLeaks(const std::function<void()>& steps);

// The messages that a program run showed and the state that it left.
struct Outcome {
    Text messages;  // as SeamStop returns them; "check failed" for the check's window, ", report copied" for its hint
    std::string state;  // as State() returns it
    bool operator==(const Outcome&) const = default;
};

// A machine with the complete suite, an entry list in both tables, a control file with other entries, and an editor
// that exits immediately.
class FaultMachine : public TestMachine {
public:
    // Leaves out the components with these names (see InstalledSuiteAdd).
    explicit FaultMachine(const std::set<std::string>& without = {});

    // Restores the initial tables and control file.
    void Reset();

    // Runs the program from start to end with `input`. Checks that it leaves no handle, no error and no other file in
    // the control file's folder.
    Outcome Session(const std::string& input, const SeamFault& fault = {}, const SeamHook& hook = {});

    // Returns both tables as item strings, one per line, and the control file with its line ends replaced by ";". Of an
    // exported control file, returns only the two tables.
    [[nodiscard]] std::string State() const;
};
