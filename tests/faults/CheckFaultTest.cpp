#include <algorithm>
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
    struct {
        SeamFault fault;
        Text row;
    } const effects[] = {
        {{FindNormalFile, 2, 0}, u"), *** File not Found ***\r"},
        {{GetFileVersionInfoSizeA, 1, 0}, u"Version(0.0.0.0)"},
        {{GetFileVersionInfoA, 1, 0}, u"Version(0.0.0.0)"},
        {{VerQueryValueA, 1, 0}, u"Version(0.0.0.0)"},
        {{DateLastModified, 1, 5}, u"Release()"},
        {{CreateObject, 1, 5}, u", Test=*** "},
    };
    const FaultMachine machine;
    const std::vector<Text> faultless = Split(ReportUnder({}), u'\n');
    for (const auto& effect : effects) {
        CAPTURE(effect.row);
        std::vector<Text> changed;
        std::ranges::copy_if(
            Split(ReportUnder(effect.fault), u'\n'), std::back_inserter(changed),
            [&](const Text& line) { return std::ranges::count(faultless, line) == 0 && !line.starts_with(u"Error="); });
        CHECK(changed.size() == 1);
        CHECK(changed.at(0).find(effect.row) != Text::npos);
    }
}

TEST_CASE("A failed check is reported even if the clipboard or its window is unavailable") {
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
