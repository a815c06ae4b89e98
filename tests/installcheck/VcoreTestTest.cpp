#include <utility>

#include "Check.h"
#include "RawRegistry.h"
#include "TestMachine.h"
#include "installcheck/VcoreTest.h"
#include "platform/ComponentCalls.h"
#include "platform/Regional.h"
#include "samples/SuiteComponents.h"

namespace {

const Text Missing = u"), *** File not Found ***\r\n";

// A machine without components. Test cases add files that have no version resource and can't be loaded.
struct ComponentMachine : TestMachine {
    std::string Folder = ControlFile().substr(0, ControlFile().rfind('\\') + 1);

    ComponentMachine() {
        Environment("SystemRoot", Folder + "Windows");
        Environment("CommonProgramFiles", Folder + "Common");
        Environment("ProgramFiles", Folder + "Programs");
        RawProductAdd("Vandrel Core", "Vandrel Core V1", "MsiExec.exe /X{C}", RawNumber(1), Folder + "Core\\");
    }
};

}  // namespace

TEST_CASE_FIXTURE(ComponentMachine, "The report for a machine without components lists all of them as missing") {
    const std::string folders[] = {"Windows\\System32\\", "Common\\", "Core\\", "Programs\\"};
    Text report = u"Release=16.12.2017-10:16:40\r\n";
    std::string_view section;
    for (const SuiteComponent& component : SuiteComponents) {
        if (std::exchange(section, component.section) != component.section) {
            report += platform::TextFromAnsi("\r\n[" + std::string(section) + "]\r\n");
        }
        const std::string path = Folder + folders[static_cast<int>(component.folder)] + std::string(component.file);
        report += platform::TextFromAnsi(std::string(component.row) + "=Path(" + path) + Missing;
    }
    VcoreTest check;
    CHECK_FALSE(check.Ok());
    const Text first = check.Text();
    CHECK(
        first.starts_with(u"[Generator]\r\nApplication=Vandrel Tallora V4 Version Controller\r\nCopyright=Copyright"));
    CHECK(first.substr(first.find(u"Release=")) ==
          report + u"\r\n[Status]\r\nError=*** Es fehlen Vandrel Core Elements! ***\r\n");
}

TEST_CASE_FIXTURE(ComponentMachine, "An unloadable library passes the check; an object that can't be created doesn't") {
    for (const std::string path : {"Windows\\System32\\sevDTA30.dll", "Core\\vcutil1.dll"}) {
        FileContent(Folder + path, "plain");
    }
    platform::ObjectReference none = 0;
    const platform::Status status = platform::CreateObject(u"VCUTIL1.DebugLog", none);
    Text text = platform::StatusText(status);  // empty on the host
    text = text.empty() ? u"Automatisierungsfehler " + DecimalText(status) : text;
    VcoreTest check;
    CHECK_FALSE(check.Ok());
    CHECK(check.Text().find(u"), Test=Ok\r\n") != Text::npos);
    CHECK(check.Text().find(u"), Test=*** " + text + u" ***\r\n") != Text::npos);

    Environment("SystemRoot", {});
    CHECK_FALSE(check.Ok());
    CHECK(check.Text().find(u"\r\nVB6DE.DLL=Path(\\System32\\VB6DE.DLL" + Missing) != Text::npos);
}
