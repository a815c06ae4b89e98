#include "app/Main.h"

#include <exception>
#include <optional>

#include "app/frmVTV4V.h"
#include "common/Error.h"
#include "common/Text.h"
#include "installcheck/VcoreTest.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "version/modVTV4Version.h"

namespace {

void CheckAndShow() {
    if (VcoreTest().Ok(true)) {
        frmVTV4V window;
        window.ShowModal();
    }
}

void ShowStartFailure(const Text& reason) {
    FailureShow(u"Kann Programm nicht ausführen:", platform::TextFromAnsi(platform::ProgramFolder()), reason);
}

}  // namespace

void Main() {
    if (Trim(platform::CommandLineTail()) != u"-master") {
        return;
    }
    try {
        if (const std::optional<Error> error = TrapError(CheckAndShow)) {
            ShowStartFailure(error->description);
        }
    } catch (const std::exception& exception) {
        ShowStartFailure(platform::TextFromAnsi(exception.what()));
    }
}
