// Runs an operation of the main window, without the window, for timing. The argument is "import", "export" or "bare";
// "bare" makes only the system calls that an import makes for the control file's "name=number" lines.

#include <windows.h>

#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "common/Error.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "version/ProductProfileMain.h"
#include "version/ProductProfileReporting.h"
#include "version/modVTV4Version.h"

namespace {

constexpr const char* Root = "Software\\Vandrel\\Tallora\\V4";
constexpr const char* Section = "Version\\ForcedVersion";

HKEY OpenKey(const std::string& path, REGSAM access) {
    HKEY key = nullptr;
    RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, access, &key);
    return key;
}

// Opens a key for reading, then reopens it with a different access right, as an import does.
HKEY OpenAndWiden(const std::string& path, REGSAM access) {
    RegCloseKey(OpenKey(path, KEY_QUERY_VALUE));
    return OpenKey(path, KEY_QUERY_VALUE | access);
}

bool StoreEntry(const std::string& name, DWORD number) {
    const HKEY root = OpenAndWiden(Root, KEY_CREATE_SUB_KEY);
    HKEY created = nullptr;
    RegCreateKeyExA(root, Section, 0, nullptr, 0, KEY_CREATE_SUB_KEY, nullptr, &created, nullptr);
    RegCloseKey(created);
    RegCloseKey(root);
    const HKEY section = OpenAndWiden(std::string(Root) + "\\" + Section, KEY_SET_VALUE);
    const LSTATUS status =
        RegSetValueExA(section, name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
    RegCloseKey(section);
    // An import processes pending messages after each entry.
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
        DispatchMessageW(&message);
    }
    return status == ERROR_SUCCESS;
}

bool ImportWithBareCalls() {
    std::ifstream file(platform::AnsiFromText(ControlFilePath));
    bool stored = false;
    for (std::string line; std::getline(file, line);) {
        if (const std::size_t equals = line.find('='); equals != std::string::npos) {
            stored = StoreEntry(line.substr(0, equals), std::stoul(line.substr(equals + 1)));
        }
    }
    return stored;
}

}  // namespace

int main(int argumentCount, char* arguments[]) {
    platform::ProcessStart(argumentCount, arguments);
    const std::string_view operation = argumentCount == 2 ? arguments[1] : "";
    ControlFilePath = ControlFilePathGet();
    if (operation == "bare") {
        return ImportWithBareCalls() ? 0 : 1;
    }
    const ProductProfileMain mainProfile;
    const ProductProfileReporting reportingProfile;
    MainVersions = mainProfile.Profile.Table;
    ReportingVersions = reportingProfile.Profile.Table;
    const std::optional<Error> error = TrapError(operation == "import" ? ImportVersions : ExportVersions);
    MainVersions.reset();
    ReportingVersions.reset();
    return error ? 1 : 0;
}
