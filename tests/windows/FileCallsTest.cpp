#include <doctest/doctest.h>

#include "TestMachine.h"
#include "common/TextFile.h"
#include "platform/FileCalls.h"
#include "platform/Regional.h"
#include "platform/windows/Win32.h"

TEST_CASE("A file that may not be given up is not replaced, but can be written in its place") {
    const TestMachine machine;
    const std::string replaced = machine.ControlFile();
    const std::string replacement = replaced + ".new";
    FileContent(replacement, "new");
    CHECK(platform::ReplaceFileA(replaced, replacement) == platform::StatusFileNotFound);
    FileContent(replaced, "old");
    CHECK(platform::ReplaceFileA(replaced, replaced + ".none") == platform::StatusFileNotFound);
    ::SetFileAttributesA(replaced.c_str(), FILE_ATTRIBUTE_READONLY);
    CHECK(platform::ReplaceFileA(replaced, replacement) == platform::StatusAccessDenied);
    ::SetFileAttributesA(replaced.c_str(), FILE_ATTRIBUTE_NORMAL);
    {
        const platform::windows::Owned<HANDLE, ::CloseHandle> holder(::CreateFileA(
            replaced.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
        CHECK(platform::ReplaceFileA(replaced, replacement) == platform::StatusSharingViolation);
        CHECK(FileContent(replaced) == "old");
        WriteTextFile(platform::TextFromAnsi(replaced), u"here", true);
        CHECK(FileContent(replaced) == "here");
    }
    CHECK(platform::ReplaceFileA(replaced, replacement) == platform::StatusSuccess);
    CHECK(FileContent(replaced) == "new");
    CHECK_FALSE(platform::FileExists(replacement));
}
