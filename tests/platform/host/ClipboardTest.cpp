#include <doctest/doctest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "TestMachine.h"
#include "platform/WindowSystem.h"
#include "platform/host/Machine.h"

using namespace platform;

TEST_CASE("The clipboard's text is a file of the machine, in UTF-8") {
    TestMachine machine;
    const std::filesystem::path file = host::MachineFolder() / "clipboard.txt";
    const auto content = [&file] {
        std::ifstream stream(file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    };
    CHECK(
        ClipboardSet("Gr\xFC\xDF"
                     "e\r\nzweite\r\n",
                     ClipboardText));
    CHECK(content() == "Grüße\r\nzweite\r\n");
    CHECK_FALSE(ClipboardSet("anderes", ClipboardText + 1));
    CHECK(content() == "Grüße\r\nzweite\r\n");
    CHECK(ClipboardClear());
    CHECK(content().empty());

    // A folder in its place, or a machine that is no folder, refuses every user alike.
    std::filesystem::remove(file);
    std::filesystem::create_directories(file / "inside");
    CHECK_FALSE(ClipboardSet("a", ClipboardText));
    std::filesystem::remove_all(file);
    CHECK(ClipboardSet("a", ClipboardText));
    machine.Environment("VTV4V_MACHINE", file.string());
    CHECK_FALSE(ClipboardClear());
}
