#include "Check.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "version/LoadedMachine.h"

namespace {

const std::string VersionList =
    "\r\n\r\n[Versions]\r\nFull=0\r\nDemo=1\r\nLawyer=2\r\nBrowser=3\r\nClassic=4\r\nClient=5\r\nNotInstalled="
    "99\r\n\r\n";

std::string MinuteText(double date) {
    const std::string text = platform::AnsiFromText(platform::VarBstrFromDate(date));
    return text.substr(0, text.rfind(':'));
}

struct FileFixture : LoadedMachine {
    [[nodiscard]] std::string File() const { return FileContent(ControlFile()).value_or("no file"); }
    // Returns the part of the control file that doesn't depend on the machine or the time.
    [[nodiscard]] std::string Sections() const { return File().substr(File().find("\r\n\r\n[Versions]")); }
};

}  // namespace

TEST_CASE_FIXTURE(FileFixture, "Demo and export write the documented control file, and an import reads it back") {
    for (const auto& write : {WriteDemoFile, ExportVersions}) {
        write();
        // Also accepts the previous minute, because a new minute may have begun since.
        const std::string head = "[Info]\r\nFile=" + ControlFile() + "\r\nUser=hugo\r\nTimeStamp=";
        const double now = platform::Now();
        CHECK((File().starts_with(head + MinuteText(now)) || File().starts_with(head + MinuteText(now - 1.0 / 1440))));
        CHECK(Sections() == VersionList +
                                "[Tallora]\r\n(Standard)=3\r\nhugo=0\r\nruedi=1\r\n\r\n"
                                "[Reporting]\r\n(Standard)=3\r\nhugo=1\r\nruedi=99\r\n\r\n\r\n[End]\r\n");
        ImportVersions();
        CHECK(Tables() == u"(Standard)=3;hugo=0;ruedi=1; | (Standard)=3;hugo=1;ruedi=99;");
    }
    ClearVersions();
    ExportVersions();
    CHECK(Sections() == VersionList + "[Tallora]\r\n[Reporting]\r\n\r\n[End]\r\n");
}

TEST_CASE_FIXTURE(LoadedMachine, "An import collects the items of the sections [Tallora] and [Reporting]") {
    Tables(u"old=1;", u"old=1;");
    // Apart from surrounding spaces and its last character, a heading must match exactly.
    FileContent(ControlFile(),
                "u=1\n\t[Tallora]\nv=1\n[tallora]\nw=1\n[Tallora] x\nx=1\n[Reporting\ny=1\n[\nz=1\n[]\nz=1\n"
                "  [Tallora]  \r  a=1  \r[Reporting]\nb=2\n[End]\nx=1\n[Tallora)\n\nc=3;d=4\n;remark\n");
    ImportVersions();
    CHECK(Tables() == u"a=1;c=3;d=4; | b=2;");
}

TEST_CASE_FIXTURE(LoadedMachine, "An import changes no table if the file can't be read completely") {
    Tables(u"old=1;", u"old=2;");
    CHECK(RaisedBy(ImportVersions).number == 53);
    FileContent(ControlFile(), "[Tallora]\r\na=1\r\n[Other]\r\n" + std::string(32768, 'x') + "\r\n");
    CHECK(RaisedBy(ImportVersions).number == 6);
    CHECK(Tables() == u"old=1; | old=2;");
    // A number that exceeds 32 bits stops the import before the second table.
    FileContent(ControlFile(), "[Tallora]\r\na=1\r\n[Other]\r\n" + std::string(32767, 'x') +
                                   "\r\n[Tallora]\r\nb=2147483648\r\nc=1\r\n[Reporting]\r\nd=1\r\n");
    CHECK(RaisedBy(ImportVersions).number == 6);
    CHECK(Tables() == u"a=1; | old=2;");
}

TEST_CASE_FIXTURE(TestMachine, "ControlFilePathGet uses HOMEDRIVE and HOMEPATH and trims spaces") {
    Environment("HOMEDRIVE", " C:");
    Environment("HOMEPATH", "\\Users\\hugo ");
    CHECK(ControlFilePathGet() == u"C:\\Users\\hugo \\Eigene Dateien\\vtv4v.txt");
    Environment("HOMEDRIVE", {});
    Environment("HOMEPATH", {});
    CHECK(ControlFilePathGet() == u"\\Eigene Dateien\\vtv4v.txt");
}
