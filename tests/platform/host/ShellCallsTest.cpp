#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/ShellCalls.h"
#include "platform/host/CommandLine.h"

namespace {

constexpr std::uint32_t LongEnough = 20000;  // milliseconds, for what takes a few

void Script(const std::string& path, const std::string& steps) {
    FileContent(path, "#!/bin/sh\n" + steps + "\n");
    std::string below = "drives/c/" + path.substr(3);
    std::ranges::replace(below, '\\', '/');
    chmod(OnMachine(below).c_str(), 0755);
}

void Associate(const std::string& type, const std::string& className, const std::string& command) {
    RawValueSet(platform::KeyClassesRoot, type, "", RawText(className));
    RawValueSet(platform::KeyClassesRoot, className + "\\Shell\\Open\\Command", "", RawText(command));
}

std::int32_t Shell(const std::string& file) {
    return platform::ShellExecuteA(0, "open", file, "", "C:\\Users\\hugo\\", platform::ShowNormal);
}

std::int32_t Running(const std::string& command) {
    std::int32_t process = 0;
    CHECK(platform::StartCommandLine(command, platform::ShowMinimisedFocus, process) == platform::StatusSuccess);
    return process;
}

std::uint32_t Waited(std::int32_t process, std::uint32_t milliseconds) {
    const platform::Handle handle = platform::OpenProcess(platform::Synchronize, -1, process);
    CHECK(handle != 0);
    const std::uint32_t result = platform::WaitForSingleObject(handle, milliseconds);
    CHECK(platform::CloseHandle(handle) == platform::StatusSuccess);
    return result;
}

// What the program of a document writes to its folder as its last step.
std::string Written() {
    while (!FileContent("C:\\Users\\hugo\\out")) {
        usleep(10000);
    }
    return MachineFile("drives/c/Users/hugo/out");
}

}  // namespace

TEST_CASE("A document opens with the program of its type") {
    TestMachine machine;
    Script("C:\\Windows\\My Tools\\show",
           "exec >out.new\npwd; echo \"$VTV4V_MACHINE\"; read -r line; echo $?\n"
           "for each; do echo \"[$each]\"; done\nmv out.new out");
    FileContent("C:\\Users\\hugo\\a b.TXT", "text");
    Associate(".txt", "txtfile", "\"C:\\Windows\\my tools\\SHOW.exe\" /p \"x $HOME `id` ;\" \"%1\" \"\"");
    CHECK(Shell("\"C:\\Users\\hugo\\A B.txt\"") == 33);
    const std::string folder = OnMachine("").parent_path().native();
    CHECK(Written() == folder + "/drives/c/Users/hugo\n" + folder + "\n1\n[/p]\n[x $HOME `id` ;]\n[" + folder +
                           "/drives/c/Users/hugo/a b.TXT]\n[]\n");

    // A type may have its command without a class, and a command that does not name the document gets it at its end.
    RawValueSet(platform::KeyClassesRoot, ".own\\shell\\open\\command", "",
                {platform::RegExpandSz, RawText("\"%SystemRoot%\\My Tools\\show\" %x% 100%").bytes});
    machine.Environment("SystemRoot", "C:\\Windows");
    FileContent("C:\\Users\\hugo\\b.own", "");
    std::filesystem::remove(OnMachine("drives/c/Users/hugo/out"));
    CHECK(Shell("C:\\Users\\hugo\\b.own") == 33);
    CHECK(Written().ends_with("[%x%]\n[100%]\n[" + folder + "/drives/c/Users/hugo/b.own]\n"));
}

TEST_CASE("Each way of not being able to open a document has its code") {
    const TestMachine machine;
    FileContent("C:\\Windows\\notrunnable", "#!/bin/sh\n");
    Script("C:\\Windows\\noscript", "");
    FileContent("C:\\Windows\\noscript", "no program at all");
    for (const char* const type : {"none", "half", "word", "lost", "deaf", "junk"}) {
        FileContent(std::string("C:\\Users\\file.") + type, "");
    }
    FileContent("C:\\Users\\file", "");
    RawValueSet(platform::KeyClassesRoot, ".half", "", RawText("halffile"));
    RawValueSet(platform::KeyClassesRoot, ".word", "", RawNumber(1));
    Associate(".lost", "lostfile", "C:\\Windows\\lost.exe %1");
    Associate(".deaf", "deaffile", "notrunnable %1");
    Associate(".junk", "junkfile", "noscript %1");
    const std::vector<std::pair<std::string, std::int32_t>> cases = {
        {"C:\\Users\\missing.txt", 2}, {"C:\\none\\file.txt", 3},    {"missing.txt", 2},
        {"C:\\Users\\file.none", 31},  {"C:\\Users\\file", 31},      {"C:\\Users", 31},
        {"C:\\Users\\file.half", 27},  {"C:\\Users\\file.word", 27}, {"C:\\Users\\file.lost", 2},
        {"C:\\Users\\file.deaf", 5},   {"C:\\Users\\file.junk", 11},
    };
    for (const auto& each : cases) {
        CAPTURE(each.first);
        CHECK(Shell("\"" + each.first + "\"") == each.second);
    }
}

TEST_CASE("A command line is started, waited for, and goes on behind a time-out") {
    const TestMachine machine;
    Script("C:\\Windows\\System32\\until", "while [ ! -e \"$1\" ]; do sleep 0.01; done; : >\"$1.seen\"");
    const std::string sign = OnMachine("sign").native();

    const std::int32_t process = Running("Until.EXE \"" + sign + "\"");
    CHECK(Waited(process, 30) == platform::WaitTimeout);
    REQUIRE(std::filesystem::create_directory(sign));
    CHECK(Waited(process, LongEnough) == platform::WaitObject0);
    CHECK(std::filesystem::exists(sign + ".seen"));

    const std::int32_t quick = Running("true");
    CHECK(Waited(quick, platform::WaitInfinite) == platform::WaitObject0);
    CHECK(Waited(Running("true"), platform::WaitInfinite) == platform::WaitObject0);
    CHECK(platform::OpenProcess(platform::Synchronize, -1, quick) == 0);

    std::int32_t none = -5;
    CHECK(platform::StartCommandLine("there-is-no-such-program /x", 2, none) == platform::StatusFileNotFound);
    CHECK(platform::StartCommandLine("C:\\Windows\\until", 2, none) == platform::StatusFileNotFound);
    CHECK(platform::StartCommandLine("/dev/null", 2, none) == platform::StatusFileNotFound);
    CHECK(none == -5);
    CHECK(platform::WaitForSingleObject(0, platform::WaitInfinite) == platform::WaitFailed);
    CHECK(waitpid(-1, nullptr, WNOHANG) == -1);  // no ended program is left behind
    CHECK(errno == ECHILD);
}

TEST_CASE("A command line falls into arguments as on Windows") {
    const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
        {"  a  b\tc ", {"a", "b", "c"}},
        {R"("C:\my tools\a" "b c"d)", {R"(C:\my tools\a)", "b cd"}},
        {R"(C:\a\ b\ "c\\")", {R"(C:\a\)", R"(b\)", R"(c\)"}},
        {R"(a \"b\" \\\"c d\\)", {"a", R"("b")", R"(\"c)", R"(d\\)"}},
        {R"(a "b ""c"" d" "" "open)", {"a", R"(b "c" d)", "", "open"}},
        {R"(a $x;y|z 'q r')", {"a", "$x;y|z", "'q", "r'"}},
    };
    for (const auto& each : cases) {
        CAPTURE(each.first);
        CHECK(platform::host::CommandLineArguments(each.first) == each.second);
    }
}
