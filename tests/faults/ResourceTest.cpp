#include <sys/resource.h>

#include <csignal>
#include <iterator>
#include <optional>
#include <string>

#include "Check.h"
#include "RawRegistry.h"
#include "faults/FaultMachine.h"
#include "faults/FaultyMemory.h"
#include "platform/Regional.h"
#include "platform/ShellCalls.h"
#include "products/modShellExec.h"
#include "settings/IniFile4.h"
#include "settings/KeyedList.h"
#include "settings/Registry.h"
#include "version/ProductProfileMain.h"
#include "version/ProductProfileReporting.h"
#include "version/modVTV4Version.h"

namespace {

// On a disk that is full beyond a file's first `size` bytes.
Error DemoOnDiskOf(std::size_t size) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit earlier{};
    getrlimit(RLIMIT_FSIZE, &earlier);
    const rlimit full{size, earlier.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    Error error = RaisedBy(WriteDemoFile);
    setrlimit(RLIMIT_FSIZE, &earlier);
    return error;
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

TEST_CASE("A disk without room for another file is told, and a load that fails names its product") {
    FaultMachine machine;
    ControlFilePath = platform::TextFromAnsi(machine.ControlFile());
    const std::string before = machine.Left();
    SeamStart({Seam::CreateFileA, 1, platform::StatusDiskFull});
    CHECK(RaisedBy(WriteDemoFile).number == 61);
    SeamStop();
    CHECK(machine.Left() == before);
    CHECK(machine.Session("OK\n", {Seam::RegSetValueExA, 1, 5})
              .told.starts_with(u"Kann Versions-Einstellungen nicht laden:\r\nSoftware\\Vandrel\\Tallora\\V4\r\n"));
}

TEST_CASE("A deletion that is refused is silent, a wait that fails says so") {
    const FaultMachine machine;
    const std::string before = machine.Left();
    const int openHandles = SeamOpenHandles();
    SeamStart({Seam::RegDeleteValueA, 1, 5});
    CHECK(RaisedBy([] { ProductProfileMain().Profile.Table->ForcedVersion(true, u"hugo", -1); }).number == 0);
    SeamStop();
    CHECK(machine.Left() == before);
    const auto waited = [](Seam call, std::int64_t failure) {
        std::uint32_t result = 0;
        SeamStart({call, 1, failure});
        const Error error = RaisedBy([&] { result = ShellAndWait(u"true"); });
        SeamStop();
        return std::pair(error.number, result);
    };
    CHECK(waited(Seam::StartCommandLine, 2) == std::pair(53, 0U));
    CHECK(waited(Seam::StartCommandLine, 5) == std::pair(5, 0U));
    CHECK(waited(Seam::OpenProcess, 0) == std::pair(0, platform::WaitFailed));
    CHECK(waited(Seam::WaitForSingleObject, platform::WaitFailed) == std::pair(0, platform::WaitFailed));
    CHECK(SeamOpenHandles() == openHandles);
}

TEST_CASE("A new document is written over no file that another program has just made") {
    const TestMachine machine;
    IniFile4 document;
    document.Value(u"S", u"a", u"1");
    SeamStart({}, {Seam::CreateFileA, 1, [&] { FileContent(machine.ControlFile(), "other"); }});
    const Error error = RaisedBy([&] { document.WriteFile(platform::TextFromAnsi(machine.ControlFile())); });
    SeamStop();
    CHECK(error.number == 58);
    CHECK(FileContent(machine.ControlFile()) == "other");
}

TEST_CASE("A key that had to be created leaves no other key open") {
    const TestMachine machine;
    const int openHandles = SeamOpenHandles();
    SeamStart({});
    Registry registry;
    registry.KeyOpenCurrentUser(u"Software\\Vandrel\\Tallora\\new", true);
    registry.KeyClose();
    SeamStop();
    CHECK(SeamOpenHandles() == openHandles);
}

TEST_CASE("Memory that runs out at any point ends an operation with its error and loses nothing") {
    const FaultMachine machine;
    ControlFilePath = platform::TextFromAnsi(machine.ControlFile());
    MainVersions = ProductProfileMain().Profile.Table;
    ReportingVersions = ProductProfileReporting().Profile.Table;
    const std::string before = "[Tallora]\r\na=1\r\n";
    for (const auto& operation : {WriteDemoFile, ImportVersions}) {
        bool failed = true;
        for (int allocation = 0; failed; ++allocation) {
            CAPTURE(allocation);
            FileContent(machine.ControlFile(), before);
            const int openHandles = SeamOpenHandles();
            SeamStart({});
            MemoryFails(allocation);
            const std::optional<Error> error = TrapError(operation);
            MemoryFails({});
            SeamStop();
            failed = error.has_value();
            CHECK((!failed || error->number == 7));
            CHECK((!failed || FileContent(machine.ControlFile()) == before));
            CHECK(SeamOpenHandles() == openHandles);
            CHECK(machine.FolderClean());
        }
    }
    MainVersions.reset();
    ReportingVersions.reset();

    for (int allocation = 0; allocation < 8; ++allocation) {
        CAPTURE(allocation);
        const Text key(50, u'k');
        KeyedList<Text> list;
        SeamStart({});
        MemoryFails(allocation);
        TrapError([&] { list.Add(key, key); });
        MemoryFails({});
        SeamStop();
        const int added = list.Find(key) == nullptr ? 0 : 1;
        list.Add(u"other", u"another");
        CHECK(*list.Find(u"other") == u"another");
        CHECK(std::distance(list.begin(), list.end()) == added + 1);
    }
}
