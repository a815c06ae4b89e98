#pragma once

#include <newt.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/host/console/Dialog.h"
#include "platform/host/console/NewtText.h"

namespace platform::host {

constexpr int KeyInterrupt = 3;  // Ctrl-C
constexpr int KeyRedraw = 12;    // Ctrl-L

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
    struct Button {
        std::size_t control;
        newtComponent component;
    };

    [[nodiscard]] bool IsOutgrown() const;
    void WindowFill();
    void BoxFill();
    newtComponent AddButton(std::size_t control, const std::string& text, int column, int row);
    void AddKeys();
    [[nodiscard]] std::optional<std::size_t> PressedBy(int key) const;
    bool Scrolled(int key);
    static void FocusMoved(newtComponent form, void* self);
    // What there is to tell of the dialog, or of the button that has the focus.
    [[nodiscard]] std::u16string Explanation() const;
    void ExplanationShow() const;
    [[nodiscard]] std::string HelpLine() const;

    const Dialog& dialog_;
    int columns_ = 0;  // of the screen
    int rows_ = 0;
    bool roomy_ = false;  // enough room for buttons with a border
    int explanationRows_ = 0;
    newtComponent form_;
    std::vector<Button> buttons_;
    std::vector<std::unique_ptr<NewtLabel>> labels_;
    NewtLabel* scrolled_ = nullptr;
};

}  // namespace platform::host
