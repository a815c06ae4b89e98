#pragma once

#include <array>
#include <string_view>

// The suite's run-time components, for samples and tests; the program has a list of its own.

enum class SuiteFolder {
    System,    // "System32" in the folder that SystemRoot names
    Common,    // that of CommonProgramFiles
    Core,      // the core package's own
    Programs,  // that of ProgramFiles
};

struct SuiteComponent {
    std::string_view section;  // of the check's report
    SuiteFolder folder;
    std::string_view file;  // below the folder
    std::string_view row;   // its name in the section
};

// In the order of the report; made from components.csv.
inline constexpr auto SuiteComponents = std::to_array<SuiteComponent>({
#include "samples/SuiteComponents.inc"
});
