#include "platform/host/console/NewtForm.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <csignal>
#include <cstdlib>
#include <map>
#include <memory>
#include <sstream>
#include <string_view>

#include "platform/host/console/Clipboard.h"

namespace platform::host {

namespace {

constexpr int FrameRows = 2;
constexpr int HelpRows = 1;

// What a failure in a text begins with, as the reports mark it.
constexpr std::string_view FailureMark = "***";

// The cells that a line takes: one to each character.
int Columns(const std::string& line) {
    return static_cast<int>(
        std::ranges::count_if(line, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80; }));
}

std::string Padded(std::string line, int columns) {
    line.append(static_cast<std::size_t>(std::max(columns - Columns(line), 0)), ' ');
    return line;
}

// A text in lines that are broken at blanks.
std::vector<std::string> Wrapped(const std::u16string& text, int columns) {
    std::string whole = ShownText(text);
    int width = 0;
    int height = 0;
    const std::unique_ptr<char, void (*)(void*)> wrapped(
        newtReflowText(whole.data(), std::max(columns, 1), 0, 0, &width, &height), std::free);
    std::istringstream broken(wrapped.get());
    std::vector<std::string> lines;
    for (std::string line; std::getline(broken, line);) {
        lines.push_back(line);
    }
    return lines;
}

// The nearest of a terminal's eight colours, by name and by number.
int ColourNumber(Colour colour) {
    const auto bright = [&](unsigned shift) { return (static_cast<unsigned>(colour) >> shift & 0xFFU) >= 0x80; };
    return (bright(0) ? 1 : 0) + (bright(8) ? 2 : 0) + (bright(16) ? 4 : 0);
}

char* ColourName(int number) {
    static std::array<std::string, 8> names{"black", "red", "green", "brown", "blue", "magenta", "cyan", "white"};
    return names.at(static_cast<std::size_t>(number)).data();
}

struct sigaction resizeHandler {};

// The mouse support of newt takes its watch for a new screen size away at the end of each run of a form.
void WatchResize() {
    sigaction(SIGWINCH, &resizeHandler, nullptr);
}

}  // namespace

void KeepResizeHandler() {
    sigaction(SIGWINCH, nullptr, &resizeHandler);
}

NewtForm::NewtForm(const Dialog& dialog, std::optional<std::size_t> focus)
    : dialog_(dialog), buttons_(ButtonsOf(dialog)), form_(newtForm(nullptr, nullptr, NEWT_FLAG_NOF12)) {
    newtGetScreenSize(&columns_, &rows_);
    roomy_ = columns_ >= 60 && rows_ >= 22;
    explanationRows_ = dialog.isBox ? 0 : buttons_.empty() ? 1 : 4;
    CreateControls();
    OpenWindow();
    for (const newtComponent control : controls_) {
        if (control != nullptr) {
            newtFormAddComponent(form_, control);
        }
    }
    AddKeys();
    newtComponentAddCallback(form_, FocusMoved, this);
    if (!buttons_.empty()) {
        newtFormSetCurrent(form_, controls_[focus.value_or(buttons_.front())]);
    }
    const std::string keys = buttons_.empty() ? " Pfeile, Bild auf/ab Blättern" : " Tab Wählen  Enter Drücken";
    const std::string more = buttons_.empty() || !roomy_ ? "" : "  Ziffer, Anfangsbuchstabe Sofort";
    newtPushHelpLine((keys + (dialog.isBox ? "  Esc Zurück" : "  Esc Ende") + more).c_str());
    newtDrawForm(form_);
}

NewtForm::~NewtForm() {
    newtPopHelpLine();
    newtFormDestroy(form_);
    newtPopWindow();
}

NewtInput NewtForm::Run() {
    WatchResize();
    if (IsOutgrown()) {
        return {NEWT_KEY_RESIZE};
    }
    ShowExplanation();
    newtExitStruct end{};
    newtFormRun(form_, &end);
    if (end.reason == newtExitStruct::NEWT_EXIT_ERROR) {
        return {NEWT_KEY_ERROR};
    }
    const NewtInput input = end.reason == newtExitStruct::NEWT_EXIT_COMPONENT
                                ? NewtInput{0, Focus()}
                                : NewtInput{end.u.key, PressedBy(end.u.key)};
    if (input.pressed) {
        newtFormSetCurrent(form_, controls_[*input.pressed]);
        ShowExplanation();
    }
    return input;
}

