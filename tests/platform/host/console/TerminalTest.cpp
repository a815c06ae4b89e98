#include <poll.h>
#include <pty.h>

#include <cstdlib>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/ShellCalls.h"
#include "platform/WindowSystem.h"
#include "platform/host/FileDescriptor.h"

using namespace platform;

namespace {

[[noreturn]] void FrontEnd() {
    setenv("TERM", "xterm", 1);
    const auto clicked = [](std::size_t /*control*/) { ShellExecuteA(0, "open", "C:\\text.txt", "", "", ShowNormal); };
    const Control start{ControlKind::Button, u"Starten", {0, 0, 1335, 375}};
    WindowShowModal(WindowCreate({u"W", {3000, 1000}, false, 1, {start}}, {{}, clicked, {}}));
    _exit(42);
}

// A person's terminal, with the front end running in it as the only process of its session.
class Terminal {
public:
    Terminal() {
        int master = -1;
        process_ = forkpty(&master, nullptr, nullptr, nullptr);
        if (process_ == 0) {
            FrontEnd();
        }
        master_ = host::FileDescriptor(master);
    }

    void Type(const std::string& text) const {
        CHECK(write(master_.Get(), text.data(), text.size()) == static_cast<ssize_t>(text.size()));
    }

    // What comes on the terminal up to the end of `text`; fails when it does not come in time.
    std::string Await(const std::string& text) const {
        std::string seen;
        pollfd output{master_.Get(), POLLIN, 0};
        for (char byte = 0; !seen.ends_with(text); seen += byte) {
            const bool came = poll(&output, 1, 20000) == 1 && read(master_.Get(), &byte, 1) == 1;
            REQUIRE_MESSAGE(came, text << " not in: " << seen);
        }
        return seen;
    }

    [[nodiscard]] int ExitCode() const { return ::ExitCode(process_); }

private:
    host::FileDescriptor master_;  // its close hangs up, and that ends the front end
    pid_t process_ = -1;
};

}  // namespace

TEST_CASE("A started program works in the terminal until it ends, and then the window is back and reads on") {
    const TestMachine machine;
    FileContent("C:\\text.txt", "");
    RawValueSet(KeyClassesRoot, ".txt", "", RawText("text"));
    RawValueSet(KeyClassesRoot, "text", "Terminal", RawNumber(1));
    RawValueSet(KeyClassesRoot, "text\\shell\\open\\command", "",
                RawText("sh -c \"stty -icanon -echo; echo ready; read line; echo got $line; kill -9 $$\""));
    const std::string erased = "\x1B[J";
    const Terminal terminal;
    terminal.Await("> ");
    terminal.Type("quatsch\n");
    CHECK(terminal.Await("> ").find(erased) != std::string::npos);  // drawn over its earlier self
    terminal.Type("1\n");
    terminal.Await("ready");
    terminal.Type("\x1A");  // Ctrl-Z, where no shell could continue the program
    terminal.Type("hello\n");
    terminal.Await("got hello");
    terminal.Await("> ");
    terminal.Type("quatsch\n");
    terminal.Await("quatsch\r\n");  // the terminal's own echo is back
    terminal.Type("x\n");
    CHECK(terminal.ExitCode() == 42);
}
