#include <newt.h>
#include <slang.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <utility>

#include "platform/host/console/Dialog.h"
#include "platform/host/console/NewtForm.h"
#include "platform/host/console/Terminal.h"

namespace platform::host {

namespace {

class NewtView;
// The visible dialogs, bottommost first. As long as there are any, newt draws on the terminal.
std::vector<NewtView*> views;

// True if the Escape just read begins the escape sequence of a key unknown to newt. Skips the rest of the sequence.
bool SkipUnknownKey() {
    if (SLang_input_pending(0) <= 0) {
        return false;
    }
    int key = static_cast<int>(SLang_getkey());
    if ((key != '[' && key != 'O') || SLang_input_pending(0) <= 0) {
        SLang_ungetkey(static_cast<unsigned char>(key));
        return false;
    }
    do {
        key = static_cast<int>(SLang_getkey());
    } while (std::isalpha(key) == 0 && key != '~' && SLang_input_pending(0) > 0);
    return true;
}

class NewtView : public DialogView {
public:
    explicit NewtView(Dialog dialog) : dialog_(std::move(dialog)) {
        if (views.empty()) {
            BeginScreen();
        }
        views.push_back(this);
        Draw();
    }
    ~NewtView() override {
        Erase();
        std::erase(views, this);
        if (views.empty()) {
            EndScreen();
        }
    }

    void Draw() { form_ = std::make_unique<NewtForm>(dialog_, focus_, views.front() == this); }
    void Erase() {
        focus_ = form_->Focus();
        form_.reset();
    }

    void Update(const Dialog& dialog) override {
        Erase();
        dialog_ = dialog;
        Draw();
    }

    UserAction Next() override {
        for (;;) {
            const auto [key, pressed] = form_->Run();
            if (pressed) {
                return {UserAction::Kind::Click, *pressed};
            }
            if (key == NEWT_KEY_ERROR || (key == NEWT_KEY_ESCAPE && !SkipUnknownKey())) {
                return {UserAction::Kind::Close};
            }
            if (key == KeyInterrupt) {
                std::raise(SIGINT);
            }
            if (key == NEWT_KEY_RESIZE) {
                RedrawAll();
                if (dialog_.sizable) {
                    return {UserAction::Kind::Resize};
                }
            }
        }
    }

private:
    static void RedrawAll() {
        std::for_each(views.rbegin(), views.rend(), [](NewtView* view) { view->Erase(); });
        ResizeScreen();
        std::ranges::for_each(views, &NewtView::Draw);
    }

    Dialog dialog_;
    std::optional<std::size_t> focus_;
    std::unique_ptr<NewtForm> form_;
};

}  // namespace

std::unique_ptr<DialogView> ShowDialog(const Dialog& dialog) {
    return views.empty() && !CanDraw() ? PrintDialog(dialog) : std::make_unique<NewtView>(dialog);
}

}  // namespace platform::host
