// The whole check of this machine in a loop, beside the calls of the system that it is made of, and nothing else. The
// argument is the number of rounds; the output is a line of JSON for each, with the microseconds of its fastest runs.

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

constexpr int RunsOfRound = 5;

// The paths as a report's rows name them.
std::vector<std::string> FilesOf(std::string_view report) {
    constexpr std::string_view Mark = "=Path(";
    std::vector<std::string> files;
    for (std::size_t at = report.find(Mark); at != std::string_view::npos; at = report.find(Mark, at)) {
        at += Mark.size();
        files.emplace_back(report.substr(at, report.find("),", at) - at));
    }
    return files;
}

void ObjectAlone(const std::u16string& programmaticIdentifier) {
    platform::ObjectReference object = 0;
    platform::CreateObject(programmaticIdentifier, object);
    platform::ReleaseObject(object);
}

void FileAlone(const std::string& path) {
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

bool CallsAlone(const std::vector<std::string>& files) {
    std::ranges::for_each(files, FileAlone);
    ObjectAlone(u"sevPopUp2.PopUp");
    ObjectAlone(u"VCUTIL1.DebugLog");
    const auto library = std::ranges::find_if(files, [](const auto& path) { return path.ends_with("sevDTA30.dll"); });
    std::int32_t result = 0;
    return library != files.end() &&
           platform::CallTextFunction(*library, "sevDTA_Init", "", result) == platform::StatusSuccess;
}

// Ends the program when the work is not done: half a work takes half the time.
template <class Work>
double LeastMicroseconds(const Work& work) {
    double least = 0;
    for (int run = 0; run < RunsOfRound; ++run) {
        const auto begin = std::chrono::steady_clock::now();
        if (!work()) {
            std::cerr << "bench-check: a round could not be run to its end\n";
            std::exit(1);
        }
        const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - begin;
        least = run == 0 ? time.count() : std::min(least, time.count());
    }
    return least;
}

}  // namespace

int main(int argumentCount, char* arguments[]) {
    VcoreTest first;
    if (argumentCount != 2 || !first.Ok(false)) {
        std::cerr << "bench-check: something is missing on this machine\n";
        return 1;
    }
    const std::vector<std::string> files = FilesOf(platform::AnsiFromText(first.Text()));
    for (int round = std::atoi(arguments[1]); round > 0; --round) {
        const double check = LeastMicroseconds([] { return VcoreTest().Ok(false); });
        const double calls = LeastMicroseconds([&] { return CallsAlone(files); });
        std::cout << "{\"check\":" << check << ",\"calls\":" << calls << "}\n";
    }
    return 0;
}
