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
constexpr int KeyBlank = ' ';
constexpr int ShadowRows = 1;
constexpr int GapColumns = 2;  // between two buttons in a row

// Where the terminal has room a button has a border and a shadow.
int ButtonRows(bool roomy) {
    return roomy ? 4 : 1;
}

int ButtonColumns(const std::string& text, bool roomy) {
    return Columns(text) + (roomy ? 4 : 3);
}

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

int MostExplanationRows(int screenRows) {
    return screenRows < 20 ? 1 : 3;
}

int ExplanationColumns(int screenColumns) {
    return std::max(screenColumns - 8, 1);
}

struct sigaction resizeHandler {};

// The mouse support of newt takes its watch for a new screen size away at the end of each run of a form.
void WatchResize() {
    sigaction(SIGWINCH, &resizeHandler, nullptr);
}

// A row of the screen behind the windows.
void BackgroundShow(int row, std::string text, int screenColumns) {
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
    ExplanationErase();
    if (dialog.client) {
        WindowFill();
    } else {
        BoxFill();
    }
    KeysAdd();
    newtComponentAddCallback(form_, FocusMoved, this);
    for (const Button& button : buttons_) {
        if (button.control == focus) {
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
    const int mostRows = rows_ - HelpRows - ExplanationRows() - FrameRows;
    Scale scale{80, 150};  // room for buttons with a border
    bool roomy = client.width / scale.column < columns_ - 4 && client.height / scale.row < mostRows;
    if (dialog_.sizable) {
        scale = {client.width / (columns_ - 2.0), client.height / std::max(1.0, mostRows * 1.0)};
    } else if (!roomy) {
        scale = {100, 300};
    }
    const int width = Cells(client.width, scale.column);
    const int height = Cells(client.height, scale.row);
    newtOpenWindow(std::max((columns_ - width) / 2, 1), std::max((mostRows - height) / 2, 0) + 1,
                   static_cast<unsigned>(width), static_cast<unsigned>(height), ShownText(dialog_.caption).c_str());
    int captionColumns = 0;
    for (const std::size_t button : ButtonsOf(dialog_)) {
        captionColumns = std::max(captionColumns, Columns(ShownText(dialog_.controls[button].design.caption)) + 2);
    }
    std::size_t number = 0;
    for (std::size_t control = 0; control < dialog_.controls.size(); ++control) {
        const DialogControl& found = dialog_.controls[control];
        const CellArea area = AreaOf(found.design.place, scale);
        if (found.design.kind == ControlKind::Button) {
            const std::string text = std::to_string(++number) + " " + ShownText(found.design.caption);
            ButtonAdd(control, Centred(text, captionColumns), area.left, area.top, roomy);
        } else if (found.design.visible) {
            LabelAdd(found,
                     area.height > 1 ? area : CellArea{area.left, area.top, width - area.left, height - area.top});
        }
    }
}

// One label below the other, and the buttons in a row below them.
void NewtForm::BoxFill() {
    const bool roomy = rows_ >= 20 && columns_ >= 60;
    const int margin = roomy ? 3 : 1;
    const int mostColumns = std::max(std::min(columns_ - 4, 66) - 2 * margin, 1);
    const int endOfText = rows_ - HelpRows - FrameRows - ShadowRows - ButtonRows(roomy) - 1;
    const std::string caption = ShownText(dialog_.caption);
    int columns = std::max(BoxButtonColumns(roomy), std::min(Columns(caption) + 4, mostColumns));
    int row = roomy ? 1 : 0;
    std::vector<std::pair<const DialogControl*, CellArea>> labels;
    for (const DialogControl& control : dialog_.controls) {
        if (control.design.kind == ControlKind::Label) {
            const TextSize text = WrappedSize(ShownText(control.design.caption), mostColumns);
            const int height = std::clamp(text.rows, 1, std::max(endOfText - row, 1));
            labels.emplace_back(&control,
                                CellArea{margin, row, height < text.rows ? mostColumns : text.columns, height});
            columns = std::max(columns, labels.back().second.width);
            row += height;
        }
    }
    const int width = columns + 2 * margin;
    const int height = row + 1 + ButtonRows(roomy);
    newtOpenWindow(std::max((columns_ - width) / 2, 1), std::max((rows_ - HelpRows - height) / 2, 1),
                   static_cast<unsigned>(width), static_cast<unsigned>(height), caption.c_str());
    int column = (width - BoxButtonColumns(roomy)) / 2;
    for (const std::size_t button : ButtonsOf(dialog_)) {
        const std::string text = ShownText(dialog_.controls[button].design.caption);
        ButtonAdd(button, text, column, row + 1, roomy);
        column += ButtonColumns(text, roomy) + GapColumns;
    }
    for (const auto& [label, area] : labels) {
        LabelAdd(*label, area);
    }
}

int NewtForm::BoxButtonColumns(bool roomy) const {
    int columns = -GapColumns;
    for (const std::size_t button : ButtonsOf(dialog_)) {
        columns += ButtonColumns(ShownText(dialog_.controls[button].design.caption), roomy) + GapColumns;
    }
    return columns;
}

void NewtForm::LabelAdd(const DialogControl& label, const CellArea& area) {
    labels_.push_back(std::make_unique<NewtLabel>(form_, label, area));
    if (labels_.back()->Scrolls()) {
        scrolled_ = labels_.back().get();
    }
}

void NewtForm::ButtonAdd(std::size_t control, const std::string& text, int column, int row, bool roomy) {
    const newtComponent button =
        roomy ? newtButton(column, row, text.c_str()) : newtCompactButton(column, row, text.c_str());
    newtFormAddComponent(form_, button);
    buttons_.push_back({control, button});
}

void NewtForm::KeysAdd() {
    for (const int key : {int{NEWT_KEY_ESCAPE}, NEWT_KEY_RESIZE, NEWT_KEY_F1, KeyInterrupt, KeyRedraw}) {
        newtFormAddHotKey(form_, key);
    }
    for (int key = KeyBlank + 1; key < 0x7F; ++key) {
        if (PressedBy(key)) {
            newtFormAddHotKey(form_, key);
        }
    }
    if (scrolled_ != nullptr) {
        for (const int key : {NEWT_KEY_PGUP, NEWT_KEY_PGDN, NEWT_KEY_HOME, NEWT_KEY_END}) {
            newtFormAddHotKey(form_, key);
        }
    }
    if (scrolled_ != nullptr && buttons_.empty()) {
        newtFormAddHotKey(form_, NEWT_KEY_UP);
        newtFormAddHotKey(form_, NEWT_KEY_DOWN);
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

// Takes away what the dialog below has explained.
void NewtForm::ExplanationErase() const {
    for (int row = 0; row < MostExplanationRows(rows_); ++row) {
        BackgroundShow(rows_ - HelpRows - 1 - row, "", columns_);
    }
}

// In the rows above the help line. Where they do not hold it, F1 shows the whole.
void NewtForm::ExplanationShow() const {
    const auto rows = static_cast<std::size_t>(ExplanationRows());
    std::vector<std::string> lines = WrappedLines(ShownText(Explanation()), ExplanationColumns(columns_));
    if (lines.size() > rows && rows > 0) {
        lines[rows - 1] = FirstColumns(lines[rows - 1] + " " + lines[rows], ExplanationColumns(columns_)) + "… F1";
    }
    lines.resize(rows);
    int row = rows_ - HelpRows - static_cast<int>(rows);
    for (const std::string& line : lines) {
        BackgroundShow(row++, " " + line, columns_);
    }
}

// As many as the longest explanation takes, as far as the screen has room.
int NewtForm::ExplanationRows() const {
    std::vector<std::u16string> explanations{Explanation()};
    for (const DialogControl& control : dialog_.controls) {
        explanations.push_back(control.toolTip);
    }
    int rows = 0;
    for (const std::u16string& explanation : explanations) {
        rows = std::max(rows, WrappedSize(ShownText(explanation), ExplanationColumns(columns_)).rows);
    }
    return std::min(rows, MostExplanationRows(rows_));
}

// How to move, as far as there is room for it.
std::string NewtForm::HelpLine() const {
    std::vector<std::string> parts;
    if (scrolled_ != nullptr) {
        parts.emplace_back(buttons_.empty() ? "Pfeile, Bild auf/ab Blättern" : "Bild auf/ab Blättern");
    }
    if (buttons_.size() > 1) {
        parts.emplace_back("Tab Wählen");
    }
    if (!buttons_.empty()) {
        parts.emplace_back("Enter Drücken");
    }
    parts.emplace_back(dialog_.client ? "Esc Ende" : "Esc Zurück");
    if (ExplanationRows() > 0) {
        parts.emplace_back("F1 Erklärung");
    }
    if (buttons_.size() > 1) {
        parts.emplace_back("Ziffer, Anfangsbuchstabe Sofort");
    }
    std::string line;
    for (const std::string& part : parts) {
        if (Columns(line + part) + 2 < columns_) {
            line += (line.empty() ? " " : "  ") + part;
        }
    }
    return line;
}

}  // namespace platform::host
