// The whole check of an installation where nothing is missing, beside a bare loop that only opens and reads the same
// files by their paths on the host's disk. Both again with files of the size that real libraries have: the bare loop
// reads them whole, the check no more than their version blocks.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

#include "bench/BenchMachine.h"
#include "bench/OpenAndRead.h"
#include "installcheck/VcoreTest.h"
#include "samples/InstalledSuite.h"
#include "samples/SuiteComponents.h"

namespace {

// Bytes: 0 leaves the sample files as small as they are.
constexpr std::int64_t SampleSize = 0;
constexpr std::int64_t LibrarySize = std::int64_t{512} * 1024;

std::vector<std::string> SuiteMade(const BenchMachine& machine, std::int64_t fileSize) {
    InstalledSuiteAdd({});
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(machine.Folder() / "drives")) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path().native());
            if (fileSize != SampleSize) {
                std::filesystem::resize_file(entry, static_cast<std::uintmax_t>(fileSize));
            }
        }
    }
    return files;
}

void WholeCheck(benchmark::State& state) {
    const BenchMachine machine;
    SuiteMade(machine, state.range());
    for ([[maybe_unused]] auto round : state) {
        if (!VcoreTest().Ok(false)) {
            state.SkipWithError("the check found something missing");
            break;
        }
    }
}
BENCHMARK(WholeCheck)->Arg(SampleSize)->Arg(LibrarySize);

void BareLoop(benchmark::State& state) {
    const BenchMachine machine;
    const std::vector<std::string> files = SuiteMade(machine, state.range());
    if (files.size() != SuiteComponents.size()) {
        state.SkipWithError("these are not the suite's files");
        return;
    }
    for ([[maybe_unused]] auto round : state) {
        if (!std::ranges::all_of(files, OpenAndRead, &std::string::c_str)) {
            state.SkipWithError("a file cannot be read");
            break;
        }
    }
}
BENCHMARK(BareLoop)->Arg(SampleSize)->Arg(LibrarySize);

}  // namespace
