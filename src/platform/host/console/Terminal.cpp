#include "platform/host/console/Terminal.h"

#include <langinfo.h>
#include <newt.h>
#include <slang.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/host/Machine.h"

namespace platform::host {

namespace {

struct sigaction resizeHandler {};

// Read by TerminateProgram.
volatile std::sig_atomic_t drawing = 0;           // 1 if the terminal is in newt's modes
volatile std::sig_atomic_t windowsSuspended = 0;  // 1 if another program has the terminal
volatile std::sig_atomic_t delayedSignal = 0;
termios modesBefore{};
std::string restoreSequence;

bool resumesDrawing = false;  // true if newt was drawing before SuspendWindows

// Signal handler: restores the terminal before the signal kills the process.
void TerminateProgram(int signal) {
    const bool isDelayed = signal == SIGHUP || signal == SIGTERM;
    if (windowsSuspended == 1 && (isDelayed || signal == SIGINT || signal == SIGQUIT)) {
        delayedSignal = isDelayed ? signal : delayedSignal;
        return;
    }
    if (drawing == 1) {
        static_cast<void>(write(STDOUT_FILENO, restoreSequence.data(), restoreSequence.size()));
        tcsetattr(STDIN_FILENO, TCSANOW, &modesBefore);
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void HandleFatalSignals() {
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGPIPE,
                             SIGALRM, SIGUSR1, SIGUSR2, SIGXCPU, SIGXFSZ}) {
        if (const auto earlier = std::signal(signal, TerminateProgram); earlier != SIG_DFL) {
            std::signal(signal, earlier);  // an ignored signal stays ignored
        }
    }
}

void StopDrawing() {
    newtSuspend();
    drawing = 0;
}

void ResumeDrawing() {
    drawing = 1;
    newtResume();
}

// Handles Ctrl-Z. A shell may continue us in the background, where we must not draw.
void StopProgram(void* /*unused*/) {
    StopDrawing();
    kill(0, SIGTSTP);
    while (tcgetpgrp(STDIN_FILENO) != getpgrp()) {
        kill(0, SIGTTIN);
    }
    ResumeDrawing();
    std::raise(SIGWINCH);  // the terminal may have a new size
    SLang_ungetkey(1);     // newt checks the size only after a key; Ctrl-A has no other effect
}

// cppcheck-suppress passedByValue ; SLtt_tgetstr takes a non-const string
std::string Capability(std::string name) {
    const char* const sequence = SLtt_tgetstr(name.data());
    return sequence == nullptr ? std::string() : sequence;
}

}  // namespace

bool HasTerminal() {
    struct stat input {};
    struct stat output {};
    return isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1 && fstat(STDIN_FILENO, &input) == 0 &&
           fstat(STDOUT_FILENO, &output) == 0 && input.st_rdev == output.st_rdev;
}

// newtInit would exit the program if the terminal type is unknown.
bool CanDraw() {
    return HasTerminal() && ProcessVariable("TERM") != "dumb" && SLtt_initialize(nullptr) == 0;
}

std::optional<Size> ScreenSize() {
    constexpr Size character{120, 240};  // twips
    winsize screen{};
    if (!CanDraw() || ioctl(STDOUT_FILENO, TIOCGWINSZ, &screen) != 0 || screen.ws_col == 0 || screen.ws_row == 0) {
        return std::nullopt;
    }
    return Size{screen.ws_col * character.width, screen.ws_row * character.height};
}

void BeginScreen() {
    // newt draws our UTF-8 strings only in a UTF-8 locale. The editor inherits the locale, which suits its UTF-8 file.
    std::setlocale(LC_CTYPE, "");
    if (std::string_view(nl_langinfo(CODESET)) != "UTF-8") {
        setenv("LC_ALL", "C.UTF-8", 1);
        std::setlocale(LC_CTYPE, "");
    }
    if (!ProcessVariable("NO_COLOR").empty()) {
        setenv("NEWT_MONO", "1", 0);
    }
    tcgetattr(STDIN_FILENO, &modesBefore);
    // Clears the screen, resets colours, shows the cursor, and leaves keypad mode and the alternate screen.
    restoreSequence = Capability("cl") + Capability("me") + Capability("ve") + Capability("ke") + Capability("te");
    drawing = 1;
    HandleFatalSignals();
    newtInit();
    sigaction(SIGWINCH, nullptr, &resizeHandler);
    newtSetSuspendCallback(StopProgram, nullptr);
    newtCls();
}

void EndScreen() {
    newtCls();
    newtFinished();
    drawing = 0;
}

void ResizeScreen() {
    newtResizeScreen(0);
    SLsmg_reinit_smg();  // allocates a larger screen, and repaints text that the terminal has reflowed
    newtCls();
}

void WatchScreenSize() {
    sigaction(SIGWINCH, &resizeHandler, nullptr);
}

void SuspendWindows() {
    HandleFatalSignals();
    windowsSuspended = 1;
    resumesDrawing = drawing == 1;
    if (resumesDrawing) {
        StopDrawing();
    }
    tcgetattr(STDIN_FILENO, &modesBefore);
}

void ResumeWindows() {
    tcsetattr(STDIN_FILENO, TCSADRAIN, &modesBefore);
    if (resumesDrawing) {
        ResumeDrawing();
    }
    windowsSuspended = 0;
    if (delayedSignal != 0) {
        std::raise(delayedSignal);
    }
}

}  // namespace platform::host
