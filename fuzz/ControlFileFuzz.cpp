#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "common/Error.h"
#include "platform/Regional.h"
#include "rollout/ControlFileCheck.h"
#include "rollout/PreferencesFile.h"
#include "rollout/RegFile.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

std::size_t Count(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t found = 0; (found = text.find(part, found)) != std::string_view::npos; ++found) {
        ++count;
    }
    return count;
}

// Converts UTF-16 to Latin-1. Characters not in Latin-1 become "?".
std::string Latin1FromUtf16(const std::string& bytes) {
    std::string text;
    for (std::size_t index = 0; index + 1 < bytes.size(); index += 2) {
        text += bytes[index + 1] == '\0' ? bytes[index] : '?';
    }
    return text;
}

// Counts the entries of a control file in both target formats. The counts are exact because no name contains "=".
void CheckControlFile(const Text& path) {
    ControlFileCheck check;
    if (TrapError([&] { check.Read(path); })) {
        return;
    }
    std::size_t entries = 0;
    for (const CheckedTable& table : check.Tables()) {
        entries += table.Entries().size();
    }
    const std::string regFile = Latin1FromUtf16(RegFileBytes(check.Tables()));
    Require(Count(regFile, "=dword:") == entries && Count(regFile, "\n") == Count(regFile, "\r\n"));
    const Text changed = u"2017-12-16 10:16:40";
    TrapError([&] {
        const std::string updates = PreferencesFileBytes(check.Tables(), EmptyTables(), changed);
        const std::string deletions = PreferencesFileBytes(EmptyTables(), check.Tables(), changed);
        Require(Count(updates, "action=\"U\"") == entries && Count(updates, "\"") % 2 == 0);
        Require(Count(deletions, "action=\"D\"") == entries && Count(deletions, "\"") % 2 == 0);
    });
}

}  // namespace

// Called by libFuzzer. Treats the bytes as a control file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int file = memfd_create("control-file", 0);
    static const Text path = platform::TextFromAnsi("/proc/self/fd/" + std::to_string(file));
    Require(ftruncate(file, 0) == 0 && pwrite(file, data, size, 0) == static_cast<ssize_t>(size));
    CheckControlFile(path);
    return 0;
}
