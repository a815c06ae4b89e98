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

void CheckOne(const CheckFault& fault, const Report& sound, const Report& report, int occurrence) {
    REQUIRE(report.lines.size() == sound.lines.size());
    std::vector<Text> changed;
    int probe = 0;
    for (std::size_t line = 0; line + 2 < sound.lines.size(); ++line) {
        probe += changed.empty() && sound.lines[line].find(u"=Path(") != Text::npos ? 1 : 0;
        if (report.lines[line] != sound.lines[line]) {
            changed.push_back(report.lines[line]);
        }
    }
    const bool unnoticed = fault.row.empty() || (fault.mayGoUnnoticed && changed.empty());
    CHECK(changed.size() == (unnoticed ? 0 : 1));
    CHECK(report.passed == (unnoticed || fault.passes));
    CHECK((report.lines == sound.lines) == unnoticed);
    if (!changed.empty()) {
        CHECK_MESSAGE(changed.front().find(fault.row) != Text::npos, changed.front());
    }
    if (fault.call == Seam::FindNormalFile) {
        CHECK(probe == occurrence);
    }
    const Text& status = report.lines[report.lines.size() - 2];
    CHECK(status == (report.passed ? u"OK\r" : u"Error=*** Es fehlen Vandrel Core Elements! ***\r"));
}

constexpr std::int64_t ClassNotRegistered = static_cast<std::int32_t>(0x80040154U);
constexpr std::int64_t ClassNameInvalid = static_cast<std::int32_t>(0x800401F3U);

}  // namespace

TEST_CASE("Faults of the check change the row that they belong to, and the result when it depends on it") {
    const FaultMachine machine;
    const Text missing = u"*** File not Found ***";
    const Text noProduct = u"vcutil1.dll=Path(\\vcutil1.dll), *** File not Found ***";
    const std::vector<CheckFault> faults = {
        {Seam::FindNormalFile, {0}, missing, false},
        {Seam::GetFileVersionInfoSizeA, {0, -1}, u"Version(0.0.0.0)", true},
        {Seam::GetFileVersionInfoA, {0}, u"Version(0.0.0.0)", true},
        {Seam::VerQueryValueA, {0}, u"Version(0.0.0.0)", true},
        {Seam::DateLastModified, {2, 3, 5}, u"Release()", true},
        {Seam::CreateObject, {ClassNotRegistered, ClassNameInvalid}, u", Test=*** ", false},
        {Seam::CallTextFunction, {126, 127}, {}, true},
        {Seam::CreateFileA, {2, 3, 5, 32}, {}, true},
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
                CheckOne(fault, sound, ReportUnder({fault.call, occurrence, result}), occurrence);
                CHECK(SeamOpenHandles() == openHandles);
                CHECK(LastError().Description().empty());
            }
        }
    }
}

TEST_CASE("A failed check is shown whatever becomes of the clipboard, and told when it has no window") {
    FaultMachine machine({"sevCmd4.ocx"});
    const std::string shown = "Vandrel Core Elements V1\n";
    CHECK(machine.Session("x\n").told == shown);
    CHECK(machine.Session("x\n", {Seam::ClipboardClear, 1, 0}).told == shown);
    CHECK(machine.Session("x\n", {Seam::ClipboardSet, 1, 0}).told == shown);
    CHECK(machine.Session("OK\n", {Seam::WindowCreate, 1, 0}).told ==
          "Kann Programm nicht ausführen:\nNicht genügend Speicher\n");
}
