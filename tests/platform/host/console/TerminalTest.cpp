#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <csignal>
#include <cstdlib>

#include "Check.h"
#include "host/MachineFiles.h"
#include "platform/ShellCalls.h"
#include "platform/WindowSystem.h"

using namespace platform;

namespace {

void FrontEnd() {
    const auto clicked = [](std::size_t /*control*/) {
        std::int32_t program = 0;
        StartCommandLine("sh -c \"stty -icanon -echo; echo ready; read line; echo got $line; kill -9 $$\"",
                         ShowMinimisedFocus, program);
    };
    const Control start{ControlKind::Button, u"Starten", {0, 0, 1335, 375}};
    WindowShowModal(WindowCreate({u"W", {3000, 1000}, false, 1, {start}}, {{}, clicked, {}}));
}

// A person's terminal, with the front end running in it as the only process of its session.
class Terminal {
public:
    Terminal() : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
        grantpt(master_);
        unlockpt(master_);
        const std::string name = ptsname(master_);
        process_ = Started([&name] {
            setsid();
            const int slave = open(name.c_str(), O_RDWR);
            ioctl(slave, TIOCSCTTY, 0);
            dup2(slave, STDIN_FILENO);
            dup2(slave, STDOUT_FILENO);
            setenv("TERM", "xterm", 1);
            FrontEnd();
            return 42;
        });
    }
    ~Terminal() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            ExitCode();
        }
        close(master_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void Type(const std::string& text) const {
        CHECK(write(master_, text.data(), text.size()) == static_cast<ssize_t>(text.size()));
    }

    // What comes on the terminal up to the end of `text`; fails when it does not come in time.
    std::string Await(const std::string& text) const {
        std::string seen;
        pollfd output{master_, POLLIN, 0};
        for (char byte = 0; !seen.ends_with(text); seen += byte) {
            const bool came = poll(&output, 1, 20000) == 1 && read(master_, &byte, 1) == 1;
            REQUIRE_MESSAGE(came, text << " not in: " << seen);
        }
        return seen;
    }

    [[nodiscard]] tcflag_t Modes() const {
        termios modes{};
        tcgetattr(master_, &modes);
        return modes.c_lflag & (ICANON | ECHO);
    }

    int ExitCode() { return ::ExitCode(std::exchange(process_, 0)); }

private:
    int master_;
    pid_t process_ = 0;
};

}  // namespace

TEST_CASE("A started program works in the terminal until it ends, and then the window is back and reads on") {
    const TestMachine machine;
    const std::string erased = "\x1B[J";
    Terminal terminal;
    terminal.Await("> ");
    terminal.Type("quatsch\n");
    CHECK(terminal.Await("> ").find(erased) != std::string::npos);  // drawn over its earlier self
    terminal.Type("1\n");
    terminal.Await("ready");
    CHECK(terminal.Modes() == 0);
    terminal.Type("\x1A");  // Ctrl-Z, where no shell could continue the program
    terminal.Type("hello\n");
    terminal.Await("got hello");
    CHECK(terminal.Await("> ").find(erased) == std::string::npos);  // what the program wrote stays
    CHECK(terminal.Modes() == (ICANON | ECHO));
    terminal.Type("x\n");
    CHECK(terminal.ExitCode() == 42);
}
