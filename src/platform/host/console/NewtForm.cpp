#include "platform/host/console/NewtForm.h"

#include <slang.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <map>
#include <memory>
#include <sstream>

#include "platform/host/Unicode.h"
#include "platform/host/console/Terminal.h"

namespace platform::host {

namespace {

constexpr int FrameRows = 2;
constexpr int HelpRows = 1;
constexpr int ScrollbarColumns = 2;

int Columns(const std::string& line) {
    return static_cast<int>(FromUtf8(line).size());
}

std::string Padded(std::string line, int columns) {
    line.append(static_cast<std::size_t>(std::max(columns - Columns(line), 0)), ' ');
    return line;
}

// Splits a string into lines, breaking at spaces.
std::vector<std::string> Wrapped(const std::u16string& text, int columns) {
    std::string whole = DisplayText(text);
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

// Returns the index of the nearest of the eight terminal colours.
int ColourNumber(Colour colour) {
    const auto bright = [&](unsigned shift) { return (static_cast<unsigned>(colour) >> shift & 0xFFU) >= 0x80; };
    return (bright(0) ? 1 : 0) + (bright(8) ? 2 : 0) + (bright(16) ? 4 : 0);
}

char* ColourName(int number) {
    static std::array<std::string, 8> names{"black", "red", "green", "brown", "blue", "magenta", "cyan", "white"};
    return names.at(static_cast<std::size_t>(number)).data();
}

}  // namespace

NewtForm::NewtForm(const Dialog& dialog, std::optional<std::size_t> focus, bool endsProgram)
    : dialog_(dialog), buttons_(ButtonsOf(dialog)), form_(newtForm(nullptr, nullptr, NEWT_FLAG_NOF12)) {
    newtGetScreenSize(&columns_, &rows_);
    roomy_ = columns_ >= 60 && rows_ >= 22;
    const auto noteRows = static_cast<int>(Wrapped(dialog.note, columns_ - 2).size());
    toolTipRows_ = dialog.isBox ? 0 : buttons_.empty() ? noteRows : 4;
    CreateControls();
    OpenWindow();
    AddKeys();
    // newt calls this whenever a control gets the focus, and at the start of each newtFormRun.
    const auto focusMoved = [](newtComponent /*form*/, void* self) {
        static_cast<const NewtForm*>(self)->ShowToolTip();
    };
    newtComponentAddCallback(form_, focusMoved, this);
    if (!buttons_.empty()) {
        newtFormSetCurrent(form_, controls_[focus.value_or(buttons_.front())]);
    }
    newtPushHelpLine(HelpLine(endsProgram).c_str());
    newtDrawForm(form_);
}

NewtForm::~NewtForm() {
    newtPopHelpLine();
    newtFormDestroy(form_);
    newtPopWindow();
}

std::pair<int, std::optional<std::size_t>> NewtForm::Run() {
    WatchScreenSize();
    winsize screen{};  // the terminal may have been resized while newt wasn't watching
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &screen) == 0 && screen.ws_col != 0 &&
        (screen.ws_col != columns_ || screen.ws_row != rows_)) {
        return {NEWT_KEY_RESIZE, std::nullopt};
    }
    const int key = NextKey();
    const bool pressesFocus = key == NEWT_KEY_RETURN || key == ' ';
    const std::optional<std::size_t> pressed = pressesFocus ? Focus() : ButtonFor(key);
    if (const auto focus = pressed ? pressed : Neighbour(key)) {
        newtFormSetCurrent(form_, controls_[*focus]);
    }
    return {key, pressed};
}

// Waits for a key. Returns Enter if newt reports that a button was activated.
int NewtForm::NextKey() const {
    // If a key follows Escape within half a second, newt puts that key back into the buffer, but doesn't read the
    // buffer until yet another key is pressed.
    int unread = 0;
    if (SLang_Input_Buffer_Len > 0 && ioctl(STDIN_FILENO, FIONREAD, &unread) == 0 && unread == 0) {
        return static_cast<int>(SLang_getkey());
    }
    newtExitStruct end{};
    newtFormRun(form_, &end);
    return end.reason == newtExitStruct::NEWT_EXIT_HOTKEY      ? end.u.key
           : end.reason == newtExitStruct::NEWT_EXIT_COMPONENT ? NEWT_KEY_RETURN
                                                               : NEWT_KEY_ERROR;
}

std::optional<std::size_t> NewtForm::Focus() const {
    const newtComponent current = newtFormGetCurrent(form_);
    const auto found = std::ranges::find_if(buttons_, [&](std::size_t button) { return controls_[button] == current; });
    return found == buttons_.end() ? std::nullopt : std::optional(*found);
}

