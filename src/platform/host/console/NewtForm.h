#pragma once

#include <newt.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/host/console/Dialog.h"

namespace platform::host {

constexpr int KeyInterrupt = 3;  // Ctrl-C

// A dialog drawn for the current screen size: its window, its controls, and the explanatory lines at the bottom of the
// screen.
class NewtForm {
public:
    // The dialog must outlive the form. `focus` is the button to focus (default: the first one). `endsProgram` is true
    // if the program exits when the dialog is closed.
    NewtForm(const Dialog& dialog, std::optional<std::size_t> focus, bool endsProgram);
    ~NewtForm();
    NewtForm(const NewtForm&) = delete;
    NewtForm& operator=(const NewtForm&) = delete;

    // Waits for a key and moves the focus if it is a navigation key. Returns the key and, if it presses a button, the
    // button's index. The key is NEWT_KEY_RESIZE if the terminal was resized, or NEWT_KEY_ERROR if it was closed.
    std::pair<int, std::optional<std::size_t>> Run();
    // Returns the button that has the focus.
    [[nodiscard]] std::optional<std::size_t> Focus() const;

private:
    [[nodiscard]] int NextKey() const;
    [[nodiscard]] newtComponent CreateButton(std::size_t number) const;
    [[nodiscard]] newtComponent CreateLabel(const DialogControl& label, int maxRows);
    [[nodiscard]] newtComponent CreateReport(const DialogControl& label, int maxRows);
    void CreateControls();
    [[nodiscard]] newtGrid ArrangeControls() const;
    void OpenWindow();
    void AddKeys();
    [[nodiscard]] std::string HelpLine(bool endsProgram) const;
    [[nodiscard]] std::optional<std::size_t> ButtonFor(int key) const;
    [[nodiscard]] std::optional<std::size_t> Neighbour(int key) const;
    void ShowToolTip() const;

    const Dialog& dialog_;
    const std::vector<std::size_t> buttons_;  // the buttons' indexes among the controls, in tab order
    int columns_ = 0;                         // screen width in characters
    int rows_ = 0;
    bool roomy_ = false;    // true if the screen has room for buttons with borders
    bool scrolls_ = false;  // true if a label's text is longer than the label
    int toolTipRows_ = 0;
    newtComponent form_;
    std::vector<newtComponent> controls_;  // null entries for hidden controls
};

}  // namespace platform::host
