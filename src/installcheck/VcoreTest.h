#pragma once

#include "common/Text.h"
#include "products/Installer.h"
#include "settings/IniFile4.h"

// Checks that every run-time component of the suite is installed, and builds a report. All components are required, and
// the check continues after a failure.
//
// Each probe adds a row to the report: the file's path, version and date, and the result of any further test. A failed
// probe shows its error between "*** " and " ***" and fails the check.
class VcoreTest {
public:
    VcoreTest();

    // Runs the check and returns true if it passed. If it failed and `withErrMsg` is true, beeps and shows frmVCoreTest
    // until the user closes it. The window repeats the check; the result of Ok stays that of the first run.
    bool Ok(bool withErrMsg = false);

    // Returns the report, or an empty string before the first run. A later run replaces rows of the same name.
    [[nodiscard]] ::Text Text() const { return report_.Stream(); }

    // Resets the result of the last run, but keeps its report.
    void Clear() { allOk_ = false; }

private:
    void TestAll();
    void TestMicrosoft();
    void TestSevTools();
    void TestOwnComponents();
    void TestSevPopUp();
    void TestSevImLib();
    void TestSevDta();
    void TestUtilComponent();
    void TestMazeWalker();

    void SectionSet(const ::Text& name) { currentSection_ = name; }
    void ItemAdd(const ::Text& name, const ::Text& value) { report_.Value(currentSection_, name, value); }
    [[nodiscard]] ::Text CoreFolder() const { return coreProduct_.InstallLocation(); }

    // Probes a file and returns the row text. Unless `noAdd` is true, also adds the row under the file's name.
    ::Text FileTest(const ::Text& path, bool noAdd);
    ::Text FileTestSystem(const ::Text& fileName, bool noAdd);
    ::Text FileTestCommon(const ::Text& relativePath, bool noAdd);
    // Adds an object's row. If `fileText` shows that its file was found, also tests whether the object can be created.
    void ObjectTest(const ::Text& rowName, const ::Text& fileText, const ::Text& progId);
    ::Text ObjectTestText(const ::Text& progId);

    Installer coreProduct_;  // the suite's core package, whose folder contains the suite's own components
    ::Text currentSection_;
    IniFile4 report_;  // kept only in memory, never saved
    bool allOk_ = false;
};
