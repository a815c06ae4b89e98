#include <memory>

#include "Check.h"
#include "platform/host/registry/RegFile.h"
#include "platform/host/registry/RegistryText.h"

using namespace platform::host;

// That what is written reads back the same, whatever it is, the fuzz target of this reader tells.

TEST_CASE("UTF-16 is known by its byte order mark") {
    CHECK(TextOfUtf16File({"\xFE\xFF\x20\xAC\xD8\x3D\xDE\x00", 8}) == "\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST_CASE("Entries below a key are read, and what cannot be read is passed over and told") {
    struct {
        std::string_view lines, read;
        bool passedOver = false;
    } const cases[] = {
        {"  @ = dword:1F ; remark\n\n; remark\n", "@=dword:0000001f\r\n"},
        {"\"\\\"q\\\\\"=\"a \\\"b\\\" C:\\\\x\"\r\n", "\"\\\"q\\\\\"=\"a \\\"b\\\" C:\\\\x\"\r\n"},
        {"\"n\"=hex(1):41,00,00,00\n", "\"n\"=\"A\"\r\n"},
        {"\"n\"=hex(1):41,00,00\n", "\"n\"=hex(1):41,00,00\r\n"},
        {"\"n\"=\"one\r\ntwo\"\r\n", "\"n\"=hex(1):6f,00,6e,00,65,00,0d,00,0a,00,74,00,77,00,6f,00,00,00\r\n"},
        {"\"n\"=hex(fffe0010):01,\\\r\n  02,\\\n\t3\n", "\"n\"=hex(fffe0010):01,02,03\r\n"},
        {"\"z\"=dword:1\n\"A\"=dword:1\n\"Z\"=dword:2\n", "\"z\"=dword:00000002\r\n\"A\"=dword:00000001\r\n"},
        {"\"o\"=dword:1\n\"O\"=-\n\"\xC3\x84\"=dword:1\n\"\xC3\xA4\"=\"\xF0\x9F\x98\x80\"\n",
         "\"\xC3\x84\"=\"\xF0\x9F\x98\x80\"\r\n"},
        {"@=\"1\"\n[-HKEY_LOCAL_MACHINE\\A]\n[hkey_local_machine\\a\\\\]\n", ""},
        {"\"n\"=\"x\"", "\"n\"=\"x\"\r\n"},
        {"\"n\"=\"x", ""},
        // damaged
        {"garbage\n@=\"s\"\r\n", "@=\"s\"\r\n", true},
        {"\"n\"=dword:1g\n@=\"s\"\r\n", "@=\"s\"\r\n", true},
        {"\"n\"=\"a\" b\n@=\"s\"\r\n", "@=\"s\"\r\n", true},
        {"\"n\"=hex:1,,2\n@=\"s\"\r\n", "@=\"s\"\r\n", true},
        {"\"n\"=hex:01,\\\r\n@=\"s\"\r\n", "@=\"s\"\r\n", true},
        {"\"n\xFF\"=dword:1\n@=\"s\"\r\n", "@=\"s\"\r\n", true},
        {"\"n\"=\"open\nfurther\n@=\"s\"\r\n", "@=\"s\"\r\n", true},
        {"@=\"s\"\n[HKEY_CURRENT_USER\\a]\n@=\"lost\"\n", "@=\"s\"\r\n", true},
        {"@=\"s\"\n[-HKEY_LOCAL_MACHINE]\n@=\"lost\"\n", "@=\"s\"\r\n", true},
        {"@=\"s\"\n[\n@=\"lost\"\n", "@=\"s\"\r\n", true},
    };
    const std::string head = "[HKEY_LOCAL_MACHINE\\a]\r\n";
    for (const auto& one : cases) {
        CAPTURE(one.lines);
        const auto root = std::make_shared<RegistryKey>();
        RegFileReader reader(root, MachineRoots);
        reader.Read(("\xEF\xBB\xBF" + std::string(RegFirstLine) + head).append(one.lines), true);
        CHECK(Dump(*root).substr(RegFirstLine.size() + 2 + head.size()) == one.read);
        CHECK(reader.PassedOver() == one.passedOver);
    }
}
