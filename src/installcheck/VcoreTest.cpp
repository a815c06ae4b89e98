#include "installcheck/VcoreTest.h"

#include <cctype>
#include <cstdint>
#include <string>

#include "common/Conversion.h"
#include "common/Environment.h"
#include "common/modStringLibrary.h"
#include "installcheck/frmVCoreTest.h"
#include "installcheck/modFileData.h"
#include "installcheck/modFileInfo.h"
#include "installcheck/modPathGet.h"
#include "installcheck/modRelease.h"
#include "platform/ComponentCalls.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "platform/WindowSystem.h"

namespace {

constexpr char16_t CoreProductName[] = u"Vandrel Core V1";

constexpr char16_t TestMark[] = u", Test=";
constexpr char16_t Passed[] = u"Ok";

// Joins a message's lines, since a report row is a single line.
Text OneLine(const Text& message) {
    Text line;
    for (const char16_t character : message) {
        if (character != u'\r' && character != u'\n') {
            line += character;
        } else if (!line.ends_with(u' ')) {
            line += u' ';
        }
    }
    return Trim(line);
}

Text FailureMark(const Text& failure) {
    return u"*** " + OneLine(failure) + u" ***";
}

// True unless a file probe's row text ends with a failure message.
bool FileFound(const Text& rowText) {
    return !rowText.ends_with(u'*');
}

Text SystemPath(const Text& fileName) {
    return PathCombine(EnvironmentVariable(u"SystemRoot"), u"\\System32\\" + fileName);
}

// The system has no message text for many COM statuses.
Text StatusDescription(platform::Status status) {
    const Text text = platform::StatusText(status);
    return text.empty() ? u"Automatisierungsfehler " + DecimalText(status) : text;
}

// Creates an object of an external component and releases it. Returns the COM status of the creation.
platform::Status TryCreateObject(const Text& progId) {
    platform::ObjectReference object = 0;
    const platform::Status status = platform::CreateObject(progId, object);
    platform::ReleaseObject(object);
    return status;
}

// Returns the letters of the program's name.
std::string InitialisationText() {
    std::string text = platform::AnsiFromText(platform::ProgramVersionGet().fileDescription);
    std::erase_if(text, [](unsigned char character) { return std::isalpha(character) == 0; });
    return text;
}

// Returns -1 if the library reports a failure. If the library can't be called, returns 0, which counts as success.
std::int32_t sevDTA_Init(const Text& libraryPath) {
    std::int32_t result = 0;
    platform::CallTextFunction(platform::AnsiFromText(libraryPath), "sevDTA_Init", InitialisationText(), result);
    return result;
}

}  // namespace

VcoreTest::VcoreTest() {
    coreProduct_.DisplayName(CoreProductName);
    report_.FilePath(platform::TextFromAnsi(platform::ProgramFolder()));
}

bool VcoreTest::Ok(bool withErrMsg) {
    TestAll();
    const bool result = allOk_;
    if (withErrMsg && !result) {
        platform::MessageBeep();
        frmVCoreTest window;
        window.ShowModal();
    }
    return result;
}

void VcoreTest::TestAll() {
    allOk_ = true;
    const platform::ProgramVersion version = platform::ProgramVersionGet();
    SectionSet(u"Generator");
    ItemAdd(u"Application", version.fileDescription);
    ItemAdd(u"Copyright", version.legalCopyright);
    ItemAdd(u"Version",
            DecimalText(version.major) + u"." + DecimalText(version.minor) + u"." + DecimalText(version.revision));
    ItemAdd(u"Release", ReleaseDate() + u"-" + ReleaseTime());
    TestMicrosoft();
    TestSevTools();
    TestOwnComponents();
    if (allOk_) {
        report_.Value(u"Status", u"OK", {});
    } else {
        report_.Value(u"Status", u"Error", FailureMark(u"Es fehlen Vandrel Core Elements!"));
    }
}

