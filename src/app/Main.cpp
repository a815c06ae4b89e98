#include "app/Main.h"

#include <optional>

#include "app/frmVTV4V.h"
#include "common/Error.h"
#include "common/Text.h"
#include "installcheck/VcoreTest.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "version/modVTV4Version.h"

void Main() {
    if (Trim(platform::CommandLineTail()) != u"-master") {
        return;
    }
    const std::optional<Error> error = TrapError([] {
        if (VcoreTest().Ok(true)) {
            frmVTV4V window;
            window.ShowModal();
        }
    });
    if (error) {
        FailureShow(u"Kann Programm nicht ausführen:", platform::TextFromAnsi(platform::ProgramFolder()),
                    error->description);
    }
}
