#include <doctest/doctest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "RawRegistry.h"
#include "platform/RegistryCalls.h"
#include "platform/host/RegistryFolder.h"

using namespace platform;

namespace {

constexpr std::int32_t AllRights = KeyQueryValue | KeySetValue | KeyCreateSubKey | KeyEnumerateSubKeys;
constexpr std::string_view One("\1\0\0\0", 4);

Handle Opened(Handle root, const std::string& path, std::int32_t access) {
    Handle key = 0;
    CHECK(RegOpenKeyExA(root, path, 0, access, key) == StatusSuccess);
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

Status EnumKey(Handle key, std::int32_t index, std::string& name, std::uint32_t size = 255) {
    std::array<char, 255> buffer = {};
    std::array<char, 255> className = {};
    std::uint32_t classSize = 255;
    const Status status = RegEnumKeyExA(key, index, buffer, size, className, classSize);
    name.assign(buffer.data(), status == StatusSuccess ? size : 0);
    return status;
}

Status EnumValue(Handle key, std::int32_t index, std::string& name, std::uint32_t nameSize = 255) {
    std::array<char, 255> buffer = {};
    std::array<char, 255> data = {};
    std::uint32_t dataSize = 255;
    std::uint32_t type = 0;
    const Status status = RegEnumValueA(key, index, buffer, nameSize, type, data, dataSize);
    name.assign(buffer.data(), status == StatusSuccess ? nameSize : 0);
    return status;
}

std::vector<std::string> SubKeys(Handle key) {
    std::vector<std::string> names(1);
    while (EnumKey(key, static_cast<std::int32_t>(names.size()) - 1, names.back()) == StatusSuccess) {
        names.emplace_back();
    }
    names.pop_back();
    return names;
}

Status Query(Handle key, const std::string& name, std::string& data, std::uint32_t room = 1024) {
    std::array<char, 1024> buffer = {};
    std::uint32_t type = 0;
    const Status status = RegQueryValueExA(key, name, type, std::span(buffer).first(room), room);
    data.assign(buffer.data(), status == StatusSuccess ? room : 0);
    return status;
}

void OwnerWriteBit(const std::filesystem::path& path, bool on) {
    std::filesystem::permissions(path, std::filesystem::perms::owner_write,
                                 on ? std::filesystem::perm_options::add : std::filesystem::perm_options::remove);
}

}  // namespace

TEST_CASE("An empty machine has its roots, and a key is made with all its levels") {
    const RegistryFolder folder;
    for (const Handle root : {KeyLocalMachine, KeyCurrentUser, KeyClassesRoot, KeyUsers}) {
        CHECK(OpenStatus(root, "") == StatusSuccess);
        CHECK(OpenStatus(root, "missing") == StatusFileNotFound);
        CHECK(RegCloseKey(root) == StatusSuccess);
    }
    CHECK_FALSE(std::filesystem::exists(folder.MachineFile()));

    Handle key = 0;
    std::uint32_t disposition = 0;
    CHECK(RegCreateKeyExA(KeyCurrentUser, "Software\\One\\Two", "", 0, AllRights, key, disposition) == StatusSuccess);
    CHECK(disposition == 1);
    RegCloseKey(key);
    CHECK(RegCreateKeyExA(KeyCurrentUser, "SOFTWARE\\\\one\\two\\", "", 0, AllRights, key, disposition) ==
          StatusSuccess);
    CHECK(disposition == 2);
    RegCloseKey(key);
    CHECK(SubKeys(KeyCurrentUser) == std::vector<std::string>{"Software"});
    CHECK(OpenStatus(KeyCurrentUser, "\\Software") == 161);
    CHECK(Create(KeyCurrentUser, std::string(256, 'k')) == StatusInvalidParameter);
    CHECK(Create(KeyCurrentUser, "two\nlines") == StatusInvalidParameter);
}

TEST_CASE("Classes lie in the machine's part, and the user is the one key of all users") {
    const RegistryFolder folder;
    REQUIRE(Create(KeyClassesRoot, ".txt\\ShellNew") == StatusSuccess);
    CHECK(OpenStatus(KeyLocalMachine, "Software\\Classes\\.TXT\\shellnew") == StatusSuccess);
    CHECK(RegDeleteKeyA(KeyClassesRoot, ".txt\\ShellNew") == StatusSuccess);
    CHECK(RegDeleteKeyA(KeyClassesRoot, ".txt") == StatusSuccess);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "Software\\Classes") == StatusAccessDenied);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "") == StatusAccessDenied);

    REQUIRE(SubKeys(KeyUsers).size() == 1);
    const std::string user = SubKeys(KeyUsers).front();
    REQUIRE(Create(KeyUsers, user + "\\Software") == StatusSuccess);
    CHECK(OpenStatus(KeyCurrentUser, "Software", AllRights) == StatusSuccess);
    CHECK(Create(KeyUsers, "another") == StatusAccessDenied);
    CHECK(OpenStatus(KeyUsers, "", KeySetValue) == StatusAccessDenied);
    CHECK(RegDeleteKeyA(KeyUsers, user) == StatusAccessDenied);
}

