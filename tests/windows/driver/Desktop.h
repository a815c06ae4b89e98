#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

// The desktop as a person sees it: windows of other processes, the mouse, the clipboard. Nothing here knows the
// program. Texts are in the system's 8-bit code page.

// Waits until `condition` holds; false when it still does not after ten seconds.
bool Eventually(const std::function<bool()>& condition);
// Waits long enough for something to have happened that must not, and gives what `condition` says then.
bool StillAfterAWhile(const std::function<bool()>& condition);

struct Dots {
    int left;
    int top;
    int width;
    int height;
    bool operator==(const Dots&) const = default;
};

// A window's place on the screen, and that of a child in its parent's client area.
Dots ScreenPlace(HWND window);
Dots Place(HWND child);
std::string Caption(HWND window);
// The visible children of a class, or of all classes, in the order of the tab key.
std::vector<HWND> Children(HWND window, const std::string& className = {});
// The window with the keyboard focus in the thread of `window`.
HWND Focus(HWND window);

// The mouse moved to the middle of a window.
void Point(HWND window);
// What a button is told by its user. None of it can be missed, as a click is when a window comes to the front under the
// mouse.
void Click(HWND button);
void DoubleClick(HWND button);
// A key pressed and released in the window that has the focus.
void Press(HWND focused, WPARAM key);
// What the frame's close box does.
void CloseByFrame(HWND window);

// A part of the screen, dots of 0xRRGGBB in rows from the top. With an icon of the system: what that part would be with
// this icon, on a ground in the colour of its first dot.
std::vector<DWORD> Picture(const Dots& part, LPCSTR icon = nullptr);
// The whole screen as a picture in $VTV4V_SCREENSHOTS; nothing without that variable.
void Screenshot(const std::string& name);

// The clipboard's plain text; empty when it holds none.
std::string ClipboardContent();
void ClipboardContent(const std::string& text);

// What a process holds of the system.
struct HeldObjects {
    std::size_t handles;
    std::size_t drawing;
    std::size_t user;
};

// A process with its windows, ended at the latest with the object.
class Program {
public:
    explicit Program(const std::string& commandLine);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Its visible top windows but for tool tips.
    [[nodiscard]] std::vector<HWND> Windows() const;
    // The window of that title, and the message box that is ready to be answered. Both are waited for.
    [[nodiscard]] HWND Window(const std::string& title) const;
    [[nodiscard]] HWND Box() const;
    // The text of the tool tip that is shown; empty when none is.
    [[nodiscard]] std::string ToolTip() const;
    // The exit code, once the process has ended by itself; none when it does not end.
    [[nodiscard]] std::optional<DWORD> Ended() const;
    [[nodiscard]] HeldObjects Objects() const;

private:
    [[nodiscard]] std::vector<HWND> TopWindows() const;
    [[nodiscard]] HWND Found(const std::function<bool(HWND)>& isWanted) const;

    PROCESS_INFORMATION process_{};
};

// Answers a box by one of its buttons, IDYES and its like, or by its close box, and waits until it is gone.
constexpr int CloseBox = 0;
void Answer(HWND box, int button);
