#include <filesystem>
#include <fstream>

#include "Check.h"
#include "RawRegistry.h"
#include "TestMachine.h"
#include "platform/ComponentCalls.h"
#include "platform/FileCalls.h"
#include "platform/VersionCalls.h"
#include "platform/host/Machine.h"
#include "samples/InstalledSuite.h"
#include "samples/SampleImage.h"

namespace {

constexpr const char* ClassIdentifier = "{00000000-1111-2222-3333-444444444444}";

void ClassesTextSet(const std::string& key, const std::string& text) {
    RawValueSet(platform::KeyClassesRoot, key, "", RawText(text));
}

// The status of a creation, with the object's being there checked against it.
platform::Status Created(const std::u16string& programmaticIdentifier) {
    platform::ObjectReference object = 1;
    const platform::Status status = platform::CreateObject(programmaticIdentifier, object);
    CHECK((object != 0) == (status == platform::StatusSuccess));
    platform::ReleaseObject(object);
    return status;
}

void DriveFile(const std::string& path, const std::string& content) {
    const std::filesystem::path file = platform::host::MachineFolder() / "drives" / "c" / path;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

}  // namespace

TEST_CASE("an object is created when each step from its identifier to its server's file succeeds") {
    TestMachine machine;
    const std::string classKey = std::string("CLSID\\") + ClassIdentifier;
    const auto status = [] { return static_cast<std::uint32_t>(Created(u"Sample.Thing")); };

    CHECK(status() == 0x800401F3);
    ClassesTextSet("Sample.Thing", "no class yet");
    CHECK(status() == 0x800401F3);
    ClassesTextSet("Sample.Thing\\CLSID", "{0000}");
    CHECK(status() == 0x800401F3);
    ClassesTextSet("Sample.Thing\\CLSID", ClassIdentifier);
    CHECK(status() == 0x80040154);
    ClassesTextSet(classKey, "no server yet");
    CHECK(status() == 0x80040154);
    RawValueSet(platform::KeyClassesRoot, classKey + "\\InprocServer32", "", RawNumber(1));
    CHECK(status() == 0x80040154);
    ClassesTextSet(classKey + "\\InprocServer32", "C:\\parts\\thing.dll");
    CHECK(status() == 0x8007007E);
    DriveFile("parts/Thing.DLL", "");
    CHECK(status() == 0);

    CHECK(static_cast<std::uint32_t>(Created(u"")) == 0x800401F3);
    machine.Environment("PARTS", "C:\\parts");
    RawData expandable = RawText("%PARTS%\\thing.dll");
    expandable.type = platform::RegExpandSz;
    RawValueSet(platform::KeyClassesRoot, classKey + "\\InprocServer32", "", expandable);
    CHECK(status() == 0);
}

TEST_CASE("a library's function returns what the machine folder says") {
    TestMachine machine;
    DriveFile("parts/Math.dll", "");
    std::ofstream(platform::host::MachineFolder() / "components") << "a line of another kind\n"
                                                                     "other.dll!Sum=1\n"
                                                                     "math.DLL!Sum=-1\r\n"
                                                                     "math.dll!Torn=\n"
                                                                     "math.dll!Huge=2147483648\n"
                                                                     "math.dll!Last=7";
    std::int32_t result = 5;
    CHECK(platform::CallTextFunction("C:\\parts\\missing.dll", "Sum", "", result) == 126);
    for (const char* const function : {"sum", "Torn", "Huge", "Su", ""}) {
        CHECK(platform::CallTextFunction("C:\\parts\\math.dll", function, "", result) == 127);
    }
    CHECK(result == 5);
    CHECK(platform::CallTextFunction("C:\\parts\\math.dll", "Sum", "", result) == 0);
    CHECK(result == -1);
    CHECK(platform::CallTextFunction("C:\\parts\\math.dll", "Last", "", result) == 0);
    CHECK(result == 7);
}

TEST_CASE("statuses are told in German, those of the system also inside the object model's") {
    CHECK(platform::StatusText(static_cast<platform::Status>(0x800401F3U)) == u"Ungültige Klassenzeichenfolge");
    CHECK(platform::StatusText(static_cast<platform::Status>(0x80040154U)) == u"Klasse nicht registriert");
    CHECK(platform::StatusText(static_cast<platform::Status>(0x8007007EU)) == platform::StatusText(126));
    CHECK(platform::StatusText(126) == u"Das angegebene Modul wurde nicht gefunden.");
    CHECK(platform::StatusText(static_cast<platform::Status>(0x80040155U)).empty());
}

TEST_CASE("the version calls read a file on the drive, and read it anew for each pair of calls") {
    TestMachine machine;
    const std::string path = "C:\\parts\\thing.dll";
    DriveFile("parts/thing.dll", SampleImage({.version = {1, 2, 3, 4}, .fileType = 2}));
    std::string block(static_cast<std::size_t>(platform::GetFileVersionInfoSizeA(path)), '\0');
    CHECK(block.size() == SampleImageBlockSize);
    DriveFile("parts/thing.dll", "no longer an image");
    CHECK(platform::GetFileVersionInfoA(path, 0, block));
    CHECK(platform::VerQueryValueA(block, "\\").size() == 52);
    CHECK(platform::VerQueryValueA(block, "\\Other").empty());
    CHECK_FALSE(platform::GetFileVersionInfoA(path, 0, block));
    CHECK(platform::GetFileVersionInfoSizeA(path) < 1);
    CHECK(platform::GetFileVersionInfoSizeA("C:\\parts") < 1);
    CHECK(platform::GetFileVersionInfoSizeA("C:\\missing.dll") < 1);
}

TEST_CASE("the installed suite leaves out what it is asked to, and nothing else") {
    TestMachine machine;
    DriveFile("windows/system32/vb6de.dll", "another file");
    InstalledSuiteAdd({"MSVBVM60.dll", "vcutil1.DebugLog"});
    CHECK_FALSE(platform::FileExists("C:\\Windows\\System32\\MSVBVM60.DLL"));
    CHECK(platform::FileExists("C:\\Program Files\\Vandrel\\Core\\V1\\vcutil1.dll"));
    CHECK(platform::GetFileVersionInfoSizeA("C:\\Program Files\\Common Files\\Designer\\MSADDNDR.DLL") > 0);
    CHECK(FileContent("C:\\windows\\system32\\vb6de.dll") == "another file");
    CHECK(Created(u"sevPopUp2.PopUp") == platform::StatusSuccess);
    CHECK(static_cast<std::uint32_t>(Created(u"VCUTIL1.DebugLog")) == 0x800401F3);
    std::int32_t result = 5;
    CHECK(platform::CallTextFunction("C:\\Windows\\System32\\sevDTA30.dll", "sevDTA_Init", "x", result) == 0);
    CHECK(result == 0);
    CHECK(InstalledSuiteKnows("mazewalker.EXE"));
    CHECK_FALSE(InstalledSuiteKnows("MazeWalker"));
}
