#include <sys/stat.h>
#include <sys/wait.h>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/ShellCalls.h"

namespace {

void Script(const std::string& path, const std::string& steps) {
    FileContent(path, "#!/bin/sh\n" + steps + "\n");
    chmod(OnDisk(path).c_str(), 0755);
}

void Associate(const std::string& type, const std::string& className, const std::string& command) {
    RawValueSet(platform::KeyClassesRoot, type, "", RawText(className));
    RawValueSet(platform::KeyClassesRoot, className + "\\Shell\\Open\\Command", "", RawText(command));
}

std::int32_t Shell(const std::string& file) {
    return platform::ShellExecuteA(0, "open", file, "", "C:\\Users\\hugo\\", platform::ShowNormal);
}

}  // namespace

TEST_CASE("A document opens with the program of its type, or tells by a code why not") {
    const TestMachine machine;
    Script("C:\\Windows\\My Tools\\show", "exec >out\npwd; read -r line; echo $?\nfor each; do echo \"[$each]\"; done");
    FileContent("C:\\Users\\hugo\\a b.TXT", "text");
    Associate(".txt", "txtfile", "\"C:\\Windows\\my tools\\SHOW\" /p \"x $HOME `id` ;\" \"%1\" \"\" d ");
    CHECK(Shell("\"C:\\Users\\hugo\\A B.txt\"") == 33);
    wait(nullptr);
    const std::string folder = OnMachine("drives/c/Users/hugo").native();
    CHECK(FileContent("C:\\Users\\hugo\\out") ==
          folder + "\n1\n[/p]\n[x $HOME `id` ;]\n[" + folder + "/a b.TXT]\n[]\n[d]\n");

    RawValueSet(platform::KeyClassesRoot, ".half", "", RawText("halffile"));
    Associate(".lost", "lostfile", "C:\\Windows\\lost.exe %1");
    Associate(".blank", "blankfile", " ");
    Associate(".deaf", "deaffile", "\"C:\\Users\\hugo\\a b.txt\" %1");
    for (const auto& [type, code] : {std::pair("none", 31), {"half", 31}, {"lost", 2}, {"blank", 2}, {"deaf", 5}}) {
        FileContent(std::string("C:\\file.") + type, "");
        CHECK(Shell(std::string("C:\\file.") + type) == code);
    }
    CHECK(Shell("C:\\file.missing") == 2);
}

TEST_CASE("A command line is started, waited for, and goes on behind a time-out") {
    const TestMachine machine;
    Script("C:\\Windows\\System32\\until", "while [ ! -e \"$1\" ]; do sleep 0.01; done; : >\"$1.seen\"");
    const std::string sign = OnMachine("sign").native();

    std::int32_t process = 0;
    CHECK(platform::StartCommandLine("C:\\Windows\\until", 2, process) == platform::StatusFileNotFound);
    CHECK(platform::StartCommandLine("UNTIL \"" + sign + "\"", 2, process) == platform::StatusSuccess);
    const platform::Handle handle = platform::OpenProcess(platform::Synchronize, -1, process);
    CHECK(platform::WaitForSingleObject(handle, 30) == platform::WaitTimeout);
    REQUIRE(std::filesystem::create_directory(sign));
    CHECK(platform::WaitForSingleObject(handle, 20000) == platform::WaitObject0);
    CHECK(std::filesystem::exists(sign + ".seen"));
    CHECK(platform::CloseHandle(handle) == platform::StatusSuccess);
    CHECK(platform::WaitForSingleObject(handle, platform::WaitInfinite) == platform::WaitFailed);
}