void VcoreTest::TestMicrosoft() {
    SectionSet(u"Microsoft Core");
    for (const auto* const fileName : {u"MSVBVM60.DLL", u"OLEAUT32.DLL", u"OLEPRO32.DLL", u"ASYCFILT.DLL",
                                       u"STDOLE2.TLB", u"COMCAT.DLL", u"VB6DE.DLL", u"MSSTDFMT.DLL", u"SCRRUN.DLL"}) {
        FileTestSystem(fileName, false);
    }
    SectionSet(u"Microsoft Components");
    for (const auto* const fileName : {u"COMDLG32.OCX", u"MSCOMCTL.OCX", u"MSCOMCT2.OCX", u"COMCT332.OCX"}) {
        FileTestSystem(fileName, false);
    }
    SectionSet(u"Microsoft Shared");
    for (const auto* const relativePath : {u"Microsoft Shared\\DAO\\DAO360.DLL", u"Designer\\MSADDNDR.DLL"}) {
        FileTestCommon(relativePath, false);
    }
}

void VcoreTest::TestSevTools() {
    SectionSet(u"SevTools Components");
    TestSevPopUp();
    TestSevImLib();
    for (const auto* const fileName :
         {u"sevCmd4.ocx", u"sevEin20.ocx", u"sevClb30.ocx", u"sevMenuXP2.ocx", u"sevXPCtl.ocx", u"sevDataGrid3.ocx"}) {
        FileTestSystem(fileName, false);
    }
    TestSevDta();
}

void VcoreTest::TestOwnComponents() {
    SectionSet(u"Vandrel Components");
    TestUtilComponent();
    TestMazeWalker();
}

void VcoreTest::TestSevPopUp() {
    const ::Text object = u"sevPopUp2.PopUp";
    ObjectTest(object, FileTestSystem(u"sevPopUp2.dll", true), object);
}

void VcoreTest::TestSevImLib() {
    FileTestSystem(u"sevImLib2.dll", false);
}

void VcoreTest::TestSevDta() {
    const ::Text fileName = u"sevDTA30.dll";
    ::Text text = FileTestSystem(fileName, false);
    if (FileFound(text)) {
        text += TestMark;
        if (sevDTA_Init(SystemPath(fileName)) == -1) {
            text += FailureMark(u"sevDTA30_Init failed");
            allOk_ = false;
        } else {
            text += Passed;
        }
    }
    ItemAdd(fileName, text);
}

void VcoreTest::TestUtilComponent() {
    const ::Text fileName = u"vcutil1.dll";
    ObjectTest(fileName, FileTest(PathCombine(CoreFolder(), fileName), true), u"VCUTIL1.DebugLog");
}

void VcoreTest::TestMazeWalker() {
    FileTest(PathCombine(EnvironmentVariable(u"ProgramFiles"), u"\\Vandrel\\Core\\V1\\Extras\\MazeWalker.exe"), false);
}

::Text VcoreTest::FileTest(const ::Text& path, bool noAdd) {
    ::Text text = u"Path(" + path + u"), ";
    if (FileExists(path)) {
        text += u"Version(" + FileInfoGet(path).Version + u"), ";
        text += u"Release(" + TextFrom(FileDateGet(path)) + u")";
    } else {
        allOk_ = false;
        text += FailureMark(u"File not Found");
    }
    if (!noAdd) {
        ItemAdd(PathFileName(path), text);
    }
    return text;
}

::Text VcoreTest::FileTestSystem(const ::Text& fileName, bool noAdd) {
    return FileTest(SystemPath(fileName), noAdd);
}

::Text VcoreTest::FileTestCommon(const ::Text& relativePath, bool noAdd) {
    return FileTest(PathCombine(EnvironmentVariable(u"CommonProgramFiles"), u"\\" + relativePath), noAdd);
}

void VcoreTest::ObjectTest(const ::Text& rowName, const ::Text& fileText, const ::Text& progId) {
    ItemAdd(rowName, FileFound(fileText) ? fileText + TestMark + ObjectTestText(progId) : fileText);
}

::Text VcoreTest::ObjectTestText(const ::Text& progId) {
    const platform::Status status = TryCreateObject(progId);
    if (status == platform::StatusSuccess) {
        return Passed;
    }
    allOk_ = false;
    return FailureMark(StatusDescription(status));
}
