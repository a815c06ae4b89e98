#include "platform/host/console/NewtView.h"

#include <langinfo.h>
#include <newt.h>
#include <slang.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "platform/host/Machine.h"
#include "platform/host/console/NewtForm.h"

namespace platform::host {

namespace {

class NewtView;
// The dialogs in sight, the lowest first. The terminal is newt's while there is one.
std::vector<NewtView*> views;

// Asked before newt begins, which ends the program on a terminal that it does not know.
bool CanDraw() {
    return HasTerminal() && ProcessVariable("TERM") != "dumb" && SLtt_initialize(nullptr) == 0;
}

// Ctrl-Z. The screen may have another size when we go on, and a shell may continue us in the background, where we must
// not draw.
void Suspended(void* /*unused*/) {
    NewtSuspend();
    kill(0, SIGTSTP);
    while (tcgetpgrp(STDIN_FILENO) != getpgrp()) {
        kill(0, SIGTTIN);
    }
    NewtResume();
    std::raise(SIGWINCH);
    SLang_ungetkey(1);  // Ctrl-A, of no meaning: newt looks for a new size once a key has come
}

void ScreenBegin() {
    // All our text is UTF-8, and newt asks the environment whether it may draw with it. The editor is given UTF-8 too.
    std::setlocale(LC_CTYPE, "");
    if (std::string_view(nl_langinfo(CODESET)) != "UTF-8") {
        setenv("LC_ALL", "C.UTF-8", 1);
        std::setlocale(LC_CTYPE, "");
    }
    if (!ProcessVariable("NO_COLOR").empty()) {
        setenv("NEWT_MONO", "1", 0);
    }
    newtInit();
    KeepResizeHandler();
    newtSetSuspendCallback(Suspended, nullptr);
    newtCls();
}

void ScreenEnd() {
    newtCls();
    newtFinished();
}

// Ctrl-C ends us as it ends any program, on a terminal as it was before.
[[noreturn]] void Interrupted() {
    ScreenEnd();
    std::signal(SIGINT, SIG_DFL);
    std::raise(SIGINT);
    std::_Exit(EXIT_FAILURE);
}

// A key of which newt knows no name comes as Esc and further characters, which are no keys of ours then.
bool IsLoneEscape() {
    const bool lone = SLang_input_pending(0) <= 0;
    while (SLang_input_pending(0) > 0) {
        SLang_getkey();
    }
    return lone;
}

void AllRedraw();

class NewtView : public DialogView {
public:
    explicit NewtView(Dialog dialog) : dialog_(std::move(dialog)) {
        if (views.empty()) {
            ScreenBegin();
        }
        views.push_back(this);
        Draw();
    }
    ~NewtView() override {
        Erase();
        std::erase(views, this);
        if (views.empty()) {
            ScreenEnd();
        }
    }

    void Draw() { form_ = std::make_unique<NewtForm>(dialog_, focus_); }
    void Erase() {
        focus_ = form_->Focus();
        form_.reset();
    }

    void Update(const Dialog& dialog) override {
        Erase();
        dialog_ = dialog;
        Draw();
    }

    Act Next() override {
        for (;;) {
            const NewtInput input = form_->Run();
            if (input.pressed) {
                return {Act::Kind::Click, *input.pressed};
            }
            if (const std::optional<Act> act = ActOf(input.key)) {
                return *act;
            }
        }
    }

private:
    std::optional<Act> ActOf(int key) {
        switch (key) {
            case KeyInterrupt:
                Interrupted();
            case NEWT_KEY_ESCAPE:
                return IsLoneEscape() ? std::optional(Act{Act::Kind::Close}) : std::nullopt;
            case NEWT_KEY_RESIZE:
                AllRedraw();
                return dialog_.sizable ? std::optional(Act{Act::Kind::Resize}) : std::nullopt;
            default:  // the terminal is gone
                return Act{Act::Kind::Close};
        }
    }

    Dialog dialog_;
    std::optional<std::size_t> focus_;
    std::unique_ptr<NewtForm> form_;
};

void AllRedraw() {
    std::for_each(views.rbegin(), views.rend(), [](NewtView* view) { view->Erase(); });
    newtResizeScreen(0);
    SLsmg_reinit_smg();  // a screen that has grown needs more memory, and one that was reflowed is drawn anew
    newtCls();
    for (NewtView* const view : views) {
        view->Draw();
    }
}

}  // namespace

std::unique_ptr<DialogView> NewtShow(const Dialog& dialog) {
    return views.empty() && !CanDraw() ? nullptr : std::make_unique<NewtView>(dialog);
}

std::optional<Size> NewtScreenSize() {
    // An ordinary character of a terminal, in twips.
    constexpr Size cell{120, 240};
    winsize screen{};
    if (!CanDraw() || ioctl(STDOUT_FILENO, TIOCGWINSZ, &screen) != 0 || screen.ws_col == 0 || screen.ws_row == 0) {
        return std::nullopt;
    }
    return Size{screen.ws_col * cell.width, screen.ws_row * cell.height};
}

void NewtSuspend() {
    if (!views.empty()) {
        newtSuspend();
    }
}

void NewtResume() {
    if (!views.empty()) {
        newtResume();
    }
}

}  // namespace platform::host
