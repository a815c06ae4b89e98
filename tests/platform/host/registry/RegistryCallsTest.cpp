#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/RegistryCalls.h"

using namespace platform;

namespace {

Handle Opened(std::int32_t access) {
    Handle key = 0;
    CHECK(RegOpenKeyExA(KeyLocalMachine, "k", 0, access, key) == StatusSuccess);
    return key;
}

Status Create(Handle root, const std::string& path) {
    Handle key = 0;
    std::uint32_t disposition = 0;
    return RegCreateKeyExA(root, path, "", 0, KeyQueryValue, key, disposition);
}

std::vector<std::string> SubKeys(Handle key) {
    std::vector<std::string> names;
    for (std::string name(255, ' '), className(1, ' ');;) {
        std::uint32_t size = 255;
        std::uint32_t classSize = 1;
        const auto index = static_cast<std::int32_t>(names.size());
        if (RegEnumKeyExA(key, index, name, size, className, classSize) != StatusSuccess) {
            return names;
        }
        names.push_back(name.substr(0, size));
    }
}

}  // namespace

TEST_CASE("A path leads through the machine's roots, of which classes and users lie in others") {
    const TestMachine machine;
    REQUIRE(Create(KeyCurrentUser, "Software\\\\One\\two\\") == StatusSuccess);
    CHECK(Create(KeyCurrentUser, "\\Software") == 161);
    CHECK(Create(KeyCurrentUser, std::string(256, 'k')) == StatusInvalidParameter);
    REQUIRE(Create(KeyClassesRoot, "\\.txt") == StatusSuccess);  // the one root that takes such a path
    CHECK(RegDeleteKeyA(KeyLocalMachine, "Software\\Classes\\.TXT") == StatusSuccess);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "Software\\Classes") == StatusAccessDenied);
    REQUIRE(SubKeys(KeyUsers).size() == 1);
    CHECK(RawKeyExists(KeyUsers, SubKeys(KeyUsers).front() + "\\SOFTWARE\\one\\Two"));
    CHECK(Create(KeyUsers, "another") == StatusAccessDenied);
}

TEST_CASE("Names without regard to case, subkeys by name, values by first writing") {
    const TestMachine machine;
    for (const char* const name : {"k\\beta", "k\\_x", "k\\Alpha", "k\\\xE4", "K\\BETA", "k\\\xC4"}) {
        REQUIRE(Create(KeyLocalMachine, name) == StatusSuccess);
    }
    CHECK(SubKeys(Opened(KeyEnumerateSubKeys)) == std::vector<std::string>{"Alpha", "beta", "_x", "\xE4"});
    for (const char* const name : {"zeta", "", "Hugo", "ZETA"}) {
        RawValueSet(KeyLocalMachine, "k", name, RawNumber(1));
    }
    CHECK(RawValueNames(KeyLocalMachine, "k") == std::vector<std::string>{"zeta", "", "Hugo"});
}

TEST_CASE("A handle has its rights and no others, which are looked at before its key, and lasts to its close") {
    const TestMachine machine;
    REQUIRE(Create(KeyLocalMachine, "k") == StatusSuccess);
    const Handle reading = Opened(KeyQueryValue);
    const Handle writing = Opened(KeySetValue);
    REQUIRE(RegDeleteKeyA(KeyLocalMachine, "k") == StatusSuccess);
    REQUIRE(Create(KeyLocalMachine, "k") == StatusSuccess);
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    CHECK(RegQueryValueExA(writing, "n", type, {}, size) == StatusAccessDenied);
    CHECK(RegSetValueExA(reading, "n", RegBinary, "x") == StatusAccessDenied);
    CHECK(RegQueryValueExA(reading, "n", type, {}, size) == StatusKeyDeleted);
    CHECK(RegSetValueExA(writing, "n", RegBinary, "x") == StatusKeyDeleted);
    CHECK(RegDeleteValueA(writing, "n") == StatusKeyDeleted);
    CHECK(Create(writing, "x") == StatusKeyDeleted);
    CHECK(RegCloseKey(writing) == StatusSuccess);
    CHECK(RegCloseKey(writing) == StatusInvalidHandle);
}
