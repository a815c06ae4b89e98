#include <memory>
#include <random>

#include "Check.h"
#include "platform/host/RegFile.h"
#include "platform/host/RegistryText.h"

using namespace platform::host;

namespace {

constexpr std::string_view KeyHead = "[HKEY_LOCAL_MACHINE\\a]\r\n";

struct Reading {
    std::string dump;
    std::size_t read;
    bool passedOver;
};

Reading Read(std::string_view text) {
    const auto root = std::make_shared<RegistryKey>();
    RegFileReader reader(root, MachineRoots);
    const std::size_t read = reader.Read(text, true);
    return {Dump(*root), read, reader.PassedOver()};
}

// The values' lines that are read of `lines` below one key.
std::string Values(std::string_view lines) {
    const std::string text = Read(std::string(KeyHead).append(lines)).dump;
    const std::size_t start = RegFirstLine.size() + 2 + KeyHead.size();
    return text.substr(std::min(start, text.size()));
}

}  // namespace

TEST_CASE("A value's line is read, and written back in one form") {
    struct {
        std::string_view line, read;
    } const cases[] = {
        {"\"n\"=dword:0000001f\n", "\"n\"=dword:0000001f\r\n"},
        {"  @ = dword:1F ; remark\n", "@=dword:0000001f\r\n"},
        {"\"\\\"q\\\\\"=\"a \\\"b\\\" C:\\\\x\"\r\n", "\"\\\"q\\\\\"=\"a \\\"b\\\" C:\\\\x\"\r\n"},
        {"\"n\"=hex(1):\n", "\"n\"=hex(1):\r\n"},
        {"\"n\"=hex(1):41,00,00,00\n", "\"n\"=\"A\"\r\n"},
        {"\"n\"=hex(1):41,00,00\n", "\"n\"=hex(1):41,00,00\r\n"},
        {"\"n\"=\"one\r\ntwo\"\r\n", "\"n\"=hex(1):6f,00,6e,00,65,00,0d,00,0a,00,74,00,77,00,6f,00,00,00\r\n"},
        {"\"n\"=hex:01,\\\r\n  02,\\\n\t3\n", "\"n\"=hex:01,02,03\r\n"},
        {"\"n\"=hex(fffe0010):ff\n", "\"n\"=hex(fffe0010):ff\r\n"},
        {"\"z\"=dword:1\n\"A\"=dword:1\n\"Z\"=dword:2\n", "\"z\"=dword:00000002\r\n\"A\"=dword:00000001\r\n"},
        {"\"o\"=dword:1\n\"O\"=-\n\"\xC3\x84\"=dword:1\n\"\xC3\xA4\"=\"\xF0\x9F\x98\x80\"\n",
         "\"\xC3\x84\"=\"\xF0\x9F\x98\x80\"\r\n"},
        // cut short by the end of the text: whole, or not at all
        {"\"n\"=\"x\"", "\"n\"=\"x\"\r\n"},
        {"\"n\"=dword:00000001\r", "\"n\"=dword:00000001\r\n"},
        {"\"n\"=dword:0000000", ""},
        {"\"n\"=\"x", ""},
        {"\"n\"=hex:01,\\\r\n", ""},
    };
    for (const auto& one : cases) {
        CAPTURE(one.line);
        CHECK(Values(one.line) == one.read);
    }
}

TEST_CASE("Lines that cannot be read are passed over and told, and sound ones around them count") {
    const std::vector<std::string_view> cases = {"garbage\n",
                                                 "\"n\n",
                                                 "\"n\"\n",
                                                 "\"n\"=\n",
                                                 "\"n\"=dword:1g\n",
                                                 "\"n\"=\"a\" b\n",
                                                 "\"n\"=\"a\\x\"\n",
                                                 "\"n\"=hex:1,,2\n",
                                                 "\"n\"=hex:01,\n",
                                                 "\"n\"=hex:01,\\\r\n",
                                                 "\"n\"=hex(:01\n",
                                                 "\"n\xFF\"=dword:1\n",
                                                 "\"n\"=\"open\nfurther\n"};
    for (const std::string_view line : cases) {
        CAPTURE(line);
        const std::string sound = "\"s\"=dword:00000001\r\n";
        const Reading reading = Read(std::string(KeyHead).append(line) + sound);
        CHECK(reading.dump.ends_with("\\a]\r\n" + sound));
        CHECK(reading.passedOver);
    }
    CHECK_FALSE(
        Read("\xEF\xBB\xBFWindows Registry Editor Version 5.00\n\n; remark\n[HKEY_LOCAL_MACHINE\\a] ; b\n").passedOver);
}

TEST_CASE("Heads name keys of the file's roots alone") {
    const Reading kept = Read(
        "[hkey_local_machine\\A\\\\b]\n@=\"1\"\n[HKEY_LOCAL_MACHINE\\a\\c]c]\n[HKEY_CLASSES_ROOT\\.txt]\n"
        "[HKEY_LOCAL_MACHINE\\d\\e]\n[-HKEY_LOCAL_MACHINE\\D]\n@=\"lost\"\n");
    CHECK(kept.dump == std::string(RegFirstLine) +
                           "\r\n[HKEY_LOCAL_MACHINE\\A\\b]\r\n@=\"1\"\r\n\r\n[HKEY_LOCAL_MACHINE\\A\\c]c]\r\n"
                           "\r\n[HKEY_LOCAL_MACHINE\\Software\\Classes\\.txt]\r\n");
    std::string deep = "[HKEY_LOCAL_MACHINE";
    for (std::size_t level = 0; level <= DeepestKey; ++level) {
        deep += "\\d";
    }
    const std::vector<std::string> refused = {"[HKEY_CURRENT_USER\\a]",
                                              "[-HKEY_LOCAL_MACHINE]",
                                              "[]",
                                              "[",
                                              "[HKEY_LOCAL_MACHINE\\" + std::string(LongestKeyName + 1, 'k') + "]",
                                              deep + "]"};
    for (const std::string& head : refused) {
        CAPTURE(head);
        const Reading reading = Read(std::string(KeyHead) + "\"s\"=dword:1\n" + head + "\n\"lost\"=dword:1\n");
        CHECK(reading.dump.ends_with("\\a]\r\n\"s\"=dword:00000001\r\n"));
        CHECK(reading.passedOver);
    }
}

TEST_CASE("What is written reads back the same, whatever it is") {
    std::mt19937 random(1);
    const auto root = std::make_shared<RegistryKey>();
    for (int count = 0; count < 300; ++count) {
        std::u16string name(random() % 20, u' ');
        for (char16_t& character : name) {
            character = static_cast<char16_t>(1 + random() % (random() % 2 == 0 ? 0x7E : 0xD7FE));
        }
        RegistryValue value{static_cast<std::uint32_t>(random() % 9), std::string(random() % 90, ' ')};
        for (char& byte : value.data) {
            byte = static_cast<char>(random());
        }
        root->SubKeyMade(u"k")->Value(name, value);
    }
    const std::string text = Dump(*root);
    const Reading reading = Read(text);
    CHECK(reading.dump == text);
    CHECK(reading.read == text.size());
    CHECK_FALSE(reading.passedOver);
}
