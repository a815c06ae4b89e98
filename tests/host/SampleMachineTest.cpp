#include <sys/wait.h>

#include <cstdlib>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/ShellCalls.h"

namespace {

namespace fs = std::filesystem;

// It stands beside the program, in the build's own folder.
int ExitCodeOfSampleMachine(const std::string& arguments) {
    const std::string program = (fs::path(VTV4V_PROGRAM).parent_path() / "sample-machine").native();
    return WEXITSTATUS(std::system((program + " " + arguments + " >/dev/null 2>&1").c_str()));
}

// Opens the control file by its association and waits until the editor's script, our only child, has ended.
void Edited(TestMachine& machine, const std::string& editor) {
    machine.Environment("VISUAL", editor);
    CHECK(platform::ShellExecuteA(0, "open", machine.ControlFile(), "", "", platform::ShowNormal) == 33);
    waitpid(-1, nullptr, 0);
}

auto FilesInFolder() {
    return std::distance(fs::directory_iterator(OnMachine("drives/c/Users/hugo/Eigene Dateien")), {});
}

}  // namespace

TEST_CASE("The sample machine is made, and completes one that is there") {
    const TestMachine machine;
    FileContent("C:\\WINDOWS\\Notepad", "mine");
    MachineFile("environment", "homepath=\\Users\\hugo");
    MachineFile("components", "other.dll!f=1");
    RawValueSet(platform::KeyClassesRoot, "sevPopUp2.PopUp\\CLSID", "", RawText("mine"));
    CHECK(ExitCodeOfSampleMachine(OnMachine("")) == 0);
    CHECK(ExitCodeOfSampleMachine(OnMachine("")) == 0);
    CHECK(FileContent("C:\\WINDOWS\\Notepad") == "mine");
    CHECK(fs::is_directory(OnMachine("drives/c/WINDOWS/System32")));
    CHECK(RawValue(platform::KeyClassesRoot, ".TXT", "") == RawText("txtfile"));
    CHECK(RawValue(platform::KeyClassesRoot, "sevPopUp2.PopUp\\CLSID", "") == RawText("mine"));
    CHECK(MachineFile("components") == "other.dll!f=1\nsevDTA30.dll!sevDTA_Init=0\n");
    CHECK(MachineFile("environment").find("HOMEPATH") == std::string::npos);
    CHECK(ExitCodeOfSampleMachine("") == 2);
    CHECK(ExitCodeOfSampleMachine("/dev/null/machine") == 1);
}

TEST_CASE("The sample machine's editor brings Windows text to the user's editor and back") {
    TestMachine machine;
    REQUIRE(ExitCodeOfSampleMachine(OnMachine("")) == 0);
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
}
