#include <filesystem>

#include "Check.h"
#include "RawRegistry.h"
#include "TestMachine.h"
#include "platform/WindowSystem.h"
#include "platform/windows/Win32.h"
#include "rollout/ControlFileCheck.h"
#include "version/ProductProfileMain.h"
#include "version/ProductProfileReporting.h"
#include "version/modVTV4Version.h"

// Runs the program with UTF-8 as the system code page, which its manifest selects on Windows 10 version 1903 and later.

namespace {

std::string Utf8(const Text& text) {
    const std::u8string bytes = std::filesystem::path(text).u8string();
    return {bytes.begin(), bytes.end()};
}

}  // namespace

TEST_CASE_FIXTURE(TestMachine, "Under a UTF-8 code page, umlauts survive import, export, check and clipboard") {
    if (::GetACP() != CP_UTF8) {
        MESSAGE("skipped: this Windows ignores a code page in the manifest");
        return;
    }
    const Text longName(80, u'€');  // 240 bytes
    MainVersions = ProductProfileMain().Profile.Table;
    ReportingVersions = ProductProfileReporting().Profile.Table;
    ControlFilePath = ControlFilePathGet();
    FileContent(ControlFile(), Utf8(u"[Tallora]\n=3\nJörg=1\nZoë=0\n" + longName + u"=2\n[Reporting]\n"));
    ImportVersions();
    CHECK(RawValueNames(platform::KeyLocalMachine, "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion") ==
          std::vector<std::string>{"", Utf8(u"Jörg"), Utf8(u"Zoë"), Utf8(longName)});
    ExportVersions();
    CHECK(FileContent(ControlFile())
              .value_or("")
              .ends_with(Utf8(u"[Tallora]\r\n(Standard)=3\r\nJörg=1\r\nZoë=0\r\n" + longName +
                              u"=2\r\n\r\n[Reporting]\r\n\r\n[End]\r\n")));
    ControlFileCheck check;
    check.Read(ControlFilePath);
    CHECK(check.Findings().empty());
    FileContent(ControlFile(), "[Tallora]\nj\xF6rg=1\n[Reporting]\n");
    check.Read(ControlFilePath);
    CHECK(check.Findings().size() == 1);
    MainVersions.reset();
    ReportingVersions.reset();

    REQUIRE(platform::ClipboardSet(Utf8(u"Büro"), platform::ClipboardText));
    REQUIRE(::OpenClipboard(nullptr));
    const auto* const copied = static_cast<const char16_t*>(::GlobalLock(::GetClipboardData(CF_UNICODETEXT)));
    REQUIRE(copied != nullptr);
    CHECK(Text(copied) == u"Büro");
    ::CloseClipboard();
}
