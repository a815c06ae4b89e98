#pragma once

#include <array>
#include <string_view>

// The suite's run-time components, for samples and tests; the program has a list of its own. components/CMakeLists.txt
// reads the entries too, each from a line by itself.

enum class SuiteFolder {
    System,    // "System32" in the folder that SystemRoot names
    Common,    // that of CommonProgramFiles
    Core,      // the core package's own
    Programs,  // that of ProgramFiles
};

struct SuiteComponent {
    std::string_view section;  // of the check's report
    SuiteFolder folder;
    std::string_view file;                                     // below the folder
    std::string_view row = file.substr(file.rfind('\\') + 1);  // its name in the section
};

// In the order of the report.
inline constexpr std::array<SuiteComponent, 26> SuiteComponents = {{
    {"Microsoft Core", SuiteFolder::System, "MSVBVM60.DLL"},
    {"Microsoft Core", SuiteFolder::System, "OLEAUT32.DLL"},
    {"Microsoft Core", SuiteFolder::System, "OLEPRO32.DLL"},
    {"Microsoft Core", SuiteFolder::System, "ASYCFILT.DLL"},
    {"Microsoft Core", SuiteFolder::System, "STDOLE2.TLB"},
    {"Microsoft Core", SuiteFolder::System, "COMCAT.DLL"},
    {"Microsoft Core", SuiteFolder::System, "VB6DE.DLL"},
    {"Microsoft Core", SuiteFolder::System, "MSSTDFMT.DLL"},
    {"Microsoft Core", SuiteFolder::System, "SCRRUN.DLL"},
    {"Microsoft Components", SuiteFolder::System, "COMDLG32.OCX"},
    {"Microsoft Components", SuiteFolder::System, "MSCOMCTL.OCX"},
    {"Microsoft Components", SuiteFolder::System, "MSCOMCT2.OCX"},
    {"Microsoft Components", SuiteFolder::System, "COMCT332.OCX"},
    {"Microsoft Shared", SuiteFolder::Common, "Microsoft Shared\\DAO\\DAO360.DLL"},
    {"Microsoft Shared", SuiteFolder::Common, "Designer\\MSADDNDR.DLL"},
    {"SevTools Components", SuiteFolder::System, "sevPopUp2.dll", "sevPopUp2.PopUp"},
    {"SevTools Components", SuiteFolder::System, "sevImLib2.dll"},
    {"SevTools Components", SuiteFolder::System, "sevCmd4.ocx"},
    {"SevTools Components", SuiteFolder::System, "sevEin20.ocx"},
    {"SevTools Components", SuiteFolder::System, "sevClb30.ocx"},
    {"SevTools Components", SuiteFolder::System, "sevMenuXP2.ocx"},
    {"SevTools Components", SuiteFolder::System, "sevXPCtl.ocx"},
    {"SevTools Components", SuiteFolder::System, "sevDataGrid3.ocx"},
    {"SevTools Components", SuiteFolder::System, "sevDTA30.dll"},
    {"Vandrel Components", SuiteFolder::Core, "vcutil1.dll"},
    {"Vandrel Components", SuiteFolder::Programs, "Vandrel\\Core\\V1\\Extras\\MazeWalker.exe"},
}};
