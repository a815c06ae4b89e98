#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/Process.h"

namespace fs = std::filesystem;

TEST_CASE("The first change creates the default machine folder in the user's data folder") {
    TestMachine machine;
    const fs::path home = OnMachine("home");
    machine.Environment("HOME", home.native());
    machine.Environment("VTV4V_MACHINE", {});
    for (const auto& [data, folder] : {std::pair(home / "data", home / "data"), {fs::path(), home / ".local/share"}}) {
        machine.Environment("XDG_DATA_HOME", data.native());
        RawValueSet(platform::KeyCurrentUser, "Software", "n", RawNumber(1));
        CHECK(fs::exists(folder / "vtv4v/machine/user.db"));
    }
}

TEST_CASE("Process variables override the environment file, in which the last line wins") {
    TestMachine machine;
    DiskFile(OnMachine("environment"), "VTV4V_ONE=first\r\nno variable\nvtv4v_one=a=b\r\nUSERNAME=ruedi");
    machine.Environment("USERNAME", "G\u00F6tz");
    CHECK(platform::GetEnvironmentVariableA("Vtv4v_One") == "a=b");
    CHECK(platform::GetEnvironmentVariableA("USERNAME") == "G\xF6tz");
}
