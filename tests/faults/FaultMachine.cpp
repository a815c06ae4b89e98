#include "faults/FaultMachine.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <regex>

#include "Check.h"
#include "RawRegistry.h"
#include "app/Main.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "platform/host/HandleTable.h"
#include "platform/host/console/LineRun.h"
#include "samples/InstalledSuite.h"
#include "version/ProductProfileMain.h"
#include "version/ProductProfileReporting.h"
#include "version/modVTV4Version.h"

namespace {

namespace fs = std::filesystem;

std::ptrdiff_t FilesIn(const fs::path& folder) {
    return std::distance(fs::directory_iterator(folder), {});
}

// Handles are numbered consecutively.
platform::Handle NextHandle() {
    const platform::Handle next = platform::host::HandleAdd(platform::host::ProcessReference{});
    platform::host::HandleRemove(next);
    return next;
}

}  // namespace

void CheckNoHandleLeaks(const std::function<void()>& steps) {
    const platform::Handle first = NextHandle();
    steps();
    const platform::Handle last = NextHandle();
    for (platform::Handle handle = first; handle < last; ++handle) {
        CHECK(platform::host::HandleFind(handle) == nullptr);
    }
}

FaultMachine::FaultMachine(const std::set<std::string>& without) {
    static char name[] = "vtv4v";
    static char option[] = "-master";
    char* arguments[] = {name, option};
    platform::ProcessStart(2, arguments);
    InstalledSuiteAdd(without);
    RawValueSet(platform::KeyCurrentUser, "Software", "", RawText(""));
    RawValueSet(platform::KeyClassesRoot, ".txt", "", RawText("text"));
    RawValueSet(platform::KeyClassesRoot, "text\\shell\\open\\command", "", RawText("true %1"));
    Reset();
}

// Creating the profiles also records the user's name, so that every later start finds it.
void FaultMachine::Reset() {
    ProductProfileMain().Profile.Table->ForcedVersionAll(true, u"(Standard)=3;hugo=0;ruedi=1;");
    ProductProfileReporting().Profile.Table->ForcedVersionAll(true, u"(Standard)=3;hugo=1;ruedi=99;");
    FileContent(ControlFile(), "[Tallora]\r\na=1\r\nb=2\r\nc=3\r\n[Reporting]\r\nd=4\r\ne=5\r\n");
}

std::string FaultMachine::State() const {
    std::string file = std::regex_replace(FileContent(ControlFile()).value_or("no file"), std::regex("\r\n"), ";");
    if (file.starts_with("[Info]") && file.ends_with(";[End];")) {
        file.erase(0, std::min(file.find("[Tallora]"), file.size()));
    }
    return platform::AnsiFromText(ProductProfileMain().Profile.Table->ForcedVersionAll(true) + u"\n" +
                                  ProductProfileReporting().Profile.Table->ForcedVersionAll(true)) +
           "\n" + file;
}

Outcome FaultMachine::Session(const std::string& input, const SeamFault& fault, const SeamHook& hook) {
    const std::ptrdiff_t openFiles = FilesIn("/proc/self/fd");
    Text messages;
    CheckNoHandleLeaks([&] {
        const LineRun run(input);
        SeamStart(fault, hook);
        Main();
        messages = SeamStop() + (run.Shows("Vandrel Core Elements V1") ? u"check failed" : u"") +
                   (run.Shows("Zwisachenablage") ? u", report copied" : u"");
    });
    CHECK(FilesIn("/proc/self/fd") == openFiles);
    CHECK(MainVersions == nullptr);
    CHECK(ReportingVersions == nullptr);
    CHECK(LastError().Number() == 0);
    CHECK(LastError().Description().empty());
    CHECK(FilesIn(OnDisk(ControlFile()).parent_path()) == 1);
    return {messages, State()};
}