TEST_CASE("Names without regard to case, subkeys by name, values by first writing") {
    const RegistryFolder folder;
    for (const char* const name : {"k\\beta", "k\\_x", "k\\Alpha", "k\\\xE4", "K\\BETA\\deeper"}) {
        REQUIRE(Create(KeyLocalMachine, name) == StatusSuccess);
    }
    const Handle key = Opened(KeyLocalMachine, "k", AllRights);
    CHECK(SubKeys(key) == std::vector<std::string>{"Alpha", "beta", "_x", "\xE4"});
    CHECK(OpenStatus(key, "\xC4") == StatusSuccess);
    CHECK(RegDeleteKeyA(key, "beta") == StatusAccessDenied);
    CHECK(RegDeleteKeyA(key, "missing") == StatusFileNotFound);
    CHECK(RegDeleteKeyA(key, "ALPHA") == StatusSuccess);

    for (const char* const name : {"zeta", "", "Hugo", "ZETA"}) {
        REQUIRE(RegSetValueExA(key, name, RegDword, One) == StatusSuccess);
    }
    CHECK(RawValueNames(KeyLocalMachine, "k") == std::vector<std::string>{"zeta", "", "Hugo"});
    std::string name;
    CHECK(EnumValue(key, 3, name) == StatusNoMoreItems);
    CHECK(EnumValue(key, -1, name) == StatusNoMoreItems);
    CHECK(RegDeleteValueA(key, "hugo") == StatusSuccess);
    CHECK(RegDeleteValueA(key, "hugo") == StatusFileNotFound);
    RegCloseKey(key);
}

TEST_CASE("Sizes: a text counts its terminator, and too small a buffer gives 234") {
    const RegistryFolder folder;
    REQUIRE(Create(KeyLocalMachine, "k\\subkey") == StatusSuccess);
    const Handle key = Opened(KeyLocalMachine, "k", AllRights);
    std::string data;
    REQUIRE(RegSetValueExA(key, "text", RegSz, std::string(1023, 'x')) == StatusSuccess);
    CHECK(Query(key, "TEXT", data) == StatusSuccess);
    CHECK(data == std::string(1023, 'x') + '\0');
    REQUIRE(RegSetValueExA(key, "text", RegSz, std::string(1024, 'x')) == StatusSuccess);
    std::array<char, 1024> buffer = {};
    std::uint32_t type = 0;
    std::uint32_t size = 1024;
    CHECK(RegQueryValueExA(key, "text", type, buffer, size) == StatusMoreData);
    CHECK(size == 1025);
    std::string name;
    CHECK(EnumValue(key, 0, name) == StatusMoreData);

    const std::vector<std::pair<RawData, RawData>> cases = {{{RegSz, ""}, {RegSz, ""}},
                                                            {{RegSz, {"a\0", 2}}, RawText("a")},
                                                            {{RegSz, {"a\0b", 3}}, {RegSz, {"a\0b\0", 4}}},
                                                            {{RegSz, "\x80\xFC\x81"}, RawText("\x80\xFC\x81")},
                                                            {{RegExpandSz, "%A%"}, {RegExpandSz, {"%A%\0", 4}}},
                                                            {{RegMultiSz, {"a\0", 2}}, {RegMultiSz, {"a\0", 2}}},
                                                            {{77, "\r\n"}, {77, "\r\n"}}};
    for (const auto& [set, stored] : cases) {
        RawValueSet(KeyLocalMachine, "k", "n", set);
        CHECK(RawValue(KeyLocalMachine, "k", "n") == stored);
    }
    CHECK(Query(key, "missing", data) == StatusFileNotFound);
    CHECK(RegSetValueExA(key, std::string(16384, 'n'), RegDword, One) == StatusInvalidParameter);

    CHECK(EnumKey(key, 0, name, 6) == StatusMoreData);
    CHECK(EnumKey(key, 0, name, 7) == StatusSuccess);
    CHECK(name == "subkey");
    CHECK(EnumValue(key, 1, name, 1) == StatusMoreData);
    CHECK(EnumValue(key, 1, name, 2) == StatusSuccess);
    RegCloseKey(key);
}

