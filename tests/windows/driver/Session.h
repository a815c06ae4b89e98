#pragma once

#include <map>
#include <string>

#include "Desktop.h"
#include "TestMachine.h"

// Path of the program under test: "vtv4v.exe" in the folder above the driver's.
std::wstring ProgramPath();

// One product's entries in the local machine's registry, by value name; the unnamed value has the empty name.
using Table = std::map<std::string, DWORD>;
Table MainTable();
Table ReportingTable();
void MainTable(const Table& table);

// The program started as an administrator starts it, on a machine without entries and without a control file.
class Session {
public:
    Session();

    [[nodiscard]] HWND Button(const std::wstring& caption) const;
    void ClickButton(const std::wstring& caption) const { Click(Button(caption)); }
    // True while the window waits for the user and shows no box.
    [[nodiscard]] bool Waiting() const;

    TestMachine machine;
    Program program;
    HWND window;
};