// The screen may have changed while nobody watched it.
bool NewtForm::IsOutgrown() const {
    winsize screen{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &screen) == 0 && screen.ws_col != 0 &&
           (screen.ws_col != columns_ || screen.ws_row != rows_);
}

std::optional<std::size_t> NewtForm::Focus() const {
    const newtComponent current = newtFormGetCurrent(form_);
    const auto found = std::ranges::find_if(buttons_, [&](std::size_t button) { return controls_[button] == current; });
    return found == buttons_.end() ? std::nullopt : std::optional(*found);
}

newtComponent NewtForm::NewButton(std::size_t number) const {
    std::string caption = ShownText(dialog_.controls[buttons_[number]].design.caption);
    if (!dialog_.isBox) {
        int columns = 0;
        for (const std::size_t button : buttons_) {
            columns = std::max(columns, Columns(ShownText(dialog_.controls[button].design.caption)));
        }
        caption = std::to_string(number + 1) + " " + Padded(caption, columns);
    }
    return roomy_ ? newtButton(-1, -1, caption.c_str()) : newtCompactButton(-1, -1, caption.c_str());
}

// A label as large as its text, up to these rows. A longer text is scrolled.
newtComponent NewtForm::NewLabel(const DialogControl& label, int rows) const {
    constexpr int mostColumns = 60;
    constexpr int scrollbarColumns = 2;
    const int columns = std::min(columns_ - 6, mostColumns);
    const std::vector<std::string> lines = Wrapped(label.design.caption, columns);
    const auto height = static_cast<int>(lines.size());
    int width = 0;
    std::ranges::for_each(lines, [&](const std::string& line) { width = std::max(width, Columns(line)); });
    const bool scrolls = height > rows;
    const newtComponent box = newtTextbox(-1, -1, scrolls ? columns - scrollbarColumns : width, std::min(height, rows),
                                          NEWT_FLAG_WRAP | (scrolls ? NEWT_FLAG_SCROLL : 0));
    newtTextboxSetText(box, ShownText(label.design.caption).c_str());
    if (label.background && label.text) {
        const int background = ColourNumber(*label.background);
        const int front = ColourNumber(*label.text);
        // newt's number for a pair of colours. Each pair has one of its own, so that no dialog changes another's.
        const int colours = NEWT_COLORSET_CUSTOM(background * 8 + front);
        newtSetColor(colours, ColourName(front), ColourName(background));
        newtTextboxSetColors(box, colours, colours);
    }
    return box;
}

// A label that fills the window up to these rows. The line of its first failure is marked, and scrolled to the middle.
newtComponent NewtForm::NewReport(const DialogControl& label, int rows) const {
    const int columns = columns_ - 4;  // frame and margin on both sides
    char* const background = ColourName(ColourNumber(label.background.value_or(0)));
    char* const text = ColourName(ColourNumber(label.text.value_or(0)));
    newtSetColor(NEWT_COLORSET_LISTBOX, text, background);
    newtSetColor(NEWT_COLORSET_ACTSELLISTBOX, background, text);
    const newtComponent box = newtListbox(-1, -1, rows, NEWT_FLAG_SCROLL);
    const std::vector<std::string> lines = Wrapped(label.design.caption, columns - 3);
    for (const std::string& line : lines) {
        newtListboxAppendEntry(box, line.c_str(), nullptr);
    }
    newtListboxSetWidth(box, columns);
    const auto failure = std::ranges::find_if(
        lines, [](const std::string& line) { return line.find(FailureMark) != std::string::npos; });
    const auto marked = failure == lines.end() ? 0 : static_cast<int>(failure - lines.begin());
    newtListboxSetCurrent(box, std::min(marked + rows / 2, static_cast<int>(lines.size()) - 1));
    newtListboxSetCurrent(box, marked);
    return box;
}

// The longest label comes last, and has the rows that the others leave.
void NewtForm::CreateControls() {
    controls_.resize(dialog_.controls.size());
    std::multimap<std::size_t, std::size_t> labels;  // by their length
    for (std::size_t control = 0; control < controls_.size(); ++control) {
        const Control& design = dialog_.controls[control].design;
        if (design.kind == ControlKind::Label && design.visible) {
            labels.emplace(design.caption.size(), control);
        }
    }
    for (std::size_t number = 0; number < buttons_.size(); ++number) {
        controls_[buttons_[number]] = NewButton(number);
    }
    int left = rows_ - HelpRows - explanationRows_ - FrameRows - (buttons_.empty() ? 0 : roomy_ ? 5 : 1);
    for (const auto& [length, label] : labels) {
        const DialogControl& design = dialog_.controls[label];
        controls_[label] = dialog_.sizable && design.background ? NewReport(design, std::max(left, 1))
                                                                : NewLabel(design, std::max(left, 1));
        int width = 0;
        int height = 0;
        newtComponentGetSize(controls_[label], &width, &height);
        left -= height;
    }
}

