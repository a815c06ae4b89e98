#pragma once

#include <set>
#include <string>

#include "TestMachine.h"
#include "faults/FaultySeam.h"

// What an operation leaves behind, and what the user was told on the way.
struct Outcome {
    std::string told;       // the messages that were shown, in the order of ToldTexts
    std::string main;       // the main product's table as an item string
    std::string reporting;  // the reporting module's
    std::string file;       // the control file; of one that was exported, its tables
    bool operator==(const Outcome&) const = default;
};

// What stands on a FaultMachine before each operation.
inline const Outcome Before = {"", "=3;hugo=0;ruedi=1;", "=3;hugo=1;ruedi=99;",
                               "[Tallora]\r\na=1\r\nb=2\r\nc=3\r\n[Reporting]\r\nd=4\r\ne=5\r\n"};

// A machine with the whole suite, two tables, a control file with other ones, and an editor that ends at once.
class FaultMachine : public TestMachine {
public:
    // Without the components of these names (InstalledSuiteAdd).
    explicit FaultMachine(const std::set<std::string>& without = {});

    // Tables and control file as Before says.
    void Reset();

    // The program from its start to its end, fed with `input`. Checks that it leaves no handle, no file beside the
    // control file and no error behind.
    Outcome Session(const std::string& input, const SeamFault& fault = {});

    [[nodiscard]] Outcome Present(const std::string& told) const;
    // True when the folder of the control file holds nothing else.
    [[nodiscard]] bool FolderClean() const;
};
