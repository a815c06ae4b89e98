#include "Session.h"

#include <doctest/doctest.h>

namespace {

constexpr char MainKey[] = "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion";
constexpr char ReportingKey[] = "Software\\Vandrel\\Tallora\\V4\\Reporting\\Version\\ForcedVersion";

Table TableOf(const char* key) {
    Table table;
    HKEY open = nullptr;
    if (::RegOpenKeyExA(HKEY_LOCAL_MACHINE, key, 0, KEY_READ, &open) != ERROR_SUCCESS) {
        return table;
    }
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

}  // namespace

std::wstring ProgramPath() {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    for (int level = 0; level < 2; ++level) {
        path.resize(path.rfind(L'\\'));
    }
    return path + L"\\vtv4v.exe";
}

Table MainTable() {
    return TableOf(MainKey);
}

Table ReportingTable() {
    return TableOf(ReportingKey);
}

void MainTable(const Table& table) {
    for (const auto& [name, number] : table) {
        REQUIRE(::RegSetKeyValueA(HKEY_LOCAL_MACHINE, MainKey, name.c_str(), REG_DWORD, &number, sizeof number) ==
                ERROR_SUCCESS);
    }
}

Session::Session() : program(ProgramPath() + L" -master"), window(program.Window(L"VTV4 Version Controller")) {
    REQUIRE(window != nullptr);
    REQUIRE(Eventually([this] { return Waiting() && Focus(window) != nullptr; }));
}

HWND Session::Button(const std::wstring& caption) const {
    const HWND button = Child(window, L"Button", caption);
    REQUIRE(button != nullptr);
    return button;
}

bool Session::Waiting() const {
    return ::IsWindowEnabled(window) && program.Windows() == std::vector<HWND>{window};
}
