#include <optional>

#include "Check.h"
#include "TestMachine.h"
#include "version/ProductProfileMain.h"
#include "version/ProductProfileReporting.h"
#include "version/modVTV4Version.h"

namespace {

const std::string VersionList =
    "\r\n[Versions]\r\nFull=0\r\nDemo=1\r\nLawyer=2\r\nBrowser=3\r\nClassic=4\r\nClient=5\r\nNotInstalled=99\r\n\r\n";

// A machine with the program's globals set as the loaded window sets them.
class LoadedMachine {
public:
    LoadedMachine() {
        MainVersions = main_.Profile.Table;
        ReportingVersions = reporting_.Profile.Table;
        ControlFilePath = ControlFilePathGet();
    }
    ~LoadedMachine() {
        ReportingVersions.reset();
        MainVersions.reset();
    }
    LoadedMachine(const LoadedMachine&) = delete;
    LoadedMachine& operator=(const LoadedMachine&) = delete;

    void Tables(const Text& main, const Text& reporting) {
        MainVersions->ForcedVersionAll(true, main);
        ReportingVersions->ForcedVersionAll(true, reporting);
    }
    [[nodiscard]] std::string File() const { return FileContent(machine_.ControlFile()).value_or("no file"); }
    void File(const std::string& bytes) { FileContent(machine_.ControlFile(), bytes); }
    // The control file from its version list on: all that does not depend on machine and time.
    [[nodiscard]] std::string Sections() const { return File().substr(File().find("\r\n[Versions]")); }
    TestMachine& Machine() { return machine_; }

private:
    TestMachine machine_;
    ProductProfileMain main_;
    ProductProfileReporting reporting_;
};

}  // namespace

TEST_CASE("The control file is laid out line by line, and what is imported is what was exported") {
    LoadedMachine loaded;
    WriteDemoFile();
    CHECK(
        loaded.File().starts_with("[Info]\r\nFile=" + loaded.Machine().ControlFile() + "\r\nUser=hugo\r\nTimeStamp="));
    CHECK(loaded.Sections() == VersionList +
                                   "[Tallora]\r\n(Standard)=3\r\nhugo=0\r\nruedi=1\r\n\r\n"
                                   "[Reporting]\r\n(Standard)=3\r\nhugo=1\r\nruedi=99\r\n\r\n\r\n[End]\r\n");
    const std::string demonstration = loaded.Sections();
    ImportVersions();
    CHECK(ReportingVersions->ForcedVersionAll(true) == u"(Standard)=3;hugo=1;ruedi=99;");
    ExportVersions();
    CHECK(loaded.Sections() == demonstration);
    ClearVersions();
    ExportVersions();
    CHECK(loaded.Sections() == VersionList + "[Tallora]\r\n[Reporting]\r\n\r\n[End]\r\n");
}

TEST_CASE("The import gathers the lines of its two sections") {
    LoadedMachine loaded;
    struct {
        const char* what;
        std::string file;
        Text main, reporting;
    } const cases[] = {
        {"a section again", "z=1\n[Tallora]\na=1\n[Reporting]\nb=2\n[End]\nx=1\n[Tallora]\n\nc=3\n", u"a=1;c=3;",
         u"b=2;"},
        {"blanks around head and line", "  [Tallora]  \r  a=1  \r", u"a=1;", u""},
        {"a tab is no blank", "\t[Tallora]\na=1\n", u"", u""},
        {"other letter case", "[tallora]\na=1\n[Reporting]\nb=2\n", u"", u"b=2;"},
        {"no closing bracket", "[Reporting\na=1\n[Tallora\nb=1\n", u"", u""},
        {"any last character", "[Tallora)\na=1\n", u"a=1;", u""},
        {"text behind the bracket", "[Tallora] x\na=1\n[\nb=1\n[]\nc=1\n", u"", u""},
        {"two items on a line", "[Tallora]\na=1;b=2\n;remark\n", u"a=1;b=2;", u""},
    };
    for (const auto& each : cases) {
        INFO(each.what);
        loaded.Tables(u"old=1;", u"old=1;");
        loaded.File(each.file);
        ImportVersions();
        CHECK(MainVersions->ForcedVersionAll(true) == each.main);
        CHECK(ReportingVersions->ForcedVersionAll(true) == each.reporting);
    }
}

TEST_CASE("An import that cannot be read whole changes no table") {
    LoadedMachine loaded;
    loaded.Tables(u"old=1;", u"old=2;");
    CHECK(RaisedBy(ImportVersions).number == 53);
    for (const std::string& line : {std::string(32768, 'x'), "[" + std::string(40000, 'x')}) {
        loaded.File("[Tallora]\r\na=1\r\n[Other]\r\n" + line + "\r\n");
        CHECK(RaisedBy(ImportVersions).number == 6);
    }
    CHECK(MainVersions->ForcedVersionAll(true) == u"old=1;");
    CHECK(ReportingVersions->ForcedVersionAll(true) == u"old=2;");
    // A number beyond 32 bits ends it before the second table.
    loaded.File("[Tallora]\r\na=1\r\n[Other]\r\n" + std::string(32767, 'x') +
                "\r\n[Tallora]\r\nb=99999999999\r\n[Reporting]\r\nc=1\r\n");
    CHECK(RaisedBy(ImportVersions).number == 6);
    CHECK(MainVersions->ForcedVersionAll(true) == u"a=1;");
    CHECK(ReportingVersions->ForcedVersionAll(true) == u"old=2;");
}

TEST_CASE("The control file stands below the user's home, with blanks cut at both ends") {
    TestMachine machine;
    machine.Environment("HOMEDRIVE", " C:");
    machine.Environment("HOMEPATH", "\\Users\\hugo ");
    CHECK(ControlFilePathGet() == u"C:\\Users\\hugo \\Eigene Dateien\\vtv4v.txt");
    machine.Environment("HOMEDRIVE", {});
    machine.Environment("HOMEPATH", {});
    CHECK(ControlFilePathGet() == u"\\Eigene Dateien\\vtv4v.txt");
}
