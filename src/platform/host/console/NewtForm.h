#pragma once

#include <newt.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/host/console/Dialog.h"

namespace platform::host {

constexpr int KeyInterrupt = 3;  // Ctrl-C

// A key that the form does not know what to do with, or the control whose button was pressed.
struct NewtInput {
    int key = 0;
    std::optional<std::size_t> pressed = {};
};

// Remembers how newt, which has just begun, watches the screen's size.
void KeepResizeHandler();

// A dialog as it is drawn on a screen of one size: its window, its controls, and the lines at the screen's bottom that
// explain them.
class NewtForm {
public:
    // `focus` is the control that has the focus at first; without it the first button.
    NewtForm(const Dialog& dialog, std::optional<std::size_t> focus);
    ~NewtForm();
    NewtForm(const NewtForm&) = delete;
    NewtForm& operator=(const NewtForm&) = delete;

    NewtInput Run();
    [[nodiscard]] std::optional<std::size_t> Focus() const;

private:
    [[nodiscard]] bool IsOutgrown() const;
    [[nodiscard]] newtComponent NewButton(std::size_t number) const;
    [[nodiscard]] newtComponent NewLabel(const DialogControl& label, int rows) const;
    [[nodiscard]] newtComponent NewReport(const DialogControl& label, int rows) const;
    void CreateControls();
    [[nodiscard]] newtGrid Arranged() const;
    void OpenWindow();
    void AddKeys();
    [[nodiscard]] std::optional<std::size_t> PressedBy(int key) const;
    static void FocusMoved(newtComponent form, void* self);
    void ShowExplanation() const;

    const Dialog& dialog_;
    const std::vector<std::size_t> buttons_;  // by their numbers, from 0
    int columns_ = 0;                         // of the screen
    int rows_ = 0;
    bool roomy_ = false;  // enough room for buttons with a border
    int explanationRows_ = 0;
    newtComponent form_;
    std::vector<newtComponent> controls_;  // null for a hidden one
};

}  // namespace platform::host
