#include "platform/host/console/LineView.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <map>

#include "platform/Regional.h"
#include "platform/host/Unicode.h"

namespace platform::host {

namespace {

// In capital letters, without blanks at the ends, and with the mark of an umlaut joined to its letter: some terminals
// and file systems part the two.
std::u16string Comparable(std::u16string text) {
    constexpr char16_t diaeresis = u'\x308';
    constexpr std::u16string_view vowels = u"aouAOU";
    constexpr std::u16string_view umlauts = u"äöüÄÖÜ";
    for (std::size_t mark = text.find(diaeresis, 1); mark != std::u16string::npos; mark = text.find(diaeresis, mark)) {
        if (const std::size_t vowel = vowels.find(text[mark - 1]); vowel != std::u16string_view::npos) {
            text.replace(mark - 1, 2, 1, umlauts[vowel]);
        } else {
            ++mark;
        }
    }
    constexpr const char16_t* blanks = u" \t\r";
    text.erase(text.find_last_not_of(blanks) + 1);
    text.erase(0, text.find_first_not_of(blanks));
    return CharUpperW(text);
}

}  // namespace

LineView::LineView(Dialog dialog) : dialog_(std::move(dialog)) {
    std::cout << "== " << ShownText(dialog_.caption) << " ==\n";
    std::multimap<std::int32_t, std::u16string> labels;  // from top to bottom
    for (const DialogControl& control : dialog_.controls) {
        if (control.design.kind == ControlKind::Label && control.design.visible) {
            labels.emplace(control.design.bounds.top, control.design.caption);
        }
    }
    for (const auto& [top, caption] : labels) {
        std::cout << ShownText(caption) << '\n';
    }
    TellChoices();
}

Act LineView::Next() {
    for (;;) {
        std::cout << "> " << std::flush;
        std::string line;
        if (!std::getline(std::cin, line)) {
            std::cout << '\n';
            return {Act::Kind::Close};
        }
        // What comes through a pipe is written too, so that the output reads like a terminal's.
        line.erase(line.find_last_not_of('\r') + 1);
        const std::u16string typed = FromUtf8(line);
        if (isatty(STDIN_FILENO) != 1) {
            std::cout << ShownText(typed) << '\n';
        }
        if (const std::optional<Act> act = ActOf(Comparable(typed))) {
            return *act;
        }
        if (HasToolTips() && Comparable(typed) == u"?") {
            TellButtons(true);
        } else {
            std::cout << "Das gibt es hier nicht. Eingeben lässt sich:\n";
            TellChoices();
        }
    }
}

std::optional<Act> LineView::ActOf(const std::u16string& line) const {
    if (line == u"X") {
        return Act{Act::Kind::Close};
    }
    std::size_t number = 0;
    for (const std::size_t button : ButtonsOf(dialog_)) {
        ++number;
        if (line == Comparable(dialog_.controls[button].design.caption) || line == FromUtf8(std::to_string(number))) {
            return Act{Act::Kind::Click, button};
        }
    }
    return std::nullopt;
}

void LineView::TellButtons(bool explained) const {
    std::size_t number = 0;
    for (const std::size_t button : ButtonsOf(dialog_)) {
        const DialogControl& control = dialog_.controls[button];
        std::cout << "  " << ++number << ' ' << ShownText(control.design.caption)
                  << (explained ? ": " + ShownText(control.toolTip) : "") << '\n';
    }
}

void LineView::TellChoices() const {
    TellButtons(false);
    std::cout << (HasToolTips() ? "  ? Erklärungen\n" : "") << "  x Schließen\n";
}

bool LineView::HasToolTips() const {
    return std::ranges::any_of(dialog_.controls, [](const DialogControl& control) { return !control.toolTip.empty(); });
}

}  // namespace platform::host
