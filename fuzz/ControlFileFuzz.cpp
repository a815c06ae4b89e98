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
#include "rollout/RegistryFile.h"

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

std::size_t CountUtf16(const std::string& bytes, std::string_view part) {
    std::string text;
    for (std::size_t index = 0; index + 1 < bytes.size(); index += 2) {
        text += bytes[index + 1] == '\0' ? bytes[index] : '?';
    }
    return Count(text, part);
}

void CheckControlFile(const Text& path) {
    ControlFileCheck check;
    if (TrapError([&] { check.Read(path); })) {
        return;
    }
    const std::size_t entries = check.Main().Entries().size() + check.Reporting().Entries().size();
    const std::string registryFile = RegistryFileOf(check.Main(), check.Reporting());
    Require(CountUtf16(registryFile, "=dword:") >= entries);
    Require(CountUtf16(registryFile, "\r\n") == Count(registryFile, std::string_view("\n\0", 2)));
    std::string preferences;
    TrapError([&] { preferences = PreferencesFileOf(check.Main(), check.Reporting(), u"2017-12-16 10:16:40"); });
    Require(Count(preferences, "<Registry ") <= entries && Count(preferences, "\"") % 2 == 0);
}

}  // namespace

// Checks any bytes as a control file and converts its entries to both target formats.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int file = memfd_create("control-file", 0);
    static const Text path = platform::TextFromAnsi("/proc/self/fd/" + std::to_string(file));
    Require(ftruncate(file, 0) == 0 && pwrite(file, data, size, 0) == static_cast<ssize_t>(size));
    CheckControlFile(path);
    return 0;
}
