#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/ComponentCalls.h"
#include "platform/FileCalls.h"
#include "platform/VersionCalls.h"
#include "samples/InstalledSuite.h"
#include "samples/SampleImage.h"

namespace {

// The status of a creation, with the object's being there checked against it.
std::uint32_t Created(const std::u16string& programmaticIdentifier) {
    platform::ObjectReference object = 1;
    const platform::Status status = platform::CreateObject(programmaticIdentifier, object);
    CHECK((object != 0) == (status == platform::StatusSuccess));
    platform::ReleaseObject(object);
    return static_cast<std::uint32_t>(status);
}

}  // namespace

TEST_CASE("An object is created when each step from its identifier to its server's file succeeds") {
    TestMachine machine;
    machine.Environment("PARTS", "C:\\parts");
    const std::string classKey = "CLSID\\{00000000-1111-2222-3333-444444444444}";
    struct {
        std::string key;
        RawData data;
        std::uint32_t status;
    } const steps[] = {
        {"Sample.Thing", RawText("no class yet"), 0x800401F3},
        {"Sample.Thing\\CLSID", RawText("{0000}"), 0x800401F3},
        {"Sample.Thing\\CLSID", RawText(classKey.substr(6)), 0x80040154},
        {classKey, RawText("no server yet"), 0x80040154},
        {classKey + "\\InprocServer32", RawNumber(1), 0x80040154},
        {classKey + "\\InprocServer32", RawText("C:\\parts\\missing.dll"), 0x8007007E},
        {classKey + "\\InprocServer32", RawText("C:\\parts\\thing.dll"), 0},
        {classKey + "\\InprocServer32", {platform::RegExpandSz, RawText("%PARTS%\\thing.dll").bytes}, 0},
    };
    FileContent("C:\\parts\\Thing.DLL", "");
    CHECK(Created(u"Sample.Thing") == 0x800401F3);
    for (const auto& step : steps) {
        RawValueSet(platform::KeyClassesRoot, step.key, "", step.data);
        CHECK(Created(u"Sample.Thing") == step.status);
    }
    CHECK(platform::StatusText(static_cast<platform::Status>(0x800401F3U)) == u"Ungültige Klassenzeichenfolge");
    CHECK(platform::StatusText(static_cast<platform::Status>(0x8007007EU)) == platform::StatusText(126));
    CHECK(platform::StatusText(static_cast<platform::Status>(0x80040155U)).empty());
}

TEST_CASE("A library's function returns what the machine folder says") {
    const TestMachine machine;
    FileContent("C:\\parts\\Math.dll", "");
    MachineFile("components",
                "a line of another kind\nother.dll!Sum=1\nmath.DLL!Sum=-1\r\nmath.dll!Torn=\n"
                "math.dll!Huge=2147483648\nmath.dll!Last=7");
    std::int32_t result = 5;
    CHECK(platform::CallTextFunction("C:\\parts\\missing.dll", "Sum", "", result) == 126);
    for (const char* const function : {"sum", "Torn", "Huge", "Su"}) {
        CHECK(platform::CallTextFunction("C:\\parts\\math.dll", function, "", result) == 127);
    }
    CHECK(result == 5);
    CHECK(platform::CallTextFunction("C:\\parts\\math.dll", "Sum", "", result) == 0);
    CHECK(result == -1);
    CHECK(platform::CallTextFunction("C:\\parts\\math.dll", "Last", "", result) == 0);
}

TEST_CASE("The version calls read a file on the drive, and read it anew for each pair of calls") {
    const TestMachine machine;
    const std::string path = "C:\\parts\\thing.dll";
    FileContent(path, SampleImage({.version = {1, 2, 3, 4}, .fileType = 2}));
    std::string block(static_cast<std::size_t>(platform::GetFileVersionInfoSizeA(path)), '\0');
    FileContent(path, "no longer an image");
    CHECK(platform::GetFileVersionInfoA(path, 0, block));
    CHECK(platform::VerQueryValueA(block, "\\").size() == 52);
    CHECK(platform::VerQueryValueA(block, "\\Other").empty());
    CHECK_FALSE(platform::GetFileVersionInfoA(path, 0, block));
    for (const char* const none : {"C:\\parts\\thing.dll", "C:\\parts", "C:\\missing.dll"}) {
        CHECK(platform::GetFileVersionInfoSizeA(none) < 1);
    }
}

TEST_CASE("The installed suite leaves out what it is asked to, and nothing else") {
    const TestMachine machine;
    FileContent("C:\\windows\\system32\\vb6de.dll", "another file");
    InstalledSuiteAdd({"MSVBVM60.dll", "vcutil1.DebugLog"});
    CHECK_FALSE(platform::FileExists("C:\\Windows\\System32\\MSVBVM60.DLL"));
    CHECK(platform::FileExists("C:\\Program Files\\Vandrel\\Core\\V1\\vcutil1.dll"));
    CHECK(FileContent("C:\\windows\\system32\\vb6de.dll") == "another file");
    CHECK(Created(u"sevPopUp2.PopUp") == 0);
    CHECK(Created(u"VCUTIL1.DebugLog") == 0x800401F3);
    CHECK(InstalledSuiteKnows("mazewalker.EXE"));
    CHECK_FALSE(InstalledSuiteKnows("MazeWalker"));
}
