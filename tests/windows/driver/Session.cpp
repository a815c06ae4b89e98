#include "Session.h"

#include <doctest/doctest.h>

namespace {

constexpr char MainKey[] = "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion";
constexpr char ReportingKey[] = "Software\\Vandrel\\Tallora\\V4\\Reporting\\Version\\ForcedVersion";

Table TableOf(const char* key) {
    Table table;
    HKEY open = nullptr;
    ::RegOpenKeyExA(HKEY_LOCAL_MACHINE, key, 0, KEY_READ, &open);
    for (DWORD index = 0;; ++index) {
        char name[256];
        DWORD nameSize = sizeof name;
        DWORD number = 0;
        DWORD size = sizeof number;
        DWORD type = 0;
        if (::RegEnumValueA(open, index, name, &nameSize, nullptr, &type, reinterpret_cast<BYTE*>(&number), &size) !=
            ERROR_SUCCESS) {
            break;
        }
        CHECK(type == REG_DWORD);
        table[name] = number;
    }
    ::RegCloseKey(open);
    return table;
}

void TableOf(const char* key, const Table& table) {
    ::RegDeleteTreeA(HKEY_LOCAL_MACHINE, key);
    for (const auto& [name, number] : table) {
        REQUIRE(::RegSetKeyValueA(HKEY_LOCAL_MACHINE, key, name.c_str(), REG_DWORD, &number, sizeof number) ==
                ERROR_SUCCESS);
    }
}

void ClassText(const std::string& key, const std::string& text) {
    REQUIRE(::RegSetKeyValueA(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, text.c_str(),
                              static_cast<DWORD>(text.size() + 1)) == ERROR_SUCCESS);
}

}  // namespace

std::string ProgramPath() {
    char driver[MAX_PATH];
    std::string path(driver, ::GetModuleFileNameA(nullptr, driver, MAX_PATH));
    for (int level = 0; level < 2; ++level) {
        path.resize(path.rfind('\\'));
    }
    return path + "\\vtv4v.exe";
}

std::string MasterStart() {
    return ProgramPath() + " -master";
}

Tables TablesNow() {
    return {TableOf(MainKey), TableOf(ReportingKey)};
}

void TablesSet(const Tables& tables) {
    TableOf(MainKey, tables.main);
    TableOf(ReportingKey, tables.reporting);
}

ClassChange::ClassChange(const std::string& key, const std::string& text) : key_(key) {
    char earlier[MAX_PATH] = {};
    DWORD size = sizeof earlier;
    ::RegGetValueA(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, earlier, &size);
    earlier_ = earlier;
    ClassText(key, text);
}

ClassChange::~ClassChange() {
    ClassText(key_, earlier_);
}

Session::Session() {
    REQUIRE(Eventually([this] { return Waiting() && Focus(window) != nullptr; }));
}

HWND Session::Button(const std::string& caption) const {
    for (const HWND button : Children(window, "Button")) {
        if (Caption(button) == caption) {
            return button;
        }
    }
    FAIL("no button " << caption);
    return nullptr;
}

bool Session::Waiting() const {
    return ::IsWindowEnabled(window) && program.Windows() == std::vector<HWND>{window};
}
