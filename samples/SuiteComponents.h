#pragma once

#include <array>
#include <string_view>

// The suite's run-time components, for samples and tests. The program doesn't use this list.

enum class SuiteFolder {
    System,    // %SystemRoot%\System32
    Common,    // %CommonProgramFiles%
    Core,      // the core package's installation folder
    Programs,  // %ProgramFiles%
};

struct SuiteComponent {
    std::string_view section;  // name of the component's section in the check's report
    SuiteFolder folder;
    std::string_view file;             // path below the folder
    std::string_view row;              // name of the component's row in the report
    std::string_view object;           // ProgID of the object that the check creates; may be empty
    std::string_view classIdentifier;  // CLSID of the object
};

// In the order of the report. Generated from components.csv.
inline constexpr auto SuiteComponents = std::to_array<SuiteComponent>({
#include "samples/SuiteComponents.inc"
});
