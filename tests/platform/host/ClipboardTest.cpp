#include "Check.h"
#include "host/MachineFiles.h"
#include "platform/WindowSystem.h"

using namespace platform;

TEST_CASE("The clipboard's text is a file of the machine, in UTF-8") {
    const TestMachine machine;
    CHECK(ClipboardSet("Gr\xFC\xDF\r\n", ClipboardText));
    CHECK_FALSE(ClipboardSet("anderes", ClipboardText + 1));
    CHECK(MachineFile("clipboard.txt") == "Grüß\r\n");
    CHECK(ClipboardClear());
    CHECK(MachineFile("clipboard.txt").empty());
    // A folder in its place refuses every user alike.
    std::filesystem::remove(OnMachine("clipboard.txt"));
    std::filesystem::create_directories(OnMachine("clipboard.txt/inside"));
    CHECK_FALSE(ClipboardSet("a", ClipboardText));
    CHECK_FALSE(ClipboardClear());
}
