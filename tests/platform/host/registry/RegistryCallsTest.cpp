#include <array>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/RegistryCalls.h"

using namespace platform;

namespace {

constexpr std::int32_t AllRights = KeyQueryValue | KeySetValue | KeyCreateSubKey | KeyEnumerateSubKeys;
constexpr std::string_view One("\1\0\0\0", 4);

Handle Opened(std::int32_t access = AllRights) {
    Handle key = 0;
    CHECK(RegOpenKeyExA(KeyLocalMachine, "k", 0, access, key) == StatusSuccess);
    return key;
}

Status OpenStatus(Handle root, const std::string& path, std::int32_t access = KeyQueryValue) {
    Handle key = -1;
    const Status status = RegOpenKeyExA(root, path, 0, access, key);
    CHECK((key != 0) == (status == StatusSuccess));
    return status;
}

Status Create(Handle root, const std::string& path, std::int32_t access = KeyCreateSubKey) {
    Handle key = 0;
    std::uint32_t disposition = 0;
    const Status status = RegCreateKeyExA(root, path, "", 0, access, key, disposition);
    RegCloseKey(key);
    return status;
}

Status EnumKey(Handle key, std::int32_t index, std::uint32_t size = 255, std::string* name = nullptr) {
    std::array<char, 255> buffer = {};
    std::uint32_t classSize = 0;
    const Status status = RegEnumKeyExA(key, index, buffer, size, {}, classSize);
    if (name != nullptr) {
        name->assign(buffer.data());
    }
    return status;
}

Status EnumValue(Handle key, std::int32_t index, std::uint32_t nameSize = 255) {
    std::array<char, 255> buffer = {};
    std::uint32_t dataSize = 255;
    std::uint32_t type = 0;
    return RegEnumValueA(key, index, buffer, nameSize, type, buffer, dataSize);
}

std::vector<std::string> SubKeys(Handle key) {
    std::vector<std::string> names;
    std::string name;
    while (EnumKey(key, static_cast<std::int32_t>(names.size()), 255, &name) == StatusSuccess) {
        names.push_back(name);
    }
    return names;
}

Status Query(Handle key) {
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    return RegQueryValueExA(key, "missing", type, {}, size);
}

}  // namespace

TEST_CASE("A key is made with all its levels below the machine's roots, of which classes and users lie in others") {
    const TestMachine machine;
    CHECK(OpenStatus(KeyCurrentUser, "missing") == StatusFileNotFound);
    Handle key = 0;
    std::uint32_t disposition = 0;
    RegCreateKeyExA(KeyCurrentUser, "Software\\One\\Two", "", 0, AllRights, key, disposition);
    CHECK(disposition == 1);
    RegCreateKeyExA(KeyCurrentUser, "SOFTWARE\\\\one\\two\\", "", 0, AllRights, key, disposition);
    CHECK(disposition == 2);
    CHECK(SubKeys(KeyCurrentUser) == std::vector<std::string>{"Software"});
    CHECK(OpenStatus(KeyCurrentUser, "\\Software") == 161);
    CHECK(Create(KeyCurrentUser, std::string(256, 'k')) == StatusInvalidParameter);
    CHECK(Create(KeyCurrentUser, "two\nlines") == StatusInvalidParameter);

    REQUIRE(Create(KeyClassesRoot, ".txt\\ShellNew") == StatusSuccess);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "Software\\Classes\\.txt\\shellnew") == StatusSuccess);
    CHECK(RegDeleteKeyA(KeyClassesRoot, ".TXT") == StatusSuccess);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "Software\\Classes") == StatusAccessDenied);
    REQUIRE(SubKeys(KeyUsers).size() == 1);
    CHECK(OpenStatus(KeyUsers, SubKeys(KeyUsers).front() + "\\Software\\One", AllRights) == StatusSuccess);
    CHECK(Create(KeyUsers, "another") == StatusAccessDenied);
}

TEST_CASE("Names without regard to case, subkeys by name, values by first writing") {
    const TestMachine machine;
    for (const char* const name : {"k\\beta", "k\\_x", "k\\Alpha", "k\\\xE4", "K\\BETA\\deeper"}) {
        REQUIRE(Create(KeyLocalMachine, name) == StatusSuccess);
    }
    const Handle key = Opened();
    CHECK(SubKeys(key) == std::vector<std::string>{"Alpha", "beta", "_x", "\xE4"});
    CHECK(OpenStatus(key, "\xC4") == StatusSuccess);
    CHECK(RegDeleteKeyA(key, "beta") == StatusAccessDenied);
    CHECK(RegDeleteKeyA(key, "missing") == StatusFileNotFound);
    CHECK(RegDeleteKeyA(key, "ALPHA") == StatusSuccess);

    for (const char* const name : {"zeta", "", "Hugo", "ZETA"}) {
        REQUIRE(RegSetValueExA(key, name, RegDword, One) == StatusSuccess);
    }
    CHECK(RawValueNames(KeyLocalMachine, "k") == std::vector<std::string>{"zeta", "", "Hugo"});
    CHECK(EnumValue(key, 3) == StatusNoMoreItems);
    CHECK(RegDeleteValueA(key, "hugo") == StatusSuccess);
    CHECK(RegDeleteValueA(key, "hugo") == StatusFileNotFound);
}

