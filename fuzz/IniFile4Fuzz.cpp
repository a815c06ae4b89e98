#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "settings/IniFile4.h"

// Any bytes as an INI file on a machine of this process's own. Reading never fails, each item that was read is found
// under its name, and the document of the same file is the same.

namespace {

namespace fs = std::filesystem;

struct Machine {
    Machine() {
        fs::create_directories(file.parent_path());
        setenv("VTV4V_MACHINE", folder.c_str(), 1);
    }
    ~Machine() { fs::remove_all(folder); }

    const fs::path folder = fs::temp_directory_path() / ("vtv4v-fuzz-" + std::to_string(getpid()));
    const fs::path file = folder / "drives/c/fuzz.ini";
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Machine machine;
    std::ofstream(machine.file, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    IniFile4 document;
    document.FilePath(u"C:\\fuzz.ini");
    for (const auto& [place, section] : *document.Sections()) {
        const Text heading = section.First();
        for (const auto& [linePlace, line] : section) {
            // A heading's name stands between its brackets, an item's before its first "=".
            const Text name = line.substr(0, line.find(u'='));
            const Text found = document.ValueFull(heading.substr(1, heading.size() - 2), name);
            if (heading.starts_with(u'[') && line != heading && line.find(u'=') != Text::npos && found != line) {
                std::abort();
            }
        }
    }
    IniFile4 again;
    again.ReadFile(document.FilePath());
    if (again.Stream() != document.Stream()) {
        std::abort();
    }
    return 0;
}
