#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/WindowSystem.h"
#include "platform/windows/Drawing.h"
#include "platform/windows/Win32.h"

namespace platform::windows {

// One window with its controls. It lives as long as the system's window does, and while one of its events is running.
class Window {
public:
    // The handle of the new window; nullptr when the system refuses it.
    static HWND Create(const WindowDesign& design, WindowEvents events);
    // nullptr for a window that is gone and for those of others.
    static std::shared_ptr<Window> Find(HWND window);

    Window(HWND window, const WindowDesign& design, WindowEvents events);
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    void ShowFirst();
    void Caption(std::size_t control, const std::u16string& caption);
    void ToolTip(std::size_t control, const std::u16string& text);
    void Colours(std::size_t control, Colour background, Colour text);
    void Visible(std::size_t control, bool visible);
    void Place(std::size_t control, const Rectangle& place);

private:
    struct ControlState {
        ControlKind kind;
        HWND window;
        bool hasToolTip = false;
        OwnedBrush background;  // none: in the window's own colours
        COLORREF textColour = 0;
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static void ClassRegister();
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleCommand(WPARAM wParam);
    void Clicked(std::size_t control);
    LRESULT LabelColour(WPARAM wParam, LPARAM lParam);
    HWND ControlCreate(const Control& control, std::size_t number);
    void FocusRestore();

    HWND window_;
    WindowEvents events_;
    OwnedIcon icon_;
    OwnedFont font_;
    OwnedFont boldFont_;
    std::vector<ControlState> controls_;
    HWND toolTips_ = nullptr;
    HWND focused_ = nullptr;
    bool clickRuns_ = false;
    bool closeWaits_ = false;
};

}  // namespace platform::windows