newtComponent NewtForm::CreateButton(std::size_t number) const {
    std::string caption = DisplayText(dialog_.controls[buttons_[number]].caption);
    if (!dialog_.isBox) {
        const auto columns = [&](std::size_t button) { return Columns(DisplayText(dialog_.controls[button].caption)); };
        const int width = columns(std::ranges::max(buttons_, {}, columns));
        caption = std::to_string(number + 1) + " " + Padded(caption, width);
    }
    return roomy_ ? newtButton(-1, -1, caption.c_str()) : newtCompactButton(-1, -1, caption.c_str());
}

// Creates a label sized to fit its text. If the text has more than `maxRows` rows, the label scrolls.
newtComponent NewtForm::CreateLabel(const DialogControl& label, int maxRows) {
    const int columns = std::min(columns_ - 6, 60);
    const std::vector<std::string> lines = Wrapped(label.caption, columns);
    const auto height = static_cast<int>(lines.size());
    const int width = lines.empty() ? 0 : Columns(std::ranges::max(lines, {}, Columns));
    const bool scrolls = height > maxRows;
    const newtComponent box = newtTextbox(-1, -1, scrolls ? columns - ScrollbarColumns : width,
                                          std::min(height, maxRows), NEWT_FLAG_WRAP | (scrolls ? NEWT_FLAG_SCROLL : 0));
    scrolls_ = scrolls_ || scrolls;
    newtTextboxSetText(box, DisplayText(label.caption).c_str());
    if (label.background && label.text) {
        const int background = ColourNumber(*label.background);
        const int front = ColourNumber(*label.text);
        // Each pair of colours needs its own colour set, because all dialogs share the sets.
        const int colours = NEWT_COLORSET_CUSTOM(background * 8 + front);
        newtSetColor(colours, ColourName(front), ColourName(background));
        newtTextboxSetColors(box, colours, colours);
    }
    return box;
}

// Creates a scrolling list of the label's lines. Highlights the first failure and scrolls it to the middle.
newtComponent NewtForm::CreateReport(const DialogControl& label, int maxRows) {
    const int columns = columns_ - 4;  // text width without frame and margins
    char* const background = ColourName(ColourNumber(label.background.value_or(0)));
    char* const text = ColourName(ColourNumber(label.text.value_or(0)));
    newtSetColor(NEWT_COLORSET_LISTBOX, text, background);
    newtSetColor(NEWT_COLORSET_ACTSELLISTBOX, background, text);
    const newtComponent box = newtListbox(-1, -1, maxRows, NEWT_FLAG_SCROLL);
    const std::vector<std::string> lines = Wrapped(label.caption, columns - 3);
    for (const std::string& line : lines) {
        newtListboxAppendEntry(box, line.c_str(), nullptr);
    }
    newtListboxSetWidth(box, columns);
    scrolls_ = static_cast<int>(lines.size()) > maxRows;
    const auto isFailure = [](const std::string& line) { return line.find("***") != std::string::npos; };
    const auto failure = std::ranges::find_if(lines, isFailure);
    const auto marked = failure == lines.end() ? 0 : static_cast<int>(failure - lines.begin());
    newtListboxSetCurrent(box, std::min(marked + maxRows / 2, static_cast<int>(lines.size()) - 1));
    newtListboxSetCurrent(box, marked);
    return box;
}

// Creates the report last, because it fills the rows that remain.
void NewtForm::CreateControls() {
    controls_.resize(dialog_.controls.size());
    for (std::size_t number = 0; number < buttons_.size(); ++number) {
        controls_[buttons_[number]] = CreateButton(number);
        newtFormAddComponent(form_, controls_[buttons_[number]]);
    }
    int remaining = rows_ - HelpRows - toolTipRows_ - FrameRows - (buttons_.empty() ? 0 : roomy_ ? 5 : 1);
    for (const bool reports : {false, true}) {
        for (std::size_t index = 0; index < controls_.size(); ++index) {
            const DialogControl& control = dialog_.controls[index];
            const bool isReport = dialog_.sizable && control.background;
            if (control.kind == ControlKind::Label && control.visible && isReport == reports) {
                const int maxRows = std::max(remaining, 1);
                controls_[index] = isReport ? CreateReport(control, maxRows) : CreateLabel(control, maxRows);
                newtFormAddComponent(form_, controls_[index]);
                int width = 0;
                int height = 0;
                newtComponentGetSize(controls_[index], &width, &height);
                remaining -= height;
            }
        }
    }
}

