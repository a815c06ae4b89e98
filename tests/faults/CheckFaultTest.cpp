#include <string>
#include <vector>

#include "Check.h"
#include "common/Text.h"
#include "faults/FaultMachine.h"
#include "installcheck/VcoreTest.h"

namespace {

struct Report {
    bool passed;
    std::vector<Text> lines;
};

Report ReportUnder(const SeamFault& fault) {
    SeamStart(fault);
    VcoreTest check;
    const bool passed = check.Ok(false);
    SeamStop();
    return {passed, Split(check.Text(), u'\n')};
}

struct CheckFault {
    Seam call;
    std::vector<std::int64_t> results;
    Text row;     // what the one row says that differs from a report without fault; empty for none
    bool passes;  // the whole check
    bool mayGoUnnoticed = false;
};

void CheckOne(const CheckFault& fault, const Report& sound, const Report& report) {
    REQUIRE(report.lines.size() == sound.lines.size());
    const std::size_t status = sound.lines.size() - 2;
    std::vector<Text> changed;
    for (std::size_t line = 0; line < status; ++line) {
        if (report.lines[line] != sound.lines[line]) {
            changed.push_back(report.lines[line]);
        }
    }
    const bool unnoticed = fault.row.empty() || (fault.mayGoUnnoticed && changed.empty());
    CHECK(changed.size() == (unnoticed ? 0 : 1));
    CHECK((unnoticed || changed.front().find(fault.row) != Text::npos));
    CHECK(report.passed == (unnoticed || fault.passes));
    CHECK(report.lines[status] == (report.passed ? u"OK\r" : u"Error=*** Es fehlen Vandrel Core Elements! ***\r"));
}

}  // namespace

TEST_CASE("Faults of the check change the row that they belong to, and the result when it depends on it") {
    const FaultMachine machine;
    const Text noProduct = u"vcutil1.dll=Path(\\vcutil1.dll), *** File not Found ***";
    const std::vector<CheckFault> faults = {
        {Seam::FindNormalFile, {0}, u"*** File not Found ***", false},
        {Seam::GetFileVersionInfoSizeA, {0, -1}, u"Version(0.0.0.0)", true},
        {Seam::GetFileVersionInfoA, {0}, u"Version(0.0.0.0)", true},
        {Seam::VerQueryValueA, {0}, u"Version(0.0.0.0)", true},
        {Seam::DateLastModified, {2, 3, 5}, u"Release()", true},
        {Seam::CreateObject, {static_cast<std::int32_t>(0x80040154U)}, u", Test=*** ", false},
        {Seam::CallTextFunction, {127}, {}, true},
        {Seam::CreateFileA, {5}, {}, true},
        {Seam::RegOpenKeyExA, {2, 5, 1018}, noProduct, false, true},
        {Seam::RegEnumKeyExA, {5, 6, 234, 259, 1018}, noProduct, false, true},
        {Seam::RegQueryValueExA, {2, 5, 6, 234, 1018}, noProduct, false, true},
        {Seam::RegCloseKey, {6}, {}, true},
    };
    const Report sound = ReportUnder({});
    REQUIRE(sound.passed);
    const int openHandles = SeamOpenHandles();
    for (const CheckFault& fault : faults) {
        ReportUnder({});
        const int last = SeamCalls(fault.call);
        INFO(SeamName(fault.call));
        CHECK(last > 0);
        for (int occurrence = 1; occurrence <= last; ++occurrence) {
            for (const std::int64_t result : fault.results) {
                CAPTURE(occurrence);
                CAPTURE(result);
                CheckOne(fault, sound, ReportUnder({fault.call, occurrence, result}));
                CHECK(SeamOpenHandles() == openHandles);
                CHECK(LastError().Description().empty());
            }
        }
    }
}

TEST_CASE("A failed check is shown whatever becomes of the clipboard, and told when it has no window") {
    FaultMachine machine({"sevCmd4.ocx"});
    for (const Seam call : {Seam::ClipboardClear, Seam::ClipboardSet}) {
        CHECK(machine.Session("x\n", {call, 1, 0}).told == "Vandrel Core Elements V1\n");
    }
    CHECK(machine.Session("OK\n", {Seam::WindowCreate, 1, 0}).told ==
          "Kann Programm nicht ausführen:\nNicht genügend Speicher\n");
}
