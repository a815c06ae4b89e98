#include "app/frmVTV4V.h"

#include <array>
#include <optional>

#include "app/modTaskBar.h"
#include "common/Error.h"
#include "platform/ComponentCalls.h"
#include "platform/Process.h"
#include "platform/WindowSystem.h"
#include "version/modVTV4Version.h"

namespace {

// The buttons by their tab index, which is their place in the design.
enum Button : std::size_t { btnExport, btnImport, btnDemo, btnClear, btnEdit, btnQuit };

constexpr TextView ImportToolTip =
    u"Die Steuerungs-Datei wird importiert. Die neuen Versions-Einstellungen werden gesetzt.";
constexpr TextView ClearToolTip = u"Alle Versions-Einstellungen werden gelöscht.";

struct ToolTip {
    Button button;
    TextView text;
};
constexpr std::array<ToolTip, 6> ToolTips = {
    {{btnClear, ClearToolTip},
     {btnDemo,
      u"Es wird eine Steuerungs-Datei zu Demonstrationszwecken erstellt. Die kann angepasst und abgespeichert werden."},
     {btnExport,
      u"Die aktuellen Versions-Einstellungen werden in die Steuerungs-Datei exportiert. Die kann angepasst und "
      u"abgespeichert werden."},
     {btnImport, ImportToolTip},
     {btnEdit, u"Die Steuerungs-Datei bearbeiten."},
     {btnQuit, u"Programm beenden."}}};

constexpr TextView ImportCaption = u"Importieren";
constexpr TextView ClearCaption = u"Löschen";

platform::Control ButtonDesign(TextView caption, std::int32_t left, std::int32_t top) {
    return {platform::ControlKind::Button, Text(caption), {left, top, 1335, 375}};
}

// All lengths in twips.
platform::WindowDesign Design() {
    constexpr std::int32_t icon = 1;
    return {u"VTV4 Version Controller",
            {3555, 2130},
            false,
            icon,
            {ButtonDesign(u"Exportieren", 240, 240), ButtonDesign(ImportCaption, 1920, 240),
             ButtonDesign(u"Demo", 240, 840), ButtonDesign(ClearCaption, 240, 1440),
             ButtonDesign(u"Bearbeiten", 1920, 840), ButtonDesign(u"Fertig", 1920, 1440)}};
}

// Asks before an operation that changes the registry, and tells how it ended; what went wrong is not told.
void AskAndRun(TextView caption, TextView effect, void (*operation)()) {
    const std::int32_t answer =
        platform::MessageBoxW(Text(effect) + u"\r\nWeiterfahren?", platform::ProgramVersionGet().fileDescription,
                              platform::ButtonsYesNoCancel + platform::IconQuestion);
    if (answer != platform::AnswerYes) {
        return;
    }
    const std::optional<Error> error = TrapError([&] {
        operation();
        platform::MessageBoxW(u"Fertig", Text(caption), platform::ButtonsOk + platform::IconInformation);
    });
    if (error) {
        platform::MessageBoxW(u"Fehlgeschlagen!", Text(caption), platform::ButtonsOk + platform::IconCritical);
    }
}

// Runs an operation that writes the control file; false when it could not be written, which the user then knows.
bool TryWriteControlFile(void (*operation)()) {
    const std::optional<Error> error = TrapError(operation);
    if (error) {
        FailureShow(u"Kann Steuerungs-Datei nicht schreiben:", ControlFilePath, error->description);
    }
    return !error;
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
    const std::optional<Error> error = TrapError([this] { Load(); });
    if (error) {
        const Text product(MainVersions == nullptr ? MainRegistryPath : ReportingRegistryPath);
        // A registry failure may have no description but the one that was pending; its number tells it in any case, and
        // the system may have words for that.
        const Text words = Trim(Trim(error->description) + u" " + platform::StatusText(error->number));
        FailureShow(u"Kann Versions-Einstellungen nicht laden:", product,
                    Trim(words + u" (Fehler " + DecimalText(error->number) + u")"));
    }
    return !error;
}

void frmVTV4V::Load() {
    mainProfile_ = std::make_unique<ProductProfileMain>();
    MainVersions = mainProfile_->Profile.Table;
    reportingProfile_ = std::make_unique<ProductProfileReporting>();
    ReportingVersions = reportingProfile_->Profile.Table;
    ControlFilePath = ControlFilePathGet();
    for (const ToolTip& toolTip : ToolTips) {
        platform::ControlToolTip(window_, toolTip.button, Text(toolTip.text));
    }
}

void frmVTV4V::Unload() {
    ReportingVersions.reset();
    reportingProfile_.reset();
    MainVersions.reset();
    mainProfile_.reset();
}

// Entering the task bar hides the window and shows it, which makes it active again.
void frmVTV4V::Activated() {
    if (enteringTaskBar_) {
        return;
    }
    enteringTaskBar_ = true;
    ShowInTaskBar(window_, true);
    enteringTaskBar_ = false;
}

// Operations give pending messages a turn, so that a click can arrive while another one's operation runs.
void frmVTV4V::Clicked(std::size_t button) {
    if (operationRuns_) {
        return;
    }
    operationRuns_ = true;
    RunOperation(button);
    operationRuns_ = false;
}

void frmVTV4V::RunOperation(std::size_t button) {
    switch (button) {
        case btnExport:
            ExportClicked();
            break;
        case btnImport:
            AskAndRun(ImportCaption, ImportToolTip, ImportVersions);
            break;
        case btnDemo:
            TryWriteControlFile(WriteDemoFile);
            break;
        case btnClear:
            AskAndRun(ClearCaption, ClearToolTip, ClearVersions);
            break;
        case btnEdit:
            EditControlFile();
            break;
        case btnQuit:
            platform::ShowWindow(window_, platform::ShowHide);
            break;
        default:
            break;
    }
}

void frmVTV4V::ExportClicked() {
    if (TryWriteControlFile(ExportVersions)) {
        EditControlFile();
    }
}
