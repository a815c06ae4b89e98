#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

// The desktop as a person sees it. Nothing here knows the program. Texts are in the system's 8-bit code page.

// Waits until `condition` holds; false when it still does not after ten seconds.
bool Eventually(const std::function<bool()>& condition);
// Waits long enough for something to have happened that must not, and gives what `condition` says then.
bool StillAfterAWhile(const std::function<bool()>& condition);

struct Spot {
    int left;
    int top;
    int width;
    int height;
    bool operator==(const Spot&) const = default;
};

// A window's place on the screen, or in the client area of the window that it is a part of.
Spot Place(HWND window);
std::string Caption(HWND window);
// The visible parts of a class, or of all classes, in the order of the tab key.
std::vector<HWND> Parts(HWND window, const std::string& className = {});
// A thread's top windows, visible or not.
std::vector<HWND> TopWindows(DWORD thread);
// The window with the keyboard focus in the thread of `window`, and the text of the tool tip that this thread shows;
// empty when none is.
HWND Focus(HWND window);
std::string ToolTip(HWND window);

// The window of that title, and the message box that is ready to be answered. Both are waited for.
HWND Shown(const char* title);
HWND Box();
// Answers a box by one of its buttons, IDYES and its like, or by its close box, and waits until it is gone.
constexpr int CloseBox = 0;
void Answer(HWND box, int button);
// What the frame's close box does.
void CloseByFrame(HWND window);

// What the screen shows where a window is: some of its dots.
std::vector<COLORREF> Dots(HWND window);

// The unnamed value of a key below HKEY_CLASSES_ROOT, another one as long as the object lives.
class ClassText {
public:
    ClassText(const char* key, const std::string& text);
    ~ClassText();
    ClassText(const ClassText&) = delete;
    ClassText& operator=(const ClassText&) = delete;

private:
    const char* key_;
    char earlier_[MAX_PATH] = {};
};
