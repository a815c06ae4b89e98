#include <sys/stat.h>
#include <sys/wait.h>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "platform/ShellCalls.h"
#include "products/Installer.h"
#include "products/modShellExec.h"

namespace {

void Script(const std::string& path, const std::string& steps) {
    FileContent(path, "#!/bin/sh\n" + steps + "\n");
    chmod(OnDisk(path).c_str(), 0755);
}

void Associate(const std::string& type, const std::string& command) {
    RawValueSet(platform::KeyClassesRoot, "." + type, "", RawText(type + "file"));
    RawValueSet(platform::KeyClassesRoot, type + "file\\Shell\\Open\\Command", "",
                {platform::RegExpandSz, RawText(command).bytes});
}

}  // namespace

TEST_CASE("The first change creates the default machine folder in the user's data folder") {
    TestMachine machine;
    const std::filesystem::path home = OnMachine("home");
    machine.Environment("HOME", home.native());
    machine.Environment("VTV4V_MACHINE", {});
    machine.Environment("XDG_DATA_HOME", {});
    RawValueSet(platform::KeyCurrentUser, "Software", "n", RawNumber(1));
    CHECK(std::filesystem::exists(home / ".local/share/vtv4v/machine/user.db"));
}

TEST_CASE("Process variables override the environment file, in which the last line wins") {
    TestMachine machine;
    DiskFile(OnMachine("environment"), "VTV4V_ONE=first\r\nno variable\nvtv4v_one=a=b\r\nUSERNAME=ruedi");
    machine.Environment("USERNAME", "G\u00F6tz");
    CHECK(platform::GetEnvironmentVariableA("Vtv4v_One") == "a=b");
    CHECK(platform::GetEnvironmentVariableA("USERNAME") == "G\xF6tz");
}

TEST_CASE("A document opens in the program for its type, or an error code is returned") {
    TestMachine machine;
    machine.Environment("Tools", "C:\\Windows\\my \u00F6");
    Script("C:\\Windows\\My \xD6\\show", "exec >out\npwd; read -r line; echo $?\nfor each; do echo \"[$each]\"; done");
    FileContent("C:\\Users\\hugo\\a b.TXT", "text");
    Associate("txt", "\"%Tools%\\SHOW\" /%USERNAME% \"x $HOME `id` \xE4;\" \"/%1/\" \"\" a\"b c\"d \"e f");
    Text document = u"C:\\Users\\hugo\\A B.txt";
    ShellOpen(document);
    wait(nullptr);
    const std::string folder = OnMachine("drives/c/Users/hugo").native();
    CHECK(FileContent("C:\\Users\\hugo\\out") ==
          folder + "\n1\n[/hugo]\n[x $HOME `id` ä;]\n[/" + folder + "/a b.TXT/]\n[]\n[ab cd]\n[e f]\n");

    Associate("lost", "C:\\Windows\\lost.exe %1");
    Associate("blank", " ");
    Associate("deaf", "\"C:\\Users\\hugo\\a b.txt\" %1");
    for (const auto& [type, code] : {std::pair(u"none", 31), {u"lost", 2}, {u"blank", 2}, {u"deaf", 5}}) {
        document = Text(u"C:\\file.") + type;
        CHECK(ShellOpenDocument(document) == 2);
        FileContent(platform::AnsiFromText(document), "");
        CHECK(ShellOpenDocument(document) == code);
    }
}

TEST_CASE("Uninstalling waits for MsiExec and then rereads the registry") {
    const TestMachine machine;
    Installer installer;
    Script("C:\\Windows\\System32\\MsiExec.exe",
           "sleep 0.1; echo \"$@\" >\"${0%/*}\"/ran; sqlite3 \"$VTV4V_MACHINE/machine.db\" 'DELETE FROM value'");
    for (const bool quiet : {false, true}) {
        RawProductAdd("VT", "Vandrel Test", "x {T-1}");
        installer.GUI(u"T-1");
        installer.UnInstall(quiet);
        installer.UnInstall(!quiet);
        CHECK(FileContent("C:\\Windows\\System32\\ran") == (quiet ? "/quiet /x{T-1}\n" : "/x{T-1}\n"));
        CHECK_FALSE(installer.IsInstalled());
    }
    // After a timeout, the program keeps running.
    CHECK(ShellAndWait(u"sh -c \"sleep 0.2; echo >'" + OnMachine("late").u16string() + u"'\"", 0) ==
          platform::WaitTimeout);
    CHECK_FALSE(DiskFile(OnMachine("late")));
    wait(nullptr);
    CHECK(DiskFile(OnMachine("late")));
    FileContent("C:\\Windows\\System32\\plain", "");
    CHECK(RaisedBy([] { ShellAndWait(u"plain"); }).number == 5);
    CHECK(RaisedBy([] { ShellAndWait(u"missing"); }).number == 53);
}
