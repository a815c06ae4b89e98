#include "platform/host/process/StartedProcess.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <map>
#include <string_view>
#include <system_error>
#include <thread>

#include "platform/host/FileDescriptor.h"
#include "platform/host/Machine.h"
#include "platform/host/console/Terminal.h"

extern char** environ;

namespace platform::host {

namespace {

using Children = std::map<pid_t, std::shared_ptr<StartedProcess>>;

Children& StartedChildren() {
    static Children children;
    return children;
}

void LetEndedGo() {
    std::erase_if(StartedChildren(), [](const Children::value_type& child) { return child.second->Ended(); });
}

// What the new process needs, made before the fork: behind it nothing may take memory.
struct StartPlan {
    explicit StartPlan(const StartOrder& order) : directory(order.directory), program(order.program) {
        std::error_code error;
        machine += std::filesystem::absolute(MachineFolder(), error).native();
        for (const std::string& argument : order.arguments) {
            arguments.push_back(const_cast<char*>(argument.c_str()));
        }
        arguments.push_back(nullptr);
        const std::string_view machineName = std::string_view(machine).substr(0, machine.find('=') + 1);
        for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
            if (!std::string_view(*variable).starts_with(machineName)) {
                variables.push_back(*variable);
            }
        }
        variables.push_back(machine.data());
        variables.push_back(nullptr);
    }
    StartPlan(const StartPlan&) = delete;
    StartPlan& operator=(const StartPlan&) = delete;

    std::string machine = "VTV4V_MACHINE=";
    std::filesystem::path directory;
    std::filesystem::path program;
    std::vector<char*> arguments;
    std::vector<char*> variables;
    bool getsTerminal = TerminalHeld();
};

// Signals that a program may set aside for itself, and expects to find as the system has them.
void SignalsReset() {
    for (const int number : {SIGINT, SIGQUIT, SIGPIPE, SIGTSTP, SIGTTIN, SIGTTOU, SIGCHLD, SIGXFSZ}) {
        std::signal(number, SIG_DFL);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

void InputEmpty() {
    const int null = open("/dev/null", O_RDONLY);
    if (null > STDIN_FILENO) {
        dup2(null, STDIN_FILENO);
        close(null);
    }
}

// A pipe whose ends no started program inherits.
class PrivatePipe {
public:
    bool Open() {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) {
            return false;
        }
        readEnd_ = FileDescriptor(ends[0]);
        writeEnd_ = FileDescriptor(ends[1]);
        return fcntl(ends[0], F_SETFD, FD_CLOEXEC) == 0 && fcntl(ends[1], F_SETFD, FD_CLOEXEC) == 0;
    }
    void WriteEndClose() { writeEnd_.Close(); }

    void Write(int number) const {
        Uninterrupted([&] { return write(writeEnd_.Get(), &number, sizeof number); });
    }
    // Waits for a number; 0 when the other end is closed without one.
    [[nodiscard]] int Read() const {
        int number = 0;
        const ssize_t got = Uninterrupted([&] { return read(readEnd_.Get(), &number, sizeof number); });
        return got == static_cast<ssize_t>(sizeof number) ? number : 0;
    }

private:
    FileDescriptor readEnd_;
    FileDescriptor writeEnd_;
};

// `gate` lets the new process go on once the terminal is its own, so that it never reads from the background and the
// terminal's modes are still ours when it is lent. `failure` tells why the program could not run.
struct StartPipes {
    PrivatePipe gate;
    PrivatePipe failure;
};

// In the new process.
[[noreturn]] void Become(const StartPlan& plan, StartPipes& pipes) {
    setpgid(0, 0);
    pipes.gate.WriteEndClose();
    if (pipes.gate.Read() == 0) {
        _exit(127);
    }
    SignalsReset();
    if (!plan.getsTerminal) {
        InputEmpty();
    }
    // A folder that cannot be entered is no reason not to start.
    if (!plan.directory.empty() && chdir(plan.directory.c_str()) != 0) {
        errno = 0;
    }
    execve(plan.program.c_str(), plan.arguments.data(), plan.variables.data());
    pipes.failure.Write(errno);
    _exit(127);
}

}  // namespace

bool StartedProcess::Ended() {
    if (!ended_) {
        if (isChild_) {
            const pid_t result = Uninterrupted([&] { return waitpid(number_, nullptr, WNOHANG); });
            ended_ = result == number_ || (result < 0 && errno == ECHILD);
        } else {
            ended_ = kill(number_, 0) != 0 && errno == ESRCH;
        }
    }
    return ended_;
}

bool StartedProcess::EndAwaited(std::optional<std::chrono::milliseconds> limit) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds LongestPause(10);
    const Clock::time_point start = Clock::now();
    std::chrono::milliseconds pause(1);
    while (!Ended()) {
        if (limit) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(start + *limit - Clock::now());
            if (left.count() <= 0) {
                return false;
            }
            pause = std::min(pause, left);
        }
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, LongestPause);
    }
    return true;
}

int StartProgram(const StartOrder& order, pid_t& process) {
    LetEndedGo();
    const StartPlan plan(order);
    StartPipes pipes;
    if (!pipes.gate.Open() || !pipes.failure.Open()) {
        return errno;
    }
    const pid_t child = fork();
    if (child < 0) {
        return errno;
    }
    if (child == 0) {
        Become(plan, pipes);
    }
    // Both sides make the group: whoever comes first, it is there for both.
    setpgid(child, child);
    if (plan.getsTerminal) {
        TerminalLend(child);
    }
    pipes.gate.Write(1);
    pipes.failure.WriteEndClose();
    if (const int failure = pipes.failure.Read(); failure != 0) {
        Uninterrupted([&] { return waitpid(child, nullptr, 0); });
        return failure;
    }
    process = child;
    StartedChildren()[child] = std::make_shared<StartedProcess>(child, true);
    return 0;
}

std::shared_ptr<StartedProcess> FindProcess(pid_t number) {
    if (const auto child = StartedChildren().find(number); child != StartedChildren().end()) {
        return child->second;
    }
    auto other = std::make_shared<StartedProcess>(number, false);
    return number > 0 && !other->Ended() ? other : nullptr;
}

}  // namespace platform::host
