#include <sys/stat.h>
#include <sys/wait.h>

#include "Check.h"
#include "ProductEntries.h"
#include "host/MachineFiles.h"
#include "platform/ShellCalls.h"
#include "products/Installer.h"
#include "products/modShellExec.h"

namespace {

void Script(const std::string& path, const std::string& steps) {
    FileContent(path, "#!/bin/sh\n" + steps + "\n");
    chmod(OnDisk(path).c_str(), 0755);
}

void Associate(const std::string& type, const std::string& className, const std::string& command) {
    RawValueSet(platform::KeyClassesRoot, type, "", RawText(className));
    RawValueSet(platform::KeyClassesRoot, className + "\\Shell\\Open\\Command", "",
                {platform::RegExpandSz, RawText(command).bytes});
}

std::int32_t Shell(const std::string& file) {
    return platform::ShellExecuteA(0, "open", file, "", "C:\\Users\\hugo\\", platform::ShowNormal);
}

}  // namespace

TEST_CASE("A document opens in the program for its type, or ShellExecuteA returns an error") {
    TestMachine machine;
    machine.Environment("Tools", "C:\\Windows\\my tools");
    Script("C:\\Windows\\My Tools\\show", "exec >out\npwd; read -r line; echo $?\nfor each; do echo \"[$each]\"; done");
    FileContent("C:\\Users\\hugo\\a b.TXT", "text");
    Associate(".txt", "txtfile", "\"%Tools%\\SHOW\" /p \"x $HOME `id` ;\" \"%1\" \"\" a\"b c\"d \"e f");
    CHECK(Shell("\"C:\\Users\\hugo\\A B.txt\"") == 33);
    wait(nullptr);
    const std::string folder = OnMachine("drives/c/Users/hugo").native();
    CHECK(FileContent("C:\\Users\\hugo\\out") ==
          folder + "\n1\n[/p]\n[x $HOME `id` ;]\n[" + folder + "/a b.TXT]\n[]\n[ab cd]\n[e f]\n");

    RawValueSet(platform::KeyClassesRoot, ".half", "", RawText("halffile"));
    Associate(".lost", "lostfile", "C:\\Windows\\lost.exe %1");
    Associate(".blank", "blankfile", " ");
    Associate(".deaf", "deaffile", "\"C:\\Users\\hugo\\a b.txt\" %1");
    for (const auto& [type, code] : {std::pair("none", 31), {"half", 31}, {"lost", 2}, {"blank", 2}, {"deaf", 5}}) {
        FileContent(std::string("C:\\file.") + type, "");
        CHECK(Shell(std::string("C:\\file.") + type) == code);
    }
    CHECK(Shell("C:\\file.missing") == 2);
    CHECK(Shell("\"C:\\fi\"\"le.half\"") == 2);
}

TEST_CASE("A started process can be waited for and keeps running after a timeout") {
    TestMachine machine;
    Script("C:\\Windows\\System32\\until", "while [ ! -e \"$1\" ]; do sleep 0.01; done; : >\"$1.seen\"");
    const std::string sign = OnMachine("sign").native();

    std::int32_t process = 0;
    const std::filesystem::path earlierFolder = std::filesystem::current_path();
    machine.Environment("PATH", ":.:/usr/bin:/bin");
    Script("C:\\here", "");
    std::filesystem::current_path(OnMachine("drives/c"));
    CHECK(platform::StartCommandLine("here", 2, process) == platform::StatusFileNotFound);
    std::filesystem::current_path(earlierFolder);
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

TEST_CASE("Uninstalling waits for MsiExec and then rereads the registry") {
    const TestMachine machine;
    ProductEntries products;
    Installer installer;
    Script("C:\\Windows\\System32\\MsiExec.exe",
           "sleep 0.1; echo \"$@\" >\"${0%/*}\"/ran; sqlite3 \"$VTV4V_MACHINE/machine.db\" 'DELETE FROM value'");
    for (const bool quiet : {false, true}) {
        products.Add("VT", "Vandrel Test", "x {T-1}");
        installer.GUI(u"T-1");
        installer.UnInstall(quiet);
        installer.UnInstall(!quiet);
        CHECK(FileContent("C:\\Windows\\System32\\ran") == (quiet ? "/quiet /x{T-1}\n" : "/x{T-1}\n"));
        CHECK_FALSE(installer.IsInstalled());
    }
    CHECK(ShellAndWait(u"sleep 1", 0) == platform::WaitTimeout);
    CHECK(RaisedBy([] { ShellAndWait(u"missing"); }).number == 53);
    FileContent("C:\\Windows\\System32\\plain", "");
    CHECK(RaisedBy([] { ShellAndWait(u"plain"); }).number == 5);
}
