#include <sys/resource.h>

#include <csignal>

#include "Check.h"
#include "faults/FaultMachine.h"
#include "platform/Regional.h"
#include "version/ProductProfileMain.h"
#include "version/modVTV4Version.h"

TEST_CASE("A disk without room for the control file leaves the earlier one") {
    const FaultMachine machine;
    ControlFilePath = platform::TextFromAnsi(machine.ControlFile());
    const std::string before = machine.Left();
    SeamStart({Seam::CreateFileA, 1, platform::StatusDiskFull});
    CHECK(RaisedBy(WriteDemoFile).number == 61);
    SeamStop();
    CHECK(machine.Left() == before);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit earlier{};
    getrlimit(RLIMIT_FSIZE, &earlier);
    for (const rlim_t size : {0U, 1U, 100U}) {
        const rlimit full{size, earlier.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
        const Error error = RaisedBy(WriteDemoFile);
        setrlimit(RLIMIT_FSIZE, &earlier);
        CHECK(error.number == 61);
        CHECK(machine.Left() == before);
        CHECK(machine.FolderClean());
    }
}

TEST_CASE("A deletion that is refused is silent, and a load that fails names its product") {
    FaultMachine machine;
    const std::string before = machine.Left();
    SeamStart({Seam::RegDeleteValueA, 1, 5});
    CHECK(RaisedBy([] { ProductProfileMain().Profile.Table->ForcedVersion(true, u"hugo", -1); }).number == 0);
    SeamStop();
    CHECK(machine.Left() == before);
    CHECK(machine.Session("OK\n", {Seam::RegSetValueExA, 1, 5})
              .told.starts_with(u"48 Kann Versions-Einstellungen nicht laden:\r\nSoftware\\Vandrel\\Tallora\\V4\r\n"));
}