// The controls from top to bottom, and side by side those that begin at one height.
newtGrid NewtForm::Arranged() const {
    std::map<std::int32_t, std::map<std::int32_t, std::size_t>> lines;
    for (std::size_t control = 0; control < controls_.size(); ++control) {
        if (controls_[control] != nullptr) {
            const Rectangle& place = dialog_.controls[control].design.bounds;
            lines[place.top][place.left] = control;
        }
    }
    const newtGrid grid = newtCreateGrid(1, static_cast<int>(lines.size()));
    int row = 0;
    for (const auto& [top, line] : lines) {
        const newtGrid fields = newtCreateGrid(static_cast<int>(line.size()), 1);
        int column = 0;
        for (const auto& [left, control] : line) {
            newtGridSetField(fields, column, 0, NEWT_GRID_COMPONENT, controls_[control], column == 0 ? 0 : 2, 0, 0, 0,
                             0, 0);
            ++column;
        }
        const bool isLabel = dialog_.controls[line.begin()->second].design.kind == ControlKind::Label;
        newtGridSetField(grid, 0, row, NEWT_GRID_SUBGRID, fields, 0, dialog_.isBox && !isLabel && roomy_ ? 1 : 0, 0, 0,
                         isLabel ? NEWT_ANCHOR_LEFT : 0, 0);
        ++row;
    }
    return grid;
}

void NewtForm::OpenWindow() {
    const newtGrid grid = Arranged();
    int width = 0;
    int height = 0;
    newtGridGetSize(grid, &width, &height);
    const std::string caption = ShownText(dialog_.caption);
    const int margin = dialog_.sizable ? 1 : 2;
    const int columns = std::max(width, std::min(Columns(caption), columns_ - 8)) + 2 * margin;
    const int above = roomy_ && !dialog_.sizable ? 1 : 0;
    newtOpenWindow((columns_ - columns) / 2, std::max((rows_ - HelpRows - explanationRows_ - height - above) / 2, 1),
                   static_cast<unsigned>(columns), static_cast<unsigned>(height + above), caption.c_str());
    newtGridPlace(grid, (columns - width) / 2, above);
    newtGridFree(grid, 1);
}

void NewtForm::AddKeys() {
    for (const int key : {int{NEWT_KEY_ESCAPE}, NEWT_KEY_RESIZE, KeyInterrupt}) {
        newtFormAddHotKey(form_, key);
    }
    for (int key = ' ' + 1; key < 0x7F; ++key) {
        if (PressedBy(key)) {
            newtFormAddHotKey(form_, key);
        }
    }
}

// A button is pressed by its number and by its first letter.
std::optional<std::size_t> NewtForm::PressedBy(int key) const {
    int number = '1';
    for (const std::size_t button : buttons_) {
        const char16_t first = dialog_.controls[button].design.caption.front();
        if (key == number++ || (key < 0x80 && std::toupper(key) == first)) {
            return button;
        }
    }
    return std::nullopt;
}

void NewtForm::FocusMoved(newtComponent /*form*/, void* self) {
    static_cast<const NewtForm*>(self)->ShowExplanation();
}

// What there is to tell of the window, or of the button that has the focus, in the rows above the help line.
void NewtForm::ShowExplanation() const {
    std::u16string explanation;
    if (const auto focus = Focus()) {
        explanation = dialog_.controls[*focus].toolTip;
    } else if (const auto copied = ClipboardFile()) {
        explanation = u"Kopiert nach " + copied->u16string();
    }
    std::vector<std::string> lines = Wrapped(explanation, columns_ - 2);
    lines.resize(static_cast<std::size_t>(explanationRows_));
    int row = rows_ - HelpRows - explanationRows_;
    for (const std::string& line : lines) {
        newtDrawRootText(0, row++, Padded(" " + line, columns_).c_str());
    }
}

}  // namespace platform::host
