#include <algorithm>
#include <tuple>
#include <vector>

#include "Check.h"
#include "faults/FaultMachine.h"
#include "host/MachineFiles.h"
#include "installcheck/VcoreTest.h"
#include "samples/InstalledSuite.h"

namespace {

// Returns the report of a check during which one call fails. Checks that no handle leaks and no error stays pending.
Text ReportUnder(const SeamFault& fault) {
    VcoreTest check;
    CheckNoHandleLeaks([&] {
        SeamStart(fault);
        const bool passed = check.Ok(false);
        SeamStop();
        CHECK(passed == check.Text().ends_with(u"[Status]\r\nOK\r\n"));
    });
    CHECK(LastError().Description().empty());
    return check.Text();
}

}  // namespace

TEST_CASE("A failing call changes only its own row in the check's report") {
    using enum Seam;
    const FaultMachine machine;
    const std::vector<Text> faultless = Split(ReportUnder({}), u'\n');
    for (const auto& [call, result, row] : {std::tuple<Seam, int, Text>{FindNormalFile, 0, u"*** File not Found ***\r"},
                                            {GetFileVersionInfoSizeA, 0, u"Version(0.0.0.0)"},
                                            {GetFileVersionInfoA, 0, u"Version(0.0.0.0)"},
                                            {VerQueryValueA, 0, u"Version(0.0.0.0)"},
                                            {DateLastModified, 5, u"Release()"},
                                            {CreateObject, 5, u", Test=*** "}}) {
        int changed = 0;
        for (const Text& line : Split(ReportUnder({call, 1, result}), u'\n')) {
            if (std::ranges::count(faultless, line) == 0 && !line.starts_with(u"Error=")) {
                ++changed;
                CHECK(line.find(row) != Text::npos);
            }
        }
        CHECK(changed == 1);
    }
}

TEST_CASE("A failed check is reported even if the clipboard or check window is unavailable") {
    FaultMachine machine({"sevCmd4.ocx"});
    CHECK(machine.Session("x\n", {Seam::ClipboardSet, 1, 0}).messages == u"check failed");
    CHECK(machine.Session("x\n", {Seam::ClipboardClear, 1, 0}).messages == u"check failed, report copied");
    CHECK(DiskFile(OnMachine("clipboard.txt"))
              .value_or("")
              .ends_with("\r\n[Status]\r\nError=*** Es fehlen Vandrel Core Elements! ***\r\n"));
    CHECK(machine.Session("OK\n", {Seam::WindowCreate, 1, 0})
              .messages.starts_with(u"48 Kann Programm nicht ausführen:\r\n"));
}

TEST_CASE("A multi-line message takes one row, and a failed initialisation fails the check") {
    const FaultMachine machine({"VCUTIL1.DebugLog"});
    CHECK(ReportUnder({Seam::StatusText, 1, 0}).find(u", Test=*** erste Zeile zweite Zeile ***\r\n") != Text::npos);
    InstalledSuiteAdd({});
    DiskFile(OnMachine("components"), "sevDTA30.dll!sevDTA_Init=-1\n");
    const Text report = ReportUnder({});
    CHECK(report.find(u", Test=*** sevDTA30_Init failed ***\r\n") != Text::npos);
    CHECK(report.ends_with(u"Error=*** Es fehlen Vandrel Core Elements! ***\r\n"));
}
