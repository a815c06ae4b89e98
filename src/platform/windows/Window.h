#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/WindowSystem.h"
#include "platform/windows/Drawing.h"
#include "platform/windows/Win32.h"

namespace platform::windows {

// A window with its controls. The object lives until the system window is destroyed and no event handler is running.
class Window {
public:
    // Creates a window and returns its handle, or null on failure.
    static HWND Create(const WindowDesign& design, WindowEvents events);
    // Returns null if the window was destroyed or isn't a Window.
    static std::shared_ptr<Window> Find(HWND window);

    Window(HWND window, const WindowDesign& design, WindowEvents events);
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    void ShowFirst();
    void Caption(std::size_t control, const std::u16string& caption);
    void ToolTip(std::size_t control, const std::u16string& text);
    void Colours(std::size_t control, Colour background, Colour text);
    void Visible(std::size_t control, bool visible);
    void Bounds(std::size_t control, const Rectangle& bounds);
    // While `blocked`, the window refuses WM_QUERYENDSESSION.
    void ShutdownBlocked(bool blocked) { shutdownBlocked_ = blocked; }

private:
    struct ControlState {
        ControlKind kind;
        HWND window;
        OwnedBrush background;  // null for the default colours
        COLORREF textColour = 0;
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static void ClassRegister();
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleCommand(WPARAM wParam);
    void Clicked(std::size_t control);
    LRESULT LabelColour(WPARAM wParam, LPARAM lParam);
    HWND CreateControl(const Control& control, std::size_t index);

    HWND window_;
    WindowEvents events_;
    OwnedIcon icon_;
    OwnedFont font_;
    OwnedFont boldFont_;
    std::vector<ControlState> controls_;
    HWND toolTips_ = nullptr;
    HWND focused_ = nullptr;
    bool inClickHandler_ = false;
    bool closePending_ = false;
    bool shutdownBlocked_ = false;
};

}  // namespace platform::windows
