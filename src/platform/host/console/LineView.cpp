#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <utility>

#include "platform/Regional.h"
#include "platform/host/Unicode.h"
#include "platform/host/console/Dialog.h"

namespace platform::host {

namespace {

// Returns the text in uppercase, trimmed, and with each umlaut as a single character, because some terminals send a
// letter and a combining diaeresis.
std::u16string Comparable(std::u16string text) {
    constexpr const char16_t* spaces = u" \t\r";
    text.erase(text.find_last_not_of(spaces) + 1);
    text.erase(0, text.find_first_not_of(spaces));
    text = CharUpperW(text);
    for (const auto& [pair, umlaut] : {std::pair(u"A\u0308", u'Ä'), {u"O\u0308", u'Ö'}, {u"U\u0308", u'Ü'}}) {
        for (std::size_t at = text.find(pair); at != std::u16string::npos; at = text.find(pair)) {
            text.replace(at, 2, 1, umlaut);
        }
    }
    return text;
}

class LineView : public DialogView {
public:
    explicit LineView(Dialog dialog) : dialog_(std::move(dialog)) {
        std::cout << "== " << DisplayText(dialog_.caption) << " ==\n";
        std::vector<DialogControl> fromTop = dialog_.controls;
        std::ranges::stable_sort(fromTop, {}, [](const DialogControl& it) { return it.bounds.top; });
        for (const DialogControl& control : fromTop) {
            if (control.kind == ControlKind::Label && control.visible) {
                std::cout << DisplayText(control.caption) << '\n';
            }
        }
        PrintChoices();
    }

    UserAction Next() override {
        for (;;) {
            std::cout << "> " << std::flush;
            std::string line;
            if (!std::getline(std::cin, line)) {
                std::cout << '\n';
                return {UserAction::Kind::Close};
            }
            const std::u16string typed = FromUtf8(line);
            if (isatty(STDIN_FILENO) != 1) {  // a terminal echoes the line itself
                std::cout << DisplayText(typed) << '\n';
            }
            if (const std::optional<UserAction> action = ActionFor(Comparable(typed))) {
                return *action;
            }
            if (HasToolTips() && Comparable(typed) == u"?") {
                PrintButtons(true);
            } else {
                std::cout << "Das gibt es hier nicht. Eingeben lässt sich:\n";
                PrintChoices();
            }
        }
    }

    void Update(const Dialog& dialog) override { dialog_ = dialog; }

private:
    [[nodiscard]] std::optional<UserAction> ActionFor(const std::u16string& line) const {
        if (line == u"X") {
            return UserAction{UserAction::Kind::Close};
        }
        std::size_t number = 0;
        for (const std::size_t button : ButtonsOf(dialog_)) {
            ++number;
            if (line == Comparable(dialog_.controls[button].caption) || line == FromUtf8(std::to_string(number))) {
                return UserAction{UserAction::Kind::Click, button};
            }
        }
        return std::nullopt;
    }

    void PrintButtons(bool withToolTips) const {
        std::size_t number = 0;
        for (const std::size_t button : ButtonsOf(dialog_)) {
            const DialogControl& control = dialog_.controls[button];
            std::cout << "  " << ++number << ' ' << DisplayText(control.caption)
                      << (withToolTips ? ": " + DisplayText(control.toolTip) : "") << '\n';
        }
    }

    void PrintChoices() const {
        PrintButtons(false);
        std::cout << (HasToolTips() ? "  ? Erklärungen\n" : "") << "  x Schließen\n";
    }

    [[nodiscard]] bool HasToolTips() const {
        return std::ranges::any_of(dialog_.controls, [](const DialogControl& it) { return !it.toolTip.empty(); });
    }

    Dialog dialog_;
};

}  // namespace

std::unique_ptr<DialogView> PrintDialog(const Dialog& dialog) {
    return std::make_unique<LineView>(dialog);
}

}  // namespace platform::host
