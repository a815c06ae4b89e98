#pragma once

#include "common/Text.h"
#include "products/Installer.h"
#include "settings/IniFile4.h"

// Looks for every run-time component of the suite, and writes down in a report what it found. No component is optional,
// and none is passed over because another one is missing.
//
// A probe adds a row to the report: path, version and date of its file, and how a further test of it ended. A failure
// stands in the row between "*** " and " ***", and fails the check.
class VcoreTest {
public:
    VcoreTest();

    // Runs the whole check; true when nothing is missing. With `withErrMsg` a failed check sounds the beep and shows
    // frmVCoreTest until the user has closed it. The window runs the check once more; what it finds does not count
    // here.
    bool Ok(bool withErrMsg = false);

    // The report of the runs so far, empty before the first.
    [[nodiscard]] ::Text Text() const { return report_.Stream(); }

    // Forgets how the last run ended, but not its report.
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

    // Each gives the row's text. With `noAdd` the caller adds the row itself, otherwise it bears the file's name.
    ::Text FileTest(const ::Text& path, bool noAdd);
    ::Text FileTestSystem(const ::Text& fileName, bool noAdd);
    ::Text FileTestCommon(const ::Text& relativePath, bool noAdd);
    // Adds a row that tells, when its file was found, whether the object could be created too.
    void ObjectTest(const ::Text& rowName, const ::Text& fileText, const ::Text& programmaticIdentifier);
    ::Text ObjectTestText(const ::Text& programmaticIdentifier);

    Installer coreProduct_;  // the suite's shared core package, in whose folder its own components lie
    ::Text currentSection_;
    IniFile4 report_;  // in memory alone, never written to a file
    bool allOk_ = false;
};
