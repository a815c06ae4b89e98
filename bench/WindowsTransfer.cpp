// Imports or exports the tables as the window's buttons do, without the window, so that the operation itself can be
// timed and its calls counted under Wine. The argument is "import", "export" or "nothing", which does all but the
// operation.

#include <optional>
#include <string_view>

#include "common/Error.h"
#include "platform/Process.h"
#include "version/ProductProfileMain.h"
#include "version/ProductProfileReporting.h"
#include "version/modVTV4Version.h"

int main(int argumentCount, char* arguments[]) {
    platform::ProcessStart(argumentCount, arguments);
    const std::string_view operation = argumentCount == 2 ? arguments[1] : "";
    ControlFilePath = ControlFilePathGet();
    const ProductProfileMain mainProfile;
    const ProductProfileReporting reportingProfile;
    MainVersions = mainProfile.Profile.Table;
    ReportingVersions = reportingProfile.Profile.Table;
    const std::optional<Error> error = TrapError([&] {
        if (operation == "import") {
            ImportVersions();
        } else if (operation == "export") {
            ExportVersions();
        }
    });
    MainVersions.reset();
    ReportingVersions.reset();
    return error || operation.empty() ? 1 : 0;
}
