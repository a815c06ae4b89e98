#include <algorithm>
#include <vector>

#include "Check.h"
#include "faults/FaultMachine.h"
#include "host/MachineFiles.h"
#include "installcheck/VcoreTest.h"
#include "samples/InstalledSuite.h"

namespace {

// The report of a check with a fault in it; its result follows from the rows, and stands below them.
std::vector<Text> ReportUnder(const SeamFault& fault) {
    VcoreTest check;
    bool passed = false;
    AllClosedBehind([&] {
        SeamStart(fault);
        passed = check.Ok(false);
        SeamStop();
    });
    CHECK(LastError().Description().empty());
    const Text report = check.Text();
    const std::size_t status = report.find(u"[Status]\r\n");
    CHECK(passed == (report.find(u"***") >= status));
    CHECK(report.substr(status + 10) == (passed ? u"OK\r\n" : u"Error=*** Es fehlen Vandrel Core Elements! ***\r\n"));
    return Split(report.substr(0, status), u'\n');
}

}  // namespace

TEST_CASE("Faults of the check change the row that they belong to, and the result when it depends on it") {
    using enum Seam;
    struct {
        std::vector<Seam> calls;
        Text row;  // what the one row that differs says
        bool mayGoUnnoticed = false;
    } const effects[] = {
        {{FindNormalFile}, u"*** File not Found ***"},
        {{GetFileVersionInfoSizeA, GetFileVersionInfoA, VerQueryValueA}, u"Version(0.0.0.0)"},
        {{DateLastModified}, u"Release()"},
        {{CreateObject}, u", Test=*** "},
        {{RegOpenKeyExA, RegEnumKeyExA, RegQueryValueExA},
         u"vcutil1.dll=Path(\\vcutil1.dll), *** File not Found ***",
         true},
    };
    const FaultMachine machine;
    const std::vector<Text> sound = ReportUnder({});
    REQUIRE(std::ranges::none_of(sound, [](const Text& line) { return line.find(u"***") != Text::npos; }));
    EachFault({}, SeamCalls(), [&](const SeamFault& fault, const Text& /*description*/) {
        std::vector<Text> changed;
        const std::vector<Text> lines = ReportUnder(fault);
        std::ranges::copy_if(lines, std::back_inserter(changed),
                             [&](const Text& line) { return std::ranges::count(sound, line) == 0; });
        CHECK(lines.size() == sound.size());
        const auto effect = std::ranges::find_if(
            effects, [&](const auto& each) { return std::ranges::count(each.calls, fault.call) > 0; });
        const bool unnoticed = effect == std::end(effects) || (effect->mayGoUnnoticed && changed.empty());
        CHECK(changed.size() == (unnoticed ? 0 : 1));
        CHECK((unnoticed || changed.front().find(effect->row) != Text::npos));
    });
}

TEST_CASE("A failed check is shown whatever becomes of the clipboard, and told when it has no window") {
    FaultMachine machine({"sevCmd4.ocx"});
    for (const Seam call : {Seam::ClipboardSet, Seam::ClipboardClear}) {
        CHECK(machine.Session("x\n", {call, 1, 0}).told == u"check failed");
    }
    CHECK(MachineFile("clipboard.txt").ends_with("\r\n[Status]\r\nError=*** Es fehlen Vandrel Core Elements! ***\r\n"));
    CHECK(
        machine.Session("OK\n", {Seam::WindowCreate, 1, 0}).told.starts_with(u"48 Kann Programm nicht ausführen:\r\n"));
}

TEST_CASE("A message of several lines stays in its row, and a library that is there and does not start fails") {
    const FaultMachine machine({"VCUTIL1.DebugLog"});
    const auto hasRow = [](const std::vector<Text>& report, const Text& end) {
        return std::ranges::any_of(report, [&](const Text& line) { return line.ends_with(end); });
    };
    CHECK(hasRow(ReportUnder({Seam::StatusText, 1, 0}), u", Test=*** erste Zeile zweite Zeile ***\r"));
    InstalledSuiteAdd({});
    MachineFile("components", "sevDTA30.dll!sevDTA_Init=-1\n");
    CHECK(hasRow(ReportUnder({}), u", Test=*** sevDTA30_Init failed ***\r"));
}
