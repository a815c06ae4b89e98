
#include "Check.h"
#include "ProductEntries.h"
#include "host/MachineFiles.h"
#include "products/Installer.h"

namespace {

namespace fs = std::filesystem;

// Notes how it was called and, when it is called without a dialog in which the user could cancel, removes the product.
const std::string InstallerScript =
    "#!/bin/sh\n"
    "echo \"$*\" >> \"$VTV4V_MACHINE/calls\"\n"
    "test \"$1\" = /quiet || exit 2\n"
    "sleep 0.1\n"
    "sqlite3 \"$VTV4V_MACHINE/machine.db\" \"DELETE FROM key WHERE name = 'VT'\"\n";

}  // namespace

TEST_CASE("Removing a product calls the system's installer, waits for it, and looks what has become of the product") {
    const TestMachine machine;
    ProductEntries products;
    products.Add("VT", "Vandrel Test", "x {T-1}");
    Installer installer;
    installer.GUI(u"T-1");
    CHECK(RaisedBy([&] { installer.UnInstall(); }).number == 53);
    CHECK(installer.IsInstalled());

    const std::string program = "drives/c/Windows/System32/MsiExec.exe";
    MachineFile(program, InstallerScript);
    fs::permissions(OnMachine(program), fs::perms::owner_exec, fs::perm_options::add);
    installer.UnInstall();
    CHECK(installer.IsInstalled());
    installer.UnInstall(true);
    CHECK_FALSE(installer.IsInstalled());
    installer.UnInstall(true);
    CHECK(MachineFile("calls") == "/x{T-1}\n/quiet /x{T-1}\n");
}
