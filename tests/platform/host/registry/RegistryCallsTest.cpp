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

}  // namespace

TEST_CASE("HKEY_CLASSES_ROOT and HKEY_USERS show keys of the other roots") {
    const TestMachine machine;
    REQUIRE(Create(KeyCurrentUser, "Software\\\\One\\two\\") == StatusSuccess);
    CHECK(Create(KeyCurrentUser, "\\Software") == 161);
    CHECK(Create(KeyCurrentUser, std::string(256, 'k')) == StatusInvalidParameter);
    REQUIRE(Create(KeyClassesRoot, "\\.txt") == StatusSuccess);  // only this root allows a leading backslash
    CHECK(RegDeleteKeyA(KeyLocalMachine, "Software\\Classes\\.TXT") == StatusSuccess);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "Software\\Classes") == StatusAccessDenied);
    CHECK(RawKeyExists(KeyUsers, "S-1-5-21-0-0-0-1000\\SOFTWARE\\one\\Two"));
    CHECK(Create(KeyUsers, "another") == StatusAccessDenied);
}

TEST_CASE("Calls check rights before the key's existence; handles stay valid until closed") {
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