TEST_CASE("Sizes: a text counts its terminator, and too small a buffer gives 234") {
    const TestMachine machine;
    REQUIRE(Create(KeyLocalMachine, "k\\subkey") == StatusSuccess);
    const Handle key = Opened();
    REQUIRE(RegSetValueExA(key, "text", RegSz, std::string(1024, 'x')) == StatusSuccess);
    std::array<char, 1025> buffer = {};
    std::uint32_t type = 0;
    std::uint32_t size = 1024;
    CHECK(RegQueryValueExA(key, "text", type, buffer, size) == StatusMoreData);
    CHECK(size == 1025);
    CHECK(RegQueryValueExA(key, "TEXT", type, buffer, size) == StatusSuccess);
    CHECK(buffer.back() == '\0');
    CHECK(EnumValue(key, 0) == StatusMoreData);

    for (const auto& [set, stored] : {std::pair<RawData, RawData>{{RegSz, ""}, {RegSz, ""}},
                                      {{RegSz, "\x80\xFC\x81"}, RawText("\x80\xFC\x81")},
                                      {{77, "\r\n"}, {77, "\r\n"}}}) {
        RawValueSet(KeyLocalMachine, "k", "n", set);
        CHECK(RawValue(KeyLocalMachine, "k", "n") == stored);
    }
    CHECK(EnumKey(key, 0, 6) == StatusMoreData);
    CHECK(EnumKey(key, 0, 7) == StatusSuccess);
    CHECK(EnumValue(key, 1, 1) == StatusMoreData);
    CHECK(EnumValue(key, 1, 2) == StatusSuccess);
}

TEST_CASE("A handle has the rights it was opened with, lasts to its close, and not beyond its key") {
    const TestMachine machine;
    REQUIRE(Create(KeyLocalMachine, "k") == StatusSuccess);
    struct {
        std::int32_t access;
        Status query, set, enumerateKeys;
    } const cases[] = {{KeyQueryValue, StatusFileNotFound, StatusAccessDenied, StatusAccessDenied},
                       {KeySetValue, StatusAccessDenied, StatusSuccess, StatusAccessDenied},
                       {KeyEnumerateSubKeys, StatusAccessDenied, StatusAccessDenied, StatusNoMoreItems}};
    for (const auto& one : cases) {
        const Handle key = Opened(one.access);
        CHECK(Query(key) == one.query);
        CHECK(RegSetValueExA(key, "n", RegDword, One) == one.set);
        CHECK(EnumKey(key, 0) == one.enumerateKeys);
        CHECK(RegCloseKey(key) == StatusSuccess);
        CHECK(RegCloseKey(key) == StatusInvalidHandle);
        CHECK(OpenStatus(key, "") == StatusInvalidHandle);
    }

    const Handle key = Opened();
    REQUIRE(RegDeleteKeyA(KeyLocalMachine, "k") == StatusSuccess);
    REQUIRE(Create(KeyLocalMachine, "k") == StatusSuccess);
    for (const Status status :
         {Query(key), RegSetValueExA(key, "n", RegDword, One), RegDeleteValueA(key, "n"), EnumKey(key, 0),
          EnumValue(key, 0), OpenStatus(key, ""), Create(key, "x"), RegDeleteKeyA(key, "x")}) {
        CHECK(status == StatusKeyDeleted);
    }
}

TEST_CASE("Without the owner's write bit changes are refused, whoever the process is") {
    const TestMachine machine;
    REQUIRE(Create(KeyLocalMachine, "k") == StatusSuccess);
    REQUIRE(Create(KeyCurrentUser, "k") == StatusSuccess);
    Writable("machine.reg", false);

    CHECK(OpenStatus(KeyLocalMachine, "k", KeyQueryValue | KeyEnumerateSubKeys) == StatusSuccess);
    CHECK(OpenStatus(KeyCurrentUser, "k", AllRights) == StatusSuccess);
    for (const Status status :
         {OpenStatus(KeyLocalMachine, "k", KeySetValue), OpenStatus(KeyLocalMachine, "", KeyCreateSubKey),
          Create(KeyLocalMachine, "new", KeyQueryValue), RegSetValueExA(KeyLocalMachine, "n", RegDword, One),
          RegDeleteKeyA(KeyLocalMachine, "k")}) {
        CHECK(status == StatusAccessDenied);
    }
}
