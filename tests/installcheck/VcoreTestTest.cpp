#include <initializer_list>

#include "Check.h"
#include "ProductEntries.h"
#include "TestMachine.h"
#include "common/Conversion.h"
#include "installcheck/VcoreTest.h"
#include "installcheck/modFileData.h"
#include "platform/ComponentCalls.h"
#include "platform/Regional.h"

namespace {

const Text Missing = u"), *** File not Found ***\r\n";

// A machine whose folders of components hold only what a case puts there: files without a version block or any use.
struct ComponentMachine {
    TestMachine Machine;
    std::string Folder = Machine.ControlFile().substr(0, Machine.ControlFile().rfind('\\') + 1);
    ProductEntries Products;

    ComponentMachine() {
        Machine.Environment("SystemRoot", Folder + "Windows");
        Machine.Environment("CommonProgramFiles", Folder + "Common");
        Machine.Environment("ProgramFiles", Folder + "Programs");
        Products.Add("Vandrel Core", "Vandrel Core V1", "MsiExec.exe /X{C}", {}, Folder + "Core\\");
    }

    // A row up to the end of its path.
    [[nodiscard]] Text Row(const Text& name, const std::string& below) const {
        return name + u"=Path(" + platform::TextFromAnsi(Folder + below);
    }
    [[nodiscard]] Text SystemRows(std::initializer_list<std::string> names) const {
        Text rows;
        for (const std::string& name : names) {
            rows += Row(platform::TextFromAnsi(name), "Windows\\System32\\" + name) + Missing;
        }
        return rows;
    }
    // Makes the file, and gives its row without a further test.
    [[nodiscard]] Text FoundRow(const Text& name, const std::string& below) const {
        FileContent(Folder + below, "plain");
        return Row(name, below) + u"), Version(0.0.0.0), Release(" +
               TextFrom(FileDateGet(platform::TextFromAnsi(Folder + below))) + u")";
    }
};

}  // namespace

TEST_CASE("The report of a machine without any component names all of them") {
    const ComponentMachine machine;
    const Text report = u"Release=16.12.2017-10:16:40\r\n\r\n[Microsoft Core]\r\n" +
                        machine.SystemRows({"MSVBVM60.DLL", "OLEAUT32.DLL", "OLEPRO32.DLL", "ASYCFILT.DLL",
                                            "STDOLE2.TLB", "COMCAT.DLL", "VB6DE.DLL", "MSSTDFMT.DLL", "SCRRUN.DLL"}) +
                        u"\r\n[Microsoft Components]\r\n" +
                        machine.SystemRows({"COMDLG32.OCX", "MSCOMCTL.OCX", "MSCOMCT2.OCX", "COMCT332.OCX"}) +
                        u"\r\n[Microsoft Shared]\r\n" +
                        machine.Row(u"DAO360.DLL", "Common\\Microsoft Shared\\DAO\\DAO360.DLL") + Missing +
                        machine.Row(u"MSADDNDR.DLL", "Common\\Designer\\MSADDNDR.DLL") + Missing +
                        u"\r\n[SevTools Components]\r\n" +
                        machine.Row(u"sevPopUp2.PopUp", "Windows\\System32\\sevPopUp2.dll") + Missing +
                        machine.SystemRows({"sevImLib2.dll", "sevCmd4.ocx", "sevEin20.ocx", "sevClb30.ocx",
                                            "sevMenuXP2.ocx", "sevXPCtl.ocx", "sevDataGrid3.ocx", "sevDTA30.dll"}) +
                        u"\r\n[Vandrel Components]\r\n" + machine.Row(u"vcutil1.dll", "Core\\vcutil1.dll") + Missing +
                        machine.Row(u"MazeWalker.exe", "Programs\\Vandrel\\Core\\V1\\Extras\\MazeWalker.exe") +
                        Missing + u"\r\n[Status]\r\nError=*** Es fehlen Vandrel Core Elements! ***\r\n";
    VcoreTest check;
    CHECK_FALSE(check.Ok());
    const Text first = check.Text();
    CHECK(first.starts_with(u"[Generator]\r\nApplication"));
    CHECK(first.substr(first.find(u"Release=")) == report);
    CHECK_FALSE(check.Ok());
    check.Clear();
    CHECK(check.Text() == first);
}

TEST_CASE("A file that is found shows its version and date, and how its further test ended") {
    ComponentMachine machine;
    const Text plain = machine.FoundRow(u"COMCAT.DLL", "Windows\\System32\\COMCAT.DLL");
    // A library that cannot be loaded has not failed to initialise; an object that cannot be created has failed.
    const Text library = machine.FoundRow(u"sevDTA30.dll", "Windows\\System32\\sevDTA30.dll") + u", Test=Ok";
    platform::ObjectReference none = 0;
    const platform::Status refusal = platform::CreateObject(u"VCUTIL1.DebugLog", none);
    const Text words = platform::StatusText(refusal);  // which not every system has
    const Text object = machine.FoundRow(u"vcutil1.dll", "Core\\vcutil1.dll") + u", Test=*** " +
                        (words.empty() ? u"Automatisierungsfehler " + DecimalText(refusal) : words) + u" ***";
    VcoreTest check;
    CHECK_FALSE(check.Ok());
    for (const Text& row : {plain, library, object}) {
        CHECK(check.Text().find(u"\r\n" + row + u"\r\n") != Text::npos);
    }
    CHECK(LastError().Number() == 0);

    machine.Machine.Environment("SystemRoot", {});
    VcoreTest lost;
    CHECK_FALSE(lost.Ok());
    CHECK(lost.Text().find(u"\r\nVB6DE.DLL=Path(\\System32\\VB6DE.DLL" + Missing) != Text::npos);
}