// Arranges controls with the same top position in a row, and the rows from top to bottom.
newtGrid NewtForm::ArrangeControls() const {
    std::map<std::int32_t, std::map<std::int32_t, std::size_t>> lines;
    for (std::size_t control = 0; control < controls_.size(); ++control) {
        if (controls_[control] != nullptr) {
            const Rectangle& bounds = dialog_.controls[control].bounds;
            lines[bounds.top][bounds.left] = control;
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
        const bool isLabel = dialog_.controls[line.begin()->second].kind == ControlKind::Label;
        newtGridSetField(grid, 0, row++, NEWT_GRID_SUBGRID, fields, 0, dialog_.isBox && !isLabel && roomy_ ? 1 : 0, 0,
                         0, isLabel ? NEWT_ANCHOR_LEFT : 0, 0);
    }
    return grid;
}

void NewtForm::OpenWindow() {
    const newtGrid grid = ArrangeControls();
    int width = 0;
    int height = 0;
    newtGridGetSize(grid, &width, &height);
    const std::string caption = DisplayText(dialog_.caption);
    const int margin = dialog_.sizable ? 1 : 2;
    const int columns = std::max(width, std::min(Columns(caption), columns_ - 8)) + 2 * margin;
    const int above = roomy_ && !dialog_.sizable ? 1 : 0;
    newtOpenWindow((columns_ - columns) / 2, std::max((rows_ - HelpRows - toolTipRows_ - height - above) / 2, 1),
                   static_cast<unsigned>(columns), static_cast<unsigned>(height + above), caption.c_str());
    newtGridPlace(grid, (columns - width) / 2, above);
    newtGridFree(grid, 1);
}

void NewtForm::AddKeys() {
    newtFormAddHotKey(form_, NEWT_KEY_RESIZE);
    for (int key = 1; key < 0x7F; ++key) {
        if (key == NEWT_KEY_ESCAPE || key == KeyInterrupt || ButtonFor(key)) {
            newtFormAddHotKey(form_, key);
        }
    }
    if (!buttons_.empty()) {  // without buttons, the arrow keys scroll
        for (const int key : {NEWT_KEY_LEFT, NEWT_KEY_RIGHT, NEWT_KEY_UP, NEWT_KEY_DOWN}) {
            newtFormAddHotKey(form_, key);
        }
    }
}

// Lists the keys that work in this dialog, as many as fit on the screen.
std::string NewtForm::HelpLine(bool endsProgram) const {
    const std::string escape = endsProgram ? " Esc Ende" : " Esc Zurück";
    if (buttons_.empty()) {
        return (scrolls_ ? " Pfeile, Bild auf/ab Blättern " : "") + escape;
    }
    const std::string scroll = scrolls_ ? " Bild auf/ab Blättern " : "";
    const std::string select = scrolls_ || buttons_.size() > 1 ? " Tab Wählen " : "";
    const std::string press = dialog_.isBox ? "  Anfangsbuchstabe Sofort" : "  Ziffer, Anfangsbuchstabe Sofort";
    return scroll + select + " Enter Drücken " + escape + (roomy_ ? press : "");
}

// Returns the button with this number or first letter.
std::optional<std::size_t> NewtForm::ButtonFor(int key) const {
    int number = '1';
    for (const std::size_t button : buttons_) {
        const char16_t first = dialog_.controls[button].caption.front();
        if (key == number++ || (key < 0x80 && std::toupper(key) == first)) {
            return button;
        }
    }
    return std::nullopt;
}

// Returns the nearest button in the direction of an arrow key.
std::optional<std::size_t> NewtForm::Neighbour(int key) const {
    const int right = key == NEWT_KEY_RIGHT ? 1 : key == NEWT_KEY_LEFT ? -1 : 0;
    const int down = key == NEWT_KEY_DOWN ? 1 : key == NEWT_KEY_UP ? -1 : 0;
    const auto focus = Focus();
    const Rectangle from = focus ? dialog_.controls[*focus].bounds : Rectangle{};
    std::optional<std::size_t> nearest;
    std::int32_t least = 0;
    for (const std::size_t button : buttons_) {
        const Rectangle& to = dialog_.controls[button].bounds;
        const std::int32_t distance = right * (to.left - from.left) + down * (to.top - from.top);
        const bool inLine = right != 0 ? to.top == from.top : to.left == from.left;
        if (focus && inLine && distance > 0 && (!nearest || distance < least)) {
            nearest = button;
            least = distance;
        }
    }
    return nearest;
}

// Shows the focused button's tooltip above the help line, or the dialog's note if there are no buttons.
void NewtForm::ShowToolTip() const {
    const auto focus = Focus();
    std::vector<std::string> lines = Wrapped(focus ? dialog_.controls[*focus].toolTip : dialog_.note, columns_ - 2);
    lines.resize(static_cast<std::size_t>(toolTipRows_));
    int row = rows_ - HelpRows - toolTipRows_;
    for (const std::string& line : lines) {
        newtDrawRootText(0, row++, Padded(" " + line, columns_).c_str());
    }
}

}  // namespace platform::host
