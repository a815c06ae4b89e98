#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Check.h"
#include "RawRegistry.h"
#include "TestMachine.h"
#include "platform/Process.h"
#include "platform/ShellCalls.h"
#include "platform/host/Machine.h"

namespace {

namespace fs = std::filesystem;

// It stands beside the program, in the build's own folder.
int ExitCodeOfSampleMachine(const std::string& arguments) {
    const std::string program = (fs::path(VTV4V_PROGRAM).parent_path() / "sample-machine").native();
    const int status = std::system(("'" + program + "' " + arguments + " >/dev/null 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Opens the control file by its association and waits until the editor's script, our only child, has ended.
void Edited(TestMachine& machine, const std::string& editor) {
    machine.Environment("VISUAL", editor);
    CHECK(platform::ShellExecuteA(0, "open", machine.ControlFile(), "", "", platform::ShowNormal) == 33);
    waitpid(-1, nullptr, 0);
}

std::size_t FilesInFolder() {
    const fs::path folder = platform::host::MachineFolder() / "drives/c/Users/hugo/Eigene Dateien";
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

}  // namespace

TEST_CASE("The sample machine is made, and completes one that is there") {
    TestMachine machine;
    const fs::path folder = platform::host::MachineFolder();
    const std::string quoted = "'" + folder.native() + "'";
    fs::create_directories(folder / "drives/c/WINDOWS");
    FileContent("C:\\WINDOWS\\Notepad", "mine");
    std::ofstream(folder / "environment") << "homepath=\\Users\\hugo\nMINE=1";
    RawValueSet(platform::KeyClassesRoot, "txtfile", "", RawText("mine"));
    CHECK(ExitCodeOfSampleMachine(quoted) == 0);
    CHECK(ExitCodeOfSampleMachine(quoted) == 0);

    CHECK(FileContent("C:\\WINDOWS\\Notepad") == "mine");
    CHECK_FALSE(fs::exists(folder / "drives/c/Windows"));
    CHECK(fs::is_directory(folder / "drives/c/WINDOWS/System32"));
    CHECK(RawValue(platform::KeyClassesRoot, "txtfile", "") == RawText("mine"));
    CHECK(RawValue(platform::KeyClassesRoot, ".TXT", "") == RawText("txtfile"));
    machine.Environment("SystemRoot", {});
    machine.Environment("MINE", {});
    CHECK(platform::GetEnvironmentVariableA("SystemRoot") == "C:\\Windows");
    CHECK(platform::GetEnvironmentVariableA("MINE") == "1");

    CHECK(ExitCodeOfSampleMachine("") == 2);
    CHECK(ExitCodeOfSampleMachine("a b") == 2);
    CHECK(ExitCodeOfSampleMachine("/dev/null/machine") == 1);
}

TEST_CASE("The sample machine's editor brings Windows text to the user's editor and back") {
    TestMachine machine;
    REQUIRE(ExitCodeOfSampleMachine("'" + platform::host::MachineFolder().native() + "'") == 0);
    const std::string text = "User=M\xFCller \x80\r\nhugo=1\r\n";
    FileContent(machine.ControlFile(), text);

    Edited(machine, "true");
    CHECK(FileContent(machine.ControlFile()) == text);
    Edited(machine, "sed -i s/M\u00FCller/J\u00E4ger/;s/1$/2/");
    CHECK(FileContent(machine.ControlFile()) == "User=J\xE4ger \x80\r\nhugo=2\r\n");
    CHECK(FilesInFolder() == 1);

    // A change that cannot go back leaves the file alone, and stays beside it.
    Edited(machine, "sed -i s/hugo/\u4E2D/");
    CHECK(FileContent(machine.ControlFile()) == "User=J\xE4ger \x80\r\nhugo=2\r\n");
    CHECK(FilesInFolder() == 2);

    // Without a terminal and without an editor of the user's own it ends, and does not wait for anybody.
    machine.Environment("EDITOR", {});
    Edited(machine, "");
    CHECK(FilesInFolder() == 2);
}
