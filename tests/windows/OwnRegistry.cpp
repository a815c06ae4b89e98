#include "windows/OwnRegistry.h"

#include <doctest/doctest.h>

#include <string>

#include "RawRegistry.h"
#include "TestMachine.h"
#include "platform/windows/Win32.h"

namespace {

struct {
    HKEY root;
    const char* name;
} const Roots[] = {{HKEY_CLASSES_ROOT, "\\HKCR"},
                   {HKEY_LOCAL_MACHINE, "\\HKLM"},
                   {HKEY_USERS, "\\HKU"},
                   {HKEY_CURRENT_USER, "\\HKCU"}};  // the last one, as the others are made below the system's

std::string OwnKey() {
    return "Software\\vtv4v-tests-" + std::to_string(::GetCurrentProcessId());
}

}  // namespace

void OwnRegistryMake() {
    for (const auto& [root, name] : Roots) {
        HKEY own = nullptr;
        REQUIRE(::RegCreateKeyA(HKEY_CURRENT_USER, (OwnKey() + name).c_str(), &own) == ERROR_SUCCESS);
        CHECK(::RegOverridePredefKey(root, own) == ERROR_SUCCESS);
        ::RegCloseKey(own);
    }
}

void OwnRegistryRemove() {
    for (const auto& [root, name] : Roots) {
        ::RegOverridePredefKey(root, nullptr);
    }
    ::RegDeleteTreeA(HKEY_CURRENT_USER, OwnKey().c_str());
}

TEST_CASE("A test's machine has roots of its own, of which nothing stays") {
    for (const platform::Handle root :
         {platform::KeyClassesRoot, platform::KeyLocalMachine, platform::KeyUsers, platform::KeyCurrentUser}) {
        CAPTURE(root);
        const std::string key = "Software\\Vandrel\\Tallora\\Test";
        {
            const TestMachine machine;
            RawValueSet(root, key, "", RawText("here"));
            CHECK(RawKeyExists(root, key));
        }
        CHECK_FALSE(RawKeyExists(root, key));
        CHECK_FALSE(RawKeyExists(platform::KeyCurrentUser, OwnKey()));
    }
}
