#include <doctest/doctest.h>

#include "TestMachine.h"
#include "common/TextFile.h"
#include "platform/Regional.h"
#include "platform/windows/Win32.h"

TEST_CASE_FIXTURE(TestMachine, "A file that another program has open is written where it is") {
    FileContent(ControlFile(), "old");
    const platform::windows::Owned<HANDLE, ::CloseHandle> holder(
        ::CreateFileA(ControlFile().c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                      FILE_ATTRIBUTE_NORMAL, nullptr));
    WriteTextFile(platform::TextFromAnsi(ControlFile()), u"here", true);
    CHECK(FileContent(ControlFile()) == "here");
}
