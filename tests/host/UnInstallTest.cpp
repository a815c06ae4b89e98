#include <filesystem>
#include <fstream>
#include <string>

#include "Check.h"
#include "ProductEntries.h"
#include "TestMachine.h"
#include "platform/host/Machine.h"
#include "products/Installer.h"

namespace {

namespace fs = std::filesystem;

// Notes how it was called and, when it is called without a dialog in which the user could cancel, removes the product.
const std::string InstallerScript =
    "#!/bin/sh\n"
    "echo \"$*\" >> \"$VTV4V_MACHINE/calls\"\n"
    "test \"$1\" = /quiet || exit 2\n"
    "sleep 0.1\n"
    "cat >> \"$VTV4V_MACHINE/machine.reg\" <<'end'\n\n"
    "[-HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\VT]\n"
    "end\n";

}  // namespace

TEST_CASE("Removing a product calls the system's installer, waits for it, and looks what has become of the product") {
    const TestMachine machine;
    ProductEntries products;
    products.Add("VT", "Vandrel Test", "x {T-1}");
    Installer installer;
    installer.GUI(u"T-1");
    CHECK(RaisedBy([&] { installer.UnInstall(); }).number == 53);
    CHECK(installer.IsInstalled());

    const fs::path program = platform::host::MachineFolder() / "drives/c/Windows/System32/MsiExec.exe";
    fs::create_directories(program.parent_path());
    std::ofstream(program) << InstallerScript;
    fs::permissions(program, fs::perms::owner_exec, fs::perm_options::add);
    installer.UnInstall();
    CHECK(installer.IsInstalled());
    for (int call = 0; call < 2; ++call) {
        installer.UnInstall(true);
        CHECK_FALSE(installer.IsInstalled());
        CHECK(installer.GUI().empty());
    }
    std::ifstream calls(platform::host::MachineFolder() / "calls");
    for (const std::string expected : {"/x{T-1}", "/quiet /x{T-1}", ""}) {
        std::string line;
        std::getline(calls, line);
        CHECK(line == expected);
    }
}
