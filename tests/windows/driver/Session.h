#pragma once

#include <map>
#include <string>

#include "Desktop.h"
#include "TestMachine.h"

// Path of the program under test, "vtv4v.exe" in the folder above the driver's, and how administrators start it.
std::string ProgramPath();
std::string MasterStart();

// A product's entries in the local machine's registry, by value name; the unnamed value has the empty name.
using Table = std::map<std::string, DWORD>;
struct Tables {
    Table main;
    Table reporting;
    bool operator==(const Tables&) const = default;
};
Tables TablesNow();
void TablesSet(const Tables& tables);

// The unnamed value of a key below HKEY_CLASSES_ROOT, another one as long as the object lives.
class ClassChange {
public:
    ClassChange(const std::string& key, const std::string& text);
    ~ClassChange();
    ClassChange(const ClassChange&) = delete;
    ClassChange& operator=(const ClassChange&) = delete;

private:
    std::string key_;
    std::string earlier_;
};

// The program started on a machine without entries and without a control file.
class Session {
public:
    Session();

    [[nodiscard]] HWND Button(const std::string& caption) const;
    void ClickButton(const std::string& caption) const { Click(Button(caption)); }
    // True while the window waits for the user and shows no box.
    [[nodiscard]] bool Waiting() const;

    TestMachine machine;
    Program program{MasterStart()};
    HWND window = program.Window("VTV4 Version Controller");
};
