#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/WindowSystem.h"

// Windows and message boxes as the person in front of them sees them: newt draws them on a terminal, lines tell them
// anywhere else.
namespace platform::host {

struct DialogControl {
    Control design;
    std::u16string toolTip = {};
    std::optional<Colour> background = {};
    std::optional<Colour> text = {};
};

struct Dialog {
    std::u16string caption;
    bool isBox;    // a message box, not a window
    bool sizable;  // fills the terminal
    std::vector<DialogControl> controls;
};

// The places of the buttons among the controls, in the order of their numbers.
std::vector<std::size_t> ButtonsOf(const Dialog& dialog);

// What the person did. A new size is told only of a sizable dialog.
struct Act {
    enum class Kind { Click, Close, Resize } kind;
    std::size_t control = 0;  // of a click
};

// A dialog in sight, for as long as the object lives. The latest one has the keyboard.
class DialogView {
public:
    DialogView() = default;
    virtual ~DialogView() = default;
    DialogView(const DialogView&) = delete;
    DialogView& operator=(const DialogView&) = delete;

    // Waits for the person.
    virtual Act Next() = 0;

    // Shows what has become of the dialog.
    virtual void Update(const Dialog& dialog) = 0;
};

std::unique_ptr<DialogView> DialogShow(const Dialog& dialog);

// True when a person sees and types on one terminal: standard input and output are that terminal.
bool HasTerminal();

// UTF-8 with lines parted by LF, and no control character that a terminal would obey.
std::string ShownText(std::u16string text);

}  // namespace platform::host
