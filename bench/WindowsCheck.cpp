// Benchmarks the installation check against the bare system calls it makes. The argument is the number of rounds.
// Prints one JSON line per round with the fastest times in microseconds.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "installcheck/VcoreTest.h"
#include "platform/ComponentCalls.h"
#include "platform/Regional.h"

namespace {

constexpr int RunsPerRound = 5;

// Returns the file paths in the rows of a report.
std::vector<std::string> ReportedFiles(std::string_view report) {
    constexpr std::string_view Mark = "=Path(";
    std::vector<std::string> files;
    for (std::size_t at = report.find(Mark); at != std::string_view::npos; at = report.find(Mark, at)) {
        at += Mark.size();
        files.emplace_back(report.substr(at, report.find("),", at) - at));
    }
    return files;
}

void CreateAndRelease(const std::u16string& progId) {
    platform::ObjectReference object = 0;
    platform::CreateObject(progId, object);
    platform::ReleaseObject(object);
}

void ReadFileFacts(const std::string& path) {
    WIN32_FIND_DATAA found;
    FindClose(FindFirstFileA(path.c_str(), &found));
    DWORD none = 0;
    std::vector<char> block(GetFileVersionInfoSizeA(path.c_str(), &none));
    if (!block.empty()) {
        GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data());
    }
    WIN32_FILE_ATTRIBUTE_DATA data;
    GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data);
}

bool MakeBareCalls(const std::vector<std::string>& files) {
    std::ranges::for_each(files, ReadFileFacts);
    CreateAndRelease(u"sevPopUp2.PopUp");
    CreateAndRelease(u"VCUTIL1.DebugLog");
    const auto library = std::ranges::find_if(files, [](const auto& path) { return path.ends_with("sevDTA30.dll"); });
    std::int32_t result = 0;
    return library != files.end() &&
           platform::CallTextFunction(*library, "sevDTA_Init", "", result) == platform::StatusSuccess;
}

// Returns the time of the fastest run. Exits if a run fails, because failed runs are faster.
template <class Work>
double FastestMicroseconds(const Work& work) {
    double fastest = 0;
    for (int run = 0; run < RunsPerRound; ++run) {
        const auto begin = std::chrono::steady_clock::now();
        if (!work()) {
            std::cerr << "bench-check: a run failed\n";
            std::exit(1);
        }
        const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - begin;
        fastest = run == 0 ? time.count() : std::min(fastest, time.count());
    }
    return fastest;
}

}  // namespace

int main(int argumentCount, char* arguments[]) {
    VcoreTest first;
    if (argumentCount != 2 || !first.Ok(false)) {
        std::cerr << "bench-check: the check fails on this machine\n";
        return 1;
    }
    const std::vector<std::string> files = ReportedFiles(platform::AnsiFromText(first.Text()));
    for (int round = std::atoi(arguments[1]); round > 0; --round) {
        const double check = FastestMicroseconds([] { return VcoreTest().Ok(false); });
        const double calls = FastestMicroseconds([&] { return MakeBareCalls(files); });
        std::cout << "{\"check\":" << check << ",\"calls\":" << calls << "}\n";
    }
    return 0;
}
