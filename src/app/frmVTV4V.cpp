#include "app/frmVTV4V.h"

#include <cstdint>
#include <iterator>
#include <optional>

#include "app/modTaskBar.h"
#include "common/Error.h"
#include "common/Text.h"
#include "platform/Process.h"
#include "platform/ScopeExit.h"
#include "platform/WindowSystem.h"
#include "version/modVTV4Version.h"

namespace {

constexpr char16_t ShutdownBlockReason[] =
    u"Die Versions-Einstellungen oder die Steuerungs-Datei werden gerade geschrieben.";

// Runs an operation and keeps Windows from ending the session until the operation has finished.
void RunOperation(platform::Handle window, void (*operation)()) {
    platform::ShutdownBlockReasonCreate(window, ShutdownBlockReason);
    const platform::ScopeExit unblock([&] { platform::ShutdownBlockReasonDestroy(window); });
    operation();
}

// All lengths in twips.
struct Button {
    const char16_t* caption;
    std::int32_t left;
    std::int32_t top;
    const char16_t* toolTip;
    void (*clicked)(platform::Handle window, const Button& button);
};

// Asks for confirmation, then runs an operation that changes the registry and reports only whether it succeeded.
void AskAndRun(platform::Handle window, const Button& button, void (*operation)()) {
    const std::int32_t answer = platform::MessageBoxW(button.toolTip + Text(u"\r\nWeiterfahren?"),
                                                      platform::ProgramVersionGet().fileDescription,
                                                      platform::ButtonsYesNoCancel + platform::IconQuestion);
    if (answer != platform::AnswerYes) {
        return;
    }
    const std::optional<Error> error = TrapError([&] {
        RunOperation(window, operation);
        platform::MessageBoxW(u"Fertig", button.caption, platform::ButtonsOk + platform::IconInformation);
    });
    if (error) {
        platform::MessageBoxW(u"Fehlgeschlagen!", button.caption, platform::ButtonsOk + platform::IconCritical);
    }
}

// Runs an operation that writes the control file. On failure shows the error and returns false.
bool TryWriteControlFile(platform::Handle window, void (*operation)()) {
    const std::optional<Error> error = TrapError([&] { RunOperation(window, operation); });
    if (error) {
        FailureShow(u"Kann Steuerungs-Datei nicht schreiben:", ControlFilePath, error->description);
    }
    return !error;
}

enum ButtonIndex : std::size_t { btnExport, btnImport, btnDemo, btnClear, btnEdit, btnQuit, ButtonCount };

// In tab order.
constexpr Button Buttons[] = {
    {u"Exportieren", 240, 240,
     u"Die aktuellen Versions-Einstellungen werden in die Steuerungs-Datei exportiert. Die kann angepasst und "
     u"abgespeichert werden.",
     [](platform::Handle window, const Button& /*button*/) {
         if (TryWriteControlFile(window, ExportVersions)) {
             EditControlFile();
         }
     }},
    {u"Importieren", 1920, 240,
     u"Die Steuerungs-Datei wird importiert. Die neuen Versions-Einstellungen werden gesetzt.",
     [](platform::Handle window, const Button& button) { AskAndRun(window, button, ImportVersions); }},
    {u"Demo", 240, 840,
     u"Es wird eine Steuerungs-Datei zu Demonstrationszwecken erstellt. Die kann angepasst und abgespeichert werden.",
     [](platform::Handle window, const Button& /*button*/) { TryWriteControlFile(window, WriteDemoFile); }},
    {u"Löschen", 240, 1440, u"Alle Versions-Einstellungen werden gelöscht.",
     [](platform::Handle window, const Button& button) { AskAndRun(window, button, ClearVersions); }},
    {u"Bearbeiten", 1920, 840, u"Die Steuerungs-Datei bearbeiten.",
     [](platform::Handle /*window*/, const Button& /*button*/) { EditControlFile(); }},
    {u"Fertig", 1920, 1440, u"Programm beenden.",
     [](platform::Handle window, const Button& /*button*/) { platform::ShowWindow(window, platform::ShowHide); }},
};

static_assert(std::size(Buttons) == ButtonCount);

platform::WindowDesign Design() {
    constexpr std::int32_t icon = 1;
    platform::WindowDesign design{u"VTV4 Version Controller", {3555, 2130}, false, icon, {}};
    for (const Button& button : Buttons) {
        design.controls.push_back(
            {platform::ControlKind::Button, button.caption, {button.left, button.top, 1335, 375}});
    }
    return design;
}

}  // namespace

frmVTV4V::frmVTV4V()
    : window_(platform::WindowCreate(Design(),
                                     {[this] { Activated(); }, [this](std::size_t button) { Clicked(button); }, {}})) {
    if (window_ == 0) {
        Raise(RuntimeError::OutOfMemory);
    }
}

frmVTV4V::~frmVTV4V() {
    platform::WindowDestroy(window_);
    Unload();
}

void frmVTV4V::ShowModal() {
    if (TryLoad()) {
        platform::WindowShowModal(window_);
    }
}

bool frmVTV4V::TryLoad() {
    TextView product = MainProduct.registryPath;
    const std::optional<Error> error = TrapError([&] {
        mainProfile_ = std::make_unique<ProductProfileMain>();
        MainVersions = mainProfile_->Profile.Table;
        product = ReportingProduct.registryPath;
        reportingProfile_ = std::make_unique<ProductProfileReporting>();
        ReportingVersions = reportingProfile_->Profile.Table;
    });
    if (error) {
        FailureShow(u"Kann Versions-Einstellungen nicht laden:", Text(product), FailureText(*error));
        return false;
    }
    ControlFilePath = ControlFilePathGet();
    for (const std::size_t button : {btnClear, btnDemo, btnExport, btnImport, btnEdit, btnQuit}) {
        platform::ControlToolTip(window_, button, Buttons[button].toolTip);
    }
    return true;
}

void frmVTV4V::Unload() {
    ReportingVersions.reset();
    reportingProfile_.reset();
    MainVersions.reset();
    mainProfile_.reset();
}

// ShowInTaskBar hides and shows the window, which triggers another activation event.
void frmVTV4V::Activated() {
    if (!enteringTaskBar_) {
        enteringTaskBar_ = true;
        const platform::ScopeExit entered([this] { enteringTaskBar_ = false; });
        ShowInTaskBar(window_, true);
    }
}

// Operations process pending messages, so a click can arrive while another button's operation is running.
void frmVTV4V::Clicked(std::size_t button) {
    if (!operationRunning_) {
        operationRunning_ = true;
        const platform::ScopeExit ended([this] { operationRunning_ = false; });
        Buttons[button].clicked(window_, Buttons[button]);
    }
}
