#include "platform/host/console/NewtForm.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <csignal>
#include <utility>

#include "platform/host/console/Clipboard.h"

namespace platform::host {

namespace {

constexpr int FrameRows = 2;
constexpr int HelpRows = 1;
constexpr int MostExplanationRows = 3;
constexpr int KeyBlank = ' ';

std::string Centred(const std::string& text, int columns) {
    const int blanks = std::max(columns - Columns(text), 0);
    return std::string(static_cast<std::size_t>(blanks / 2), ' ') + text +
           std::string(static_cast<std::size_t>(blanks - blanks / 2), ' ');
}

// Twips to the cell.
struct Scale {
    double column;
    double row;
};

int Cells(std::int32_t length, double twips) {
    return static_cast<int>(std::lround(length / twips));
}

CellArea AreaOf(const Rectangle& place, const Scale& scale) {
    const int left = Cells(place.left, scale.column);
    const int top = Cells(place.top, scale.row);
    return {left, top, std::max(Cells(place.left + place.width, scale.column) - left, 1),
            std::max(Cells(place.top + place.height, scale.row) - top, 1)};
}

struct sigaction resizeHandler {};

// The mouse support of newt takes its watch for a new screen size away at the end of each run of a form.
void WatchResize() {
    sigaction(SIGWINCH, &resizeHandler, nullptr);
}

// A row of the screen behind the windows.
void ShowBackground(int row, std::string text, int screenColumns) {
    text.resize(text.size() + static_cast<std::size_t>(std::max(screenColumns - Columns(text), 0)), ' ');
    newtDrawRootText(0, row, text.c_str());
}

}  // namespace

void KeepResizeHandler() {
    sigaction(SIGWINCH, nullptr, &resizeHandler);
}

NewtForm::NewtForm(const Dialog& dialog, std::optional<std::size_t> focus)
    : dialog_(dialog), form_(newtForm(nullptr, nullptr, NEWT_FLAG_NOF12)) {
    newtGetScreenSize(&columns_, &rows_);
    roomy_ = columns_ >= 60 && rows_ >= 22;
    // A box covers what the window below has explained.
    for (int row = 1; row <= MostExplanationRows; ++row) {
        ShowBackground(rows_ - HelpRows - row, "", columns_);
    }
    if (dialog.client) {
        explanationRows_ = roomy_ && !ButtonsOf(dialog).empty() ? MostExplanationRows : 1;
        WindowFill();
    } else {
        BoxFill();
    }
    AddKeys();
    newtComponentAddCallback(form_, FocusMoved, this);
    for (const Button& button : buttons_) {
        if (button.control == focus.value_or(buttons_.front().control)) {
            newtFormSetCurrent(form_, button.component);
        }
    }
    newtPushHelpLine(HelpLine().c_str());
}

NewtForm::~NewtForm() {
    newtPopHelpLine();
    newtFormDestroy(form_);
    newtPopWindow();
}

NewtInput NewtForm::Run() {
    for (;;) {
        WatchResize();
        if (IsOutgrown()) {
            return {NEWT_KEY_RESIZE};
        }
        ExplanationShow();
        newtExitStruct end{};
        newtFormRun(form_, &end);
        if (end.reason == newtExitStruct::NEWT_EXIT_ERROR) {
            return {NEWT_KEY_ERROR};
        }
        if (end.reason == newtExitStruct::NEWT_EXIT_COMPONENT) {
            return {0, Focus()};
        }
        if (const auto pressed = PressedBy(end.u.key)) {
            return {0, pressed};
        }
        if (!Scrolled(end.u.key)) {
            return {end.u.key};
        }
    }
}

// The screen may have changed while nobody watched it.
bool NewtForm::IsOutgrown() const {
    winsize screen{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &screen) == 0 && screen.ws_col != 0 &&
           (screen.ws_col != columns_ || screen.ws_row != rows_);
}

std::optional<std::size_t> NewtForm::Focus() const {
    const newtComponent current = newtFormGetCurrent(form_);
    const auto found =
        std::ranges::find_if(buttons_, [&](const Button& button) { return button.component == current; });
    return found == buttons_.end() ? std::nullopt : std::optional(found->control);
}

std::u16string NewtForm::Explanation() const {
    if (const auto focus = Focus()) {
        return dialog_.controls[*focus].toolTip;
    }
    const auto copied = dialog_.client ? ClipboardFile() : std::nullopt;
    return copied ? u"Kopiert nach " + copied->u16string() : u"";
}

// The places of the design, to the scale of the terminal.
void NewtForm::WindowFill() {
    const Size client = *dialog_.client;
    const int mostRows = rows_ - HelpRows - explanationRows_ - FrameRows;
    Scale scale = roomy_ ? Scale{80, 150} : Scale{100, 300};  // a button with a border takes three rows
    if (dialog_.sizable) {
        scale = {client.width / (columns_ - 2.0), client.height / std::max(1.0, mostRows * 1.0)};
    }
    const int width = Cells(client.width, scale.column);
    const int height = Cells(client.height, scale.row);
    newtOpenWindow(std::max((columns_ - width) / 2, 1), std::max((mostRows - height) / 2, 0) + 1,
                   static_cast<unsigned>(width), static_cast<unsigned>(height), ShownText(dialog_.caption).c_str());
    int captionColumns = 0;
    for (const std::size_t button : ButtonsOf(dialog_)) {
        captionColumns = std::max(captionColumns, Columns(ShownText(dialog_.controls[button].design.caption)) + 2);
    }
    for (std::size_t control = 0; control < dialog_.controls.size(); ++control) {
        const DialogControl& found = dialog_.controls[control];
        const CellArea area = AreaOf(found.design.place, scale);
        if (found.design.kind == ControlKind::Button) {
            const std::string text = std::to_string(buttons_.size() + 1) + " " + ShownText(found.design.caption);
            newtFormAddComponent(form_, AddButton(control, Centred(text, captionColumns), area.left, area.top));
        } else if (found.design.visible) {
            labels_.push_back(std::make_unique<NewtLabel>(
                form_, found,
                area.height > 1 ? area : CellArea{area.left, area.top, width - area.left, height - area.top}));
            scrolled_ = labels_.back()->Scrolls() ? labels_.back().get() : scrolled_;
        }
    }
}

// One label below the other, and the buttons in a row below them.
void NewtForm::BoxFill() {
    const std::vector<std::size_t> buttons = ButtonsOf(dialog_);
    const auto labels = static_cast<int>(dialog_.controls.size() - buttons.size());
    const int margin = roomy_ ? 1 : 0;
    const int buttonRows = roomy_ ? 4 : 1;
    const int mostRows = std::max(rows_ - HelpRows - FrameRows - margin - labels - buttonRows, 1);
    const newtGrid grid = newtCreateGrid(1, labels + 1);
    const newtGrid row = newtCreateGrid(static_cast<int>(buttons.size()), 1);
    int field = 0;
    for (const DialogControl& control : dialog_.controls) {
        if (control.design.kind == ControlKind::Label) {
            newtGridSetField(grid, 0, field++, NEWT_GRID_COMPONENT, WrappedLabel(control, columns_ - 6, mostRows), 0, 0,
                             0, 0, NEWT_ANCHOR_LEFT, 0);
        }
    }
    newtGridSetField(grid, 0, field, NEWT_GRID_SUBGRID, row, 0, 1, 0, 0, 0, NEWT_GRID_FLAG_GROWX);
    field = 0;
    for (const std::size_t button : buttons) {
        const newtComponent component = AddButton(button, ShownText(dialog_.controls[button].design.caption), -1, -1);
        newtGridSetField(row, field, 0, NEWT_GRID_COMPONENT, component, field == 0 ? 0 : 2, 0, 0, 0, 0, 0);
        ++field;
    }
    int width = 0;
    int height = 0;
    newtGridGetSize(grid, &width, &height);
    const std::string caption = FirstColumns(ShownText(dialog_.caption), columns_ - 8);
    const int columns = std::max(width, Columns(caption)) + 4;
    newtOpenWindow((columns_ - columns) / 2, std::max((rows_ - HelpRows - height) / 2, 1),
                   static_cast<unsigned>(columns), static_cast<unsigned>(height + margin), caption.c_str());
    newtGridPlace(grid, (columns - width) / 2, margin);
    newtGridAddComponentsToForm(grid, form_, 1);
    newtGridFree(grid, 1);
}

newtComponent NewtForm::AddButton(std::size_t control, const std::string& text, int column, int row) {
    const newtComponent button =
        roomy_ ? newtButton(column, row, text.c_str()) : newtCompactButton(column, row, text.c_str());
    buttons_.push_back({control, button});
    return button;
}

void NewtForm::AddKeys() {
    for (const int key : {int{NEWT_KEY_ESCAPE}, NEWT_KEY_RESIZE, KeyInterrupt, KeyRedraw}) {
        newtFormAddHotKey(form_, key);
    }
    for (int key = KeyBlank + 1; key < 0x7F; ++key) {
        if (PressedBy(key)) {
            newtFormAddHotKey(form_, key);
        }
    }
    if (scrolled_ != nullptr) {
        for (const int key : {NEWT_KEY_UP, NEWT_KEY_DOWN, NEWT_KEY_PGUP, NEWT_KEY_PGDN, NEWT_KEY_HOME, NEWT_KEY_END}) {
            newtFormAddHotKey(form_, key);
        }
    }
}

// A button is pressed by its number and by its first letter.
std::optional<std::size_t> NewtForm::PressedBy(int key) const {
    int number = '1';
    for (const Button& button : buttons_) {
        const char16_t first = dialog_.controls[button.control].design.caption.substr(0, 1).front();
        if (key == number || (key < 0x80 && std::toupper(key) == first)) {
            return button.control;
        }
        ++number;
    }
    return std::nullopt;
}

// False for a key that has nothing to do with scrolling.
bool NewtForm::Scrolled(int key) {
    constexpr int wholeText = 100000;
    if (scrolled_ == nullptr) {
        return false;
    }
    const int page = std::max(scrolled_->Rows() - 1, 1);
    const std::array<std::pair<int, int>, 6> steps{{{NEWT_KEY_UP, -1},
                                                    {NEWT_KEY_DOWN, 1},
                                                    {NEWT_KEY_PGUP, -page},
                                                    {NEWT_KEY_PGDN, page},
                                                    {NEWT_KEY_HOME, -wholeText},
                                                    {NEWT_KEY_END, wholeText}}};
    const auto* const step = std::ranges::find(steps, key, &std::pair<int, int>::first);
    if (step == steps.end()) {
        return false;
    }
    scrolled_->Scroll(step->second);
    return true;
}

void NewtForm::FocusMoved(newtComponent /*form*/, void* self) {
    static_cast<const NewtForm*>(self)->ExplanationShow();
}

// In the rows above the help line, as far as they hold it.
void NewtForm::ExplanationShow() const {
    const auto rows = static_cast<std::size_t>(explanationRows_);
    const int width = std::max(columns_ - 4, 1);
    std::vector<std::string> lines = WrappedLines(ShownText(Explanation()), width);
    if (lines.size() > rows && rows > 0) {
        lines[rows - 1] = FirstColumns(lines[rows - 1] + " " + lines[rows], width - 1) + "…";
    }
    lines.resize(rows);
    int row = rows_ - HelpRows - explanationRows_;
    for (const std::string& line : lines) {
        ShowBackground(row++, " " + line, columns_);
    }
}

std::string NewtForm::HelpLine() const {
    const std::string end = dialog_.client ? "Esc Ende" : "Esc Zurück";
    if (buttons_.empty()) {
        return " Pfeile, Bild auf/ab Blättern  " + end;
    }
    const std::string help = " Tab Wählen  Enter Drücken  " + end;
    const std::string more = "  Ziffer, Anfangsbuchstabe Sofort";
    return Columns(help + more) < columns_ ? help + more : help;
}

}  // namespace platform::host
