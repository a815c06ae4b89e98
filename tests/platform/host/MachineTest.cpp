#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"

namespace fs = std::filesystem;

TEST_CASE("A machine that no variable names is in the user's data folder, and its first change makes the folder") {
    TestMachine machine;
    const fs::path home = OnMachine("home");
    machine.Environment("HOME", home.native());
    for (const auto& [data, folder] : {std::pair(home / "data", home / "data"), {fs::path(), home / ".local/share"}}) {
        machine.Environment("VTV4V_MACHINE", {});
        machine.Environment("XDG_DATA_HOME", data.native());
        RawValueSet(platform::KeyCurrentUser, "Software", "n", RawNumber(1));
        CHECK(RawValue(platform::KeyCurrentUser, "Software", "n") == RawNumber(1));
        CHECK(fs::exists(folder / "vtv4v/machine/user.reg"));
    }
}
