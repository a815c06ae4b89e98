
#include "Check.h"
#include "host/MachineFiles.h"
#include "platform/Process.h"

namespace fs = std::filesystem;

TEST_CASE("A variable of the process wins over the machine's own") {
    TestMachine machine;
    MachineFile("environment",
                "VTV4V_ONE=first\r\n=nameless\nno variable\nvtv4v_one=a=b\nVTV4V_TWO=Z\u00FCrich\r\nUSERNAME=ruedi\n"
                "VTV4V_LAST=end");
    CHECK(platform::GetEnvironmentVariableA("Vtv4v_One") == "a=b");
    CHECK(platform::GetEnvironmentVariableA("VTV4V_TWO") == "Z\xFCrich");
    CHECK(platform::GetEnvironmentVariableA("VTV4V_LAST") == "end");
    CHECK(platform::GetEnvironmentVariableA("VTV4V_NONE").empty());
    machine.Environment("USERNAME", "");
    CHECK(platform::GetEnvironmentVariableA("USERNAME").empty());
    machine.Environment("USERNAME", "G\u00F6tz \u4E2D");
    CHECK(platform::GetEnvironmentVariableA("USERNAME") == "G\xF6tz ?");
}

TEST_CASE("The command line's tail is what stands behind the program's name") {
    char program[] = "vtv4v";
    char option[] = " -master ";
    char rest[] = "\u00E4";
    char* arguments[] = {program, option, rest};
    platform::ProcessStart(3, arguments);
    CHECK(platform::CommandLineTail() == u" -master  \u00E4");
    platform::ProcessStart(1, arguments);
    CHECK(platform::CommandLineTail().empty());
}

TEST_CASE("The program's folder is a path of the machine, or of drive Z:") {
    const TestMachine machine;
    CHECK(platform::ProgramFolder().starts_with("Z:\\"));
    CHECK_FALSE(platform::ProgramFolder().ends_with("\\"));
    const fs::path folder = fs::canonical("/proc/self/exe").parent_path();
    fs::create_directory_symlink(folder.parent_path(), OnMachine("drives/d"));
    CHECK(platform::ProgramFolder() == "D:\\" + folder.filename().native());
    fs::remove(OnMachine("drives/d"));
    fs::create_directory_symlink(folder, OnMachine("drives/E"));
    CHECK(platform::ProgramFolder() == "E:\\");
}
