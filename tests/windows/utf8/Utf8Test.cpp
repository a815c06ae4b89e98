#include "Check.h"
#include "RawRegistry.h"
#include "TestMachine.h"
#include "platform/Regional.h"
#include "platform/WindowSystem.h"
#include "platform/windows/Win32.h"
#include "rollout/Rollout.h"

// Runs the program with UTF-8 as the system code page, which utf8.rc selects on Windows 10 version 1903 and later.

TEST_CASE_FIXTURE(TestMachine, "Under a UTF-8 code page, umlauts survive import, export, check and clipboard") {
    if (::GetACP() != CP_UTF8) {
        MESSAGE("skipped: this Windows ignores a code page in the manifest");
        return;
    }
    const std::vector<std::string> names{"(Standard)", "Jörg", platform::AnsiFromText(Text(80, u'€'))};  // 240 bytes
    std::string sections = "[Tallora]\r\n";
    for (const std::string& name : names) {
        sections += name + "=1\r\n";
    }
    sections += "\r\n[Reporting]\r\n\r\n[End]\r\n";
    FileContent(ControlFile(), sections);
    const Text path = platform::TextFromAnsi(ControlFile());
    CHECK(RunRollout({u"/import", path}) == RolloutResult::Success);
    CHECK(RawValue(platform::KeyLocalMachine, "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion", names[1]));
    CHECK(RunRollout({u"/export", path}) == RolloutResult::Success);
    CHECK(FileContent(ControlFile()).value_or("").ends_with(sections));
    FileContent(ControlFile(), "[Tallora]\nj\xF6rg=1\n[Reporting]\n");
    CHECK(RunRollout({u"/import", path}) == RolloutResult::NeedsReview);

    REQUIRE(platform::ClipboardSet("Büro", platform::ClipboardText));
    REQUIRE(::OpenClipboard(nullptr));
    const auto* const copied = static_cast<const char16_t*>(::GlobalLock(::GetClipboardData(CF_UNICODETEXT)));
    REQUIRE(copied != nullptr);
    CHECK(Text(copied) == u"Büro");
    ::CloseClipboard();
}