TEST_CASE("A handle has the rights it was opened with, lasts to its close, and not beyond its key or machine") {
    const RegistryFolder folder;
    REQUIRE(Create(KeyLocalMachine, "k") == StatusSuccess);
    struct Case {
        std::int32_t access;
        Status query, set, enumerateKeys;
    };
    std::string text;
    for (const Case& one : {Case{KeyQueryValue, StatusFileNotFound, StatusAccessDenied, StatusAccessDenied},
                            Case{KeySetValue, StatusAccessDenied, StatusSuccess, StatusAccessDenied},
                            Case{KeyEnumerateSubKeys, StatusAccessDenied, StatusAccessDenied, StatusNoMoreItems}}) {
        const Handle key = Opened(KeyLocalMachine, "k", one.access);
        CHECK(Query(key, "missing", text) == one.query);
        CHECK(RegSetValueExA(key, "n", RegDword, One) == one.set);
        CHECK(EnumKey(key, 0, text) == one.enumerateKeys);
        CHECK(RegCloseKey(key) == StatusSuccess);
        CHECK(RegCloseKey(key) == StatusInvalidHandle);
        CHECK(OpenStatus(key, "") == StatusInvalidHandle);
    }
    CHECK(OpenStatus(0, "k") == StatusInvalidHandle);
    CHECK(RegCloseKey(0) == StatusInvalidHandle);

    Handle key = Opened(KeyLocalMachine, "k", AllRights);
    REQUIRE(RegDeleteKeyA(KeyLocalMachine, "k") == StatusSuccess);
    REQUIRE(Create(KeyLocalMachine, "k") == StatusSuccess);
    for (const Status status : {Query(key, "n", text), RegSetValueExA(key, "n", RegDword, One),
                                RegDeleteValueA(key, "n"), EnumKey(key, 0, text), EnumValue(key, 0, text),
                                OpenStatus(key, ""), Create(key, "x"), RegDeleteKeyA(key, "x")}) {
        CHECK(status == StatusKeyDeleted);
    }
    CHECK(RegCloseKey(key) == StatusSuccess);

    key = Opened(KeyLocalMachine, "k", AllRights);
    const RegistryFolder another;
    CHECK(Query(key, "n", text) == StatusInvalidHandle);
    CHECK(OpenStatus(KeyLocalMachine, "k") == StatusFileNotFound);
}

TEST_CASE("Without the owner's write bit changes are refused, whoever the process is") {
    const RegistryFolder folder;
    OwnerWriteBit(folder.Path(), false);
    CHECK(Create(KeyLocalMachine, "k") == StatusAccessDenied);
    OwnerWriteBit(folder.Path(), true);
    REQUIRE(Create(KeyLocalMachine, "k") == StatusSuccess);
    REQUIRE(Create(KeyCurrentUser, "k") == StatusSuccess);
    OwnerWriteBit(folder.MachineFile(), false);

    CHECK(OpenStatus(KeyLocalMachine, "k", KeyQueryValue | KeyEnumerateSubKeys) == StatusSuccess);
    CHECK(OpenStatus(KeyLocalMachine, "k", KeyQueryValue | KeySetValue) == StatusAccessDenied);
    CHECK(OpenStatus(KeyLocalMachine, "", KeyCreateSubKey) == StatusAccessDenied);
    CHECK(OpenStatus(KeyLocalMachine, "missing", KeySetValue) == StatusFileNotFound);
    CHECK(Create(KeyLocalMachine, "new", KeyQueryValue) == StatusAccessDenied);
    CHECK(Create(KeyLocalMachine, "k", KeyQueryValue) == StatusSuccess);
    CHECK(RegSetValueExA(KeyLocalMachine, "n", RegDword, One) == StatusAccessDenied);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "k") == StatusAccessDenied);
    CHECK(OpenStatus(KeyCurrentUser, "k", AllRights) == StatusSuccess);

    OwnerWriteBit(folder.MachineFile(), true);
    CHECK(OpenStatus(KeyLocalMachine, "k", AllRights) == StatusSuccess);
}
