#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

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

}  // namespace

// Called by libFuzzer. Treats the bytes as a control file: checks it and writes its entries in both target formats. The
// quotes are paired only if all names are escaped.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int file = memfd_create("control-file", 0);
    static const Text path = platform::TextFromAnsi("/proc/self/fd/" + std::to_string(file));
    Require(ftruncate(file, 0) == 0 && pwrite(file, data, size, 0) == static_cast<ssize_t>(size));
    ControlFileCheck check;
    if (TrapError([&] { check.Read(path); })) {
        return 0;
    }
    Require(RegFileBytes(check.Tables()).size() % 2 == 0);
    const Text changed = u"2017-12-16 10:16:40";
    TrapError([&] {
        for (const std::string& xml : {PreferencesFileBytes(check.Tables(), EmptyTables(), changed),
                                       PreferencesFileBytes(EmptyTables(), check.Tables(), changed)}) {
            Require(std::ranges::count(xml, '"') % 2 == 0);
        }
    });
    return 0;
}
