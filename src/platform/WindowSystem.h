#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/Handle.h"

// Windows and their controls, message boxes and the clipboard. All lengths are in twips (1/1440 inch). One thread owns
// all windows and receives their events, but only within WindowShowModal, MessageBoxW, DoEvents, ShowWindow (if it
// activates a window) and WindowOuterSize.
namespace platform {

struct Rectangle {
    std::int32_t left;
    std::int32_t top;
    std::int32_t width;
    std::int32_t height;
};

struct Size {
    std::int32_t width;
    std::int32_t height;
};

// Red in the low byte, then green, then blue.
using Colour = std::int32_t;

enum class ControlKind { Button, Label };

struct Control {
    ControlKind kind;
    std::u16string caption;  // on Windows, an ampersand in a button's caption marks an access key
    Rectangle bounds;        // relative to the top left corner of the client area
    bool bold = false;
    bool visible = true;
};

struct Font {
    std::u16string face;      // if empty, the font of system dialogs is used
    std::int32_t height = 0;  // character height in twips (1/20 point)
};

struct WindowDesign {
    std::u16string caption;
    Size client;
    bool sizable;                   // if false, the window has a fixed frame without minimise and maximise boxes
    std::int32_t icon;              // resource ID of the icon
    std::vector<Control> controls;  // in tab order; a control's index here identifies the control
    Font font = {};                 // used by all controls
};

// A window's event handlers; any of them may be empty. An exception from a handler ends the modal loop, and
// WindowShowModal rethrows it.
struct WindowEvents {
    std::function<void()> activated;
    std::function<void(std::size_t control)> clicked;
    std::function<void()> resized;
};

// Creates a hidden window at the system's default position. Returns 0 on failure.
Handle WindowCreate(const WindowDesign& design, WindowEvents events);

// Shows the window and dispatches events until the window is hidden or destroyed, which is checked after each event.
// The close box destroys the window, but only after a running `clicked` handler has returned.
void WindowShowModal(Handle window);

// Destroys the window. Does nothing if it has already been destroyed.
void WindowDestroy(Handle window) noexcept;

void ControlCaption(Handle window, std::size_t control, const std::u16string& caption);
// Adds a tooltip to a control. Call this only once per control.
void ControlToolTip(Handle window, std::size_t control, const std::u16string& text);
void ControlColours(Handle window, std::size_t control, Colour background, Colour text);
void ControlVisible(Handle window, std::size_t control, bool visible);
void ControlBounds(Handle window, std::size_t control, const Rectangle& bounds);

// Returns or sets the size of the window including its frame. If the size changes, `resized` is called.
Size WindowOuterSize(Handle window);
void WindowOuterSize(Handle window, Size size);

// Makes the window refuse logoff and shutdown until ShutdownBlockReasonDestroy is called. The system may show `reason`
// to the user; returns false if the system can't show it. On the host, the window never refuses.
bool ShutdownBlockReasonCreate(Handle window, const std::u16string& reason);
void ShutdownBlockReasonDestroy(Handle window) noexcept;

inline constexpr std::int32_t ShowHide = 0;  // SW_HIDE
inline constexpr std::int32_t ShowShow = 5;  // SW_SHOW

inline constexpr std::int32_t LongExtendedStyle = -20;           // GWL_EXSTYLE
inline constexpr std::int32_t ExtendedStyleAppWindow = 0x40000;  // WS_EX_APPWINDOW: the window has a taskbar button

Handle GetDesktopWindow();
// Suspends drawing in `window`. If `window` is 0, resumes drawing.
bool LockWindowUpdate(Handle window);
// Shows or hides the window. Returns true if the window was visible before. Showing a window activates it, so
// `activated` may be called before this function returns.
bool ShowWindow(Handle window, std::int32_t command);
std::int32_t GetWindowLongA(Handle window, std::int32_t index);
// Sets the value at `index` and returns the previous value.
std::int32_t SetWindowLongA(Handle window, std::int32_t index, std::int32_t number);

// Message box buttons and icons. A box's type is the sum of a buttons value and an icon value.
inline constexpr std::uint32_t ButtonsOk = 0x00;           // MB_OK
inline constexpr std::uint32_t ButtonsYesNoCancel = 0x03;  // MB_YESNOCANCEL; the first button has the focus
inline constexpr std::uint32_t IconCritical = 0x10;        // MB_ICONERROR
inline constexpr std::uint32_t IconQuestion = 0x20;        // MB_ICONQUESTION
inline constexpr std::uint32_t IconExclamation = 0x30;     // MB_ICONWARNING
inline constexpr std::uint32_t IconInformation = 0x40;     // MB_ICONINFORMATION

inline constexpr std::int32_t AnswerOk = 1;
inline constexpr std::int32_t AnswerCancel = 2;  // also returned by the close box if there is a Cancel button
inline constexpr std::int32_t AnswerYes = 6;
inline constexpr std::int32_t AnswerNo = 7;

// Shows a message box above the program's active window and waits for the answer. Lines of `text` are separated by CR
// LF.
std::int32_t MessageBoxW(const std::u16string& text, const std::u16string& caption, std::uint32_t type);

// Plays the default beep.
void MessageBeep();

inline constexpr std::uint32_t ClipboardText = 1;  // CF_TEXT

// Empties the clipboard. Returns false if the clipboard is unavailable.
bool ClipboardClear();
// Copies `text`, which is in the system's 8-bit code page, to the clipboard in `format`. Returns false if the clipboard
// is unavailable.
bool ClipboardSet(const std::string& text, std::uint32_t format);

// Dispatches the pending window messages and returns when none are left.
void DoEvents();

}  // namespace platform
