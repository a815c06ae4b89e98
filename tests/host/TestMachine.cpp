#include "TestMachine.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "host/MachineFiles.h"
#include "platform/host/Machine.h"

namespace fs = std::filesystem;

// Redirects standard input to an empty stream, so that programs started by a test case don't wait for input.
void TestMachine::SetUp() {
    std::string folder = (fs::temp_directory_path() / "vtv4v-test-XXXXXX").native();
    if (std::freopen("/dev/null", "r", stdin) == nullptr || mkdtemp(folder.data()) == nullptr) {
        throw std::runtime_error("can't empty standard input or create the test machine's folder");
    }
    folder_ = folder;
    Environment("VTV4V_MACHINE", folder);
    Environment("HOMEDRIVE", "C:");
    Environment("HOMEPATH", "\\Users\\hugo");
}

void TestMachine::TearDown() {
}

void ProcessVariable(const std::string& name, const std::optional<std::string>& value) {
    if (value) {
        setenv(name.c_str(), value->c_str(), 1);
    } else {
        unsetenv(name.c_str());
    }
}

// Supports only ASCII paths on drive C:.
fs::path OnDisk(const std::string& path) {
    std::string below = path;
    std::ranges::replace(below, '\\', '/');
    return OnMachine("drives/c/" + below.substr(below.find('/') + 1));
}

fs::path OnMachine(const std::string& below) {
    return platform::host::MachineFolder() / below;
}

void Writable(const std::string& below, bool writable) {
    fs::permissions(OnMachine(below), fs::perms::owner_write,
                    writable ? fs::perm_options::add : fs::perm_options::remove);
}

int ExitCode(pid_t process) {
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string OutputOf(const std::string& input, const std::function<void()>& steps) {
    std::istringstream typed(input);
    std::ostringstream shown;
    std::cin.clear();
    std::streambuf* const earlierInput = std::cin.rdbuf(typed.rdbuf());
    std::streambuf* const earlierOutput = std::cout.rdbuf(shown.rdbuf());
    steps();
    std::cin.rdbuf(earlierInput);
    std::cout.rdbuf(earlierOutput);
    return shown.str();
}
