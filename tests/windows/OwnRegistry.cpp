#include "windows/OwnRegistry.h"

#include <doctest/doctest.h>

#include "platform/windows/Win32.h"

namespace {

struct {
    HKEY root;
    const char* name;
} const Roots[] = {{HKEY_CLASSES_ROOT, "\\HKCR"},
                   {HKEY_LOCAL_MACHINE, "\\HKLM"},
                   {HKEY_USERS, "\\HKU"},
                   {HKEY_CURRENT_USER, "\\HKCU"}};  // the last one, as the others are made below the system's

}  // namespace

std::string OwnRegistryKey() {
    return "Software\\vtv4v-tests-" + std::to_string(::GetCurrentProcessId());
}

void OwnRegistryMake() {
    for (const auto& [root, name] : Roots) {
        HKEY own = nullptr;
        REQUIRE(::RegCreateKeyA(HKEY_CURRENT_USER, (OwnRegistryKey() + name).c_str(), &own) == ERROR_SUCCESS);
        CHECK(::RegOverridePredefKey(root, own) == ERROR_SUCCESS);
        ::RegCloseKey(own);
    }
}

void OwnRegistryRemove() {
    for (const auto& [root, name] : Roots) {
        ::RegOverridePredefKey(root, nullptr);
    }
    ::RegDeleteTreeA(HKEY_CURRENT_USER, OwnRegistryKey().c_str());
}
