#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <atomic>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

// The desktop as a person sees it: windows of other processes, the mouse, the keyboard. Nothing here knows the program.

// Waits until `condition` holds; false when it still does not after ten seconds.
bool Eventually(const std::function<bool()>& condition);
// Waits long enough for something to have happened that must not, and gives what `condition` says then.
bool StillAfterAWhile(const std::function<bool()>& condition);

std::wstring Caption(HWND window);
std::wstring ClassName(HWND window);
// Place of a child from the top left corner of its parent's client area, in dots.
RECT Place(HWND child);
std::vector<HWND> Children(HWND window, const std::wstring& className);
// The first child of that class and caption; nullptr when there is none.
HWND Child(HWND window, const std::wstring& className, const std::wstring& caption);
// The window with the keyboard focus in the thread of `window`.
HWND Focus(HWND window);

// A button clicked. It gets no chance to miss the click, as it does when a window comes to the front under the mouse.
void Click(HWND button);
// The left mouse button on the middle of a window that has come to rest.
void ClickByMouse(HWND window);
// The mouse moved to the middle of a window.
void Point(HWND window);
// A key pressed and released.
void Press(WORD key);
// What the frame's close box does.
void CloseByFrame(HWND window);

// The colours of the first dots from the top of a window, as many rows as `height`.
std::set<COLORREF> Colours(HWND window, int height);

// The clipboard's plain text; none when it holds no text.
std::optional<std::wstring> ClipboardContent();
void ClipboardContent(const std::string& text);

// Another program that holds the clipboard open: for good, or again and again for moments.
class ClipboardHolder {
public:
    enum class Kind { ForGood, ForMoments };

    explicit ClipboardHolder(Kind kind);

private:
    void Hold(const std::stop_token& stop, Kind kind);

    std::atomic<bool> held_ = false;
    std::jthread thread_;
};

// The whole screen as a picture in $VTV4V_SCREENSHOTS; nothing without that variable.
void Screenshot(const std::string& name);

// A window of the driver's own, in front of all others.
class OtherWindow {
public:
    OtherWindow();
    ~OtherWindow();
    OtherWindow(const OtherWindow&) = delete;
    OtherWindow& operator=(const OtherWindow&) = delete;

    // True once it has the keyboard.
    [[nodiscard]] bool Foreground() const;

private:
    HWND window_;
};

// What a process holds of the system.
struct HeldObjects {
    std::size_t handles;
    std::size_t drawing;
    std::size_t user;
};

// A process with its windows, ended at the latest with the object.
class Program {
public:
    explicit Program(const std::wstring& commandLine);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // The visible window of that title, once it is there; nullptr when it does not come. Message boxes do not count.
    [[nodiscard]] HWND Window(const std::wstring& title) const;
    // All visible top windows, message boxes included.
    [[nodiscard]] std::vector<HWND> Windows() const;
    // The exit code, once the process has ended by itself; none when it does not end.
    [[nodiscard]] std::optional<DWORD> Ended() const;
    [[nodiscard]] HeldObjects Objects() const;

    // The text of the tool tip that `window` shows over its child.
    [[nodiscard]] std::wstring ToolTip(HWND window, HWND child) const;

private:
    HANDLE process_ = nullptr;
    DWORD id_ = 0;
};

enum class BoxIcon { None, Question, Information, Critical, Exclamation };

// The message box that the program shows.
class Box {
public:
    // Waits for it.
    explicit Box(const Program& program);

    [[nodiscard]] bool Shown() const { return window_ != nullptr; }
    [[nodiscard]] HWND Window() const { return window_; }
    [[nodiscard]] std::wstring Title() const { return Caption(window_); }
    [[nodiscard]] std::wstring Text() const;
    // IDYES and its like, in the order of the tab key.
    [[nodiscard]] std::vector<int> Buttons() const;
    [[nodiscard]] int FocusedButton() const;
    // Told by the picture on the screen.
    [[nodiscard]] BoxIcon Icon() const;

    // Clicks a button and waits until the box is gone.
    void Answer(int button);
    void Close();

private:
    void WaitGone();

    HWND window_ = nullptr;
};
