#include <malloc.h>
#include <sys/resource.h>

#include <string>

#include "Check.h"
#include "RawRegistry.h"
#include "faults/FaultMachine.h"
#include "platform/Regional.h"
#include "platform/ShellCalls.h"
#include "products/modShellExec.h"
#include "version/ProductProfileMain.h"
#include "version/modVTV4Version.h"

namespace {

// On a disk that is full beyond a file's first `size` bytes.
Error DemoOnDiskOf(std::size_t size) {
    rlimit earlier{};
    getrlimit(RLIMIT_FSIZE, &earlier);
    const rlimit full{size, earlier.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    const Error error = RaisedBy(WriteDemoFile);
    setrlimit(RLIMIT_FSIZE, &earlier);
    return error;
}

std::size_t MemoryInUse() {
    const struct mallinfo2 memory = mallinfo2();
    return memory.uordblks + memory.hblkhd;
}

}  // namespace

TEST_CASE("A disk that fills at any byte of the control file leaves the earlier one") {
    const FaultMachine machine;
    ControlFilePath = platform::TextFromAnsi(machine.ControlFile());
    const std::string earlier = FileContent(machine.ControlFile()).value();
    WriteDemoFile();
    const std::size_t whole = FileContent(machine.ControlFile()).value().size();
    for (std::size_t size = 0; size < whole; ++size) {
        CAPTURE(size);
        FileContent(machine.ControlFile(), earlier);
        CHECK(DemoOnDiskOf(size).number == 61);
        CHECK(FileContent(machine.ControlFile()) == earlier);
        CHECK(machine.FolderClean());
    }
    CHECK(DemoOnDiskOf(whole).number == 0);
    CHECK(FileContent(machine.ControlFile()).value().size() == whole);
}

TEST_CASE("A deletion that is refused is silent, a wait that fails says so") {
    const FaultMachine machine;
    const int openHandles = SeamOpenHandles();
    const ProductProfileMain profile;
    SeamStart({Seam::RegDeleteValueA, 1, 5});
    CHECK(RaisedBy([&] { profile.Profile.Table->ForcedVersion(true, u"hugo", -1); }).number == 0);
    SeamStop();
    CHECK(machine.Present("") == Before);
    struct {
        SeamFault fault;
        std::int32_t error;
        std::uint32_t result;
    } const waits[] = {{{Seam::StartCommandLine, 1, 2}, 53, 0},
                       {{Seam::StartCommandLine, 1, 5}, 5, 0},
                       {{Seam::OpenProcess, 1, 0}, 0, platform::WaitFailed},
                       {{Seam::WaitForSingleObject, 1, platform::WaitFailed}, 0, platform::WaitFailed}};
    for (const auto& wait : waits) {
        std::uint32_t result = 0;
        SeamStart(wait.fault);
        CHECK(RaisedBy([&] { result = ShellAndWait(u"true"); }).number == wait.error);
        SeamStop();
        CHECK(result == wait.result);
    }
    CHECK(SeamOpenHandles() == openHandles);
}

// In ten windows; Session checks the handles.
TEST_CASE("A thousand rounds of all buttons take no memory that they do not give back") {
    FaultMachine machine;
    std::string input;
    for (int round = 0; round < VTV4V_ROUNDS; ++round) {
        input += "Demo\nImportieren\nJa\nOK\nExportieren\nBearbeiten\nLöschen\nJa\nOK\n";
    }
    input += "Demo\nImportieren\nJa\nOK\nFertig\n";
    Outcome expected = Before;
    std::size_t warm = 0;
    for (int window = 0; window < 10; ++window) {
        Outcome outcome = machine.Session(input);
        expected.file = outcome.file;
        CHECK(outcome == expected);
        outcome = {};
        warm = window == 1 ? MemoryInUse() : warm;
    }
    // Ended editors are let go at the next start, how many there are is chance. The smallest block that a round could
    // keep is 32 bytes: 25,600 in all.
    CHECK(MemoryInUse() < warm + 8192);
}
