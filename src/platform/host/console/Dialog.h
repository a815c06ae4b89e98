#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/WindowSystem.h"

// Windows and message boxes, drawn on a terminal or printed as plain lines.
namespace platform::host {

struct DialogControl : Control {
    std::u16string toolTip = {};
    std::optional<Colour> background = {};
    std::optional<Colour> text = {};
};

struct Dialog {
    std::u16string caption;
    bool isBox;    // true for a message box, false for a window
    bool sizable;  // true if the dialog fills the terminal
    std::vector<DialogControl> controls;
    std::u16string note = {};  // shown on a terminal if the dialog has no buttons
};

// Returns the buttons' indexes among the controls, in tab order.
std::vector<std::size_t> ButtonsOf(const Dialog& dialog);

struct UserAction {
    enum class Kind { Click, Close, Resize } kind;  // Resize only for a sizable dialog
    std::size_t control = 0;                        // index of the clicked button
};

// A dialog that stays visible for as long as the object exists. The newest one receives the user's input.
class DialogView {
public:
    DialogView() = default;
    virtual ~DialogView() = default;
    DialogView(const DialogView&) = delete;
    DialogView& operator=(const DialogView&) = delete;

    // Waits for the user's next action.
    virtual UserAction Next() = 0;

    // Shows a changed version of the dialog.
    virtual void Update(const Dialog& dialog) = 0;
};

// Shows the dialog on the terminal if possible, otherwise on standard output.
std::unique_ptr<DialogView> ShowDialog(const Dialog& dialog);

// Prints the dialog to standard output and reads the actions as lines from standard input: a button's caption or
// number, "?" for the tooltips if there are any, or "x" to close the dialog. The end of input closes the dialog too.
std::unique_ptr<DialogView> PrintDialog(const Dialog& dialog);

// Returns the text in UTF-8, with LF between lines and other control characters replaced by spaces.
std::string DisplayText(std::u16string text);

}  // namespace platform::host
