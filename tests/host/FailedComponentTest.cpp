#include "Check.h"
#include "host/MachineFiles.h"
#include "installcheck/VcoreTest.h"
#include "samples/InstalledSuite.h"

TEST_CASE("A library that is there and does not start fails the check") {
    const TestMachine machine;
    MachineFile("components", "sevDTA30.dll!sevDTA_Init=-1\n");
    InstalledSuiteAdd({});
    VcoreTest check;
    CHECK_FALSE(check.Ok());
    CHECK(check.Text().find(u", Test=*** sevDTA30_Init failed ***\r\n") != Text::npos);
}
