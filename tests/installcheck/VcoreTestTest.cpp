#include <utility>

#include "Check.h"
#include "ProductEntries.h"
#include "TestMachine.h"
#include "installcheck/VcoreTest.h"
#include "platform/ComponentCalls.h"
#include "platform/Regional.h"
#include "samples/SuiteComponents.h"

namespace {

const Text Missing = u"), *** File not Found ***\r\n";

// A machine whose folders of components hold only what a case puts there: files without a version block or any use.
struct ComponentMachine : TestMachine {
    std::string Folder = ControlFile().substr(0, ControlFile().rfind('\\') + 1);
    ProductEntries Products;

    ComponentMachine() {
        Environment("SystemRoot", Folder + "Windows");
        Environment("CommonProgramFiles", Folder + "Common");
        Environment("ProgramFiles", Folder + "Programs");
        Products.Add("Vandrel Core", "Vandrel Core V1", "MsiExec.exe /X{C}", {}, Folder + "Core\\");
    }
};

}  // namespace

TEST_CASE_FIXTURE(ComponentMachine, "The report of a machine without any component names all of them") {
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
    CHECK_FALSE(check.Ok());
    CHECK(check.Text() == first);
}

TEST_CASE_FIXTURE(ComponentMachine,
                  "A library that cannot be loaded has not failed to initialise, and an object has failed") {
    for (const std::string below : {"Windows\\System32\\sevDTA30.dll", "Core\\vcutil1.dll"}) {
        FileContent(Folder + below, "plain");
    }
    platform::ObjectReference none = 0;
    const platform::Status refusal = platform::CreateObject(u"VCUTIL1.DebugLog", none);
    Text words = platform::StatusText(refusal);  // which not every system has
    words = words.empty() ? u"Automatisierungsfehler " + DecimalText(refusal) : words;
    VcoreTest check;
    CHECK_FALSE(check.Ok());
    CHECK(check.Text().find(u"), Test=Ok\r\n") != Text::npos);
    CHECK(check.Text().find(u"), Test=*** " + words + u" ***\r\n") != Text::npos);
    CHECK(LastError().Number() == 0);

    Environment("SystemRoot", {});
    CHECK_FALSE(check.Ok());
    CHECK(check.Text().find(u"\r\nVB6DE.DLL=Path(\\System32\\VB6DE.DLL" + Missing) != Text::npos);
}
