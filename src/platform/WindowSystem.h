#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/Handle.h"

// Windows with their controls, message boxes, the clipboard. Lengths are twips, 1440 to the inch. One thread serves all
// windows. Events arrive on it: from WindowShowModal, MessageBoxW and DoEvents, from ShowWindow when a window becomes
// active, and from WindowOuterSize.
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

// A colour number holds red in the low byte, then green, then blue.
using Colour = std::int32_t;

enum class ControlKind { Button, Label };

struct Control {
    ControlKind kind;
    std::u16string caption;  // shown as it is: an ampersand is an ampersand
    Rectangle place;         // from the client area's top left corner
    bool bold = false;
    bool visible = true;
};

struct Font {
    std::u16string face;      // empty: the font of the system's own dialogs
    std::int32_t height = 0;  // of a character, in twips: 20 to the point
};

struct WindowDesign {
    std::u16string caption;
    Size client;
    bool sizable;       // false: a fixed frame with a close box, neither minimised nor maximised
    std::int32_t icon;  // number of the icon in the program's resources
    std::vector<Control>
        controls;    // buttons take the focus in this order; a control is named by its place here, from 0
    Font font = {};  // of all controls
};

// What a window tells its owner. An empty function is passed over. An exception that leaves one of them ends the modal
// show and leaves WindowShowModal.
struct WindowEvents {
    std::function<void()> activated;
    std::function<void(std::size_t control)> clicked;
    std::function<void()> resized;
};

// Creates a window, hidden, at the place that the system gives new windows; 0 when the system refuses.
Handle WindowCreate(const WindowDesign& design, WindowEvents events);

// Shows the window and serves events until, between two of them, it is hidden or gone. Its frame's close box destroys
// it, once a `clicked` that is running has returned.
void WindowShowModal(Handle window);

// Destroys the window; one that is gone already is passed over.
void WindowDestroy(Handle window) noexcept;

void ControlCaption(Handle window, std::size_t control, const std::u16string& caption);
void ControlToolTip(Handle window, std::size_t control, const std::u16string& text);
void ControlColours(Handle window, std::size_t control, Colour background, Colour text);
void ControlVisible(Handle window, std::size_t control, bool visible);
void ControlPlace(Handle window, std::size_t control, const Rectangle& place);

// The size over the outer frame. Setting it is followed by `resized`, as a change by the user is.
Size WindowOuterSize(Handle window);
void WindowOuterSize(Handle window, Size size);

inline constexpr std::int32_t ShowHide = 0;  // SW_HIDE
inline constexpr std::int32_t ShowShow = 5;  // SW_SHOW

inline constexpr std::int32_t LongExtendedStyle = -20;           // GWL_EXSTYLE
inline constexpr std::int32_t ExtendedStyleAppWindow = 0x40000;  // WS_EX_APPWINDOW: a button in the task bar

Handle GetDesktopWindow();
// Stops the drawing of `window`; 0 lets the stopped one draw again.
bool LockWindowUpdate(Handle window);
// Shows or hides the window; true when it was visible before. A window that is shown becomes active, which may tell
// `activated` before this call returns.
bool ShowWindow(Handle window, std::int32_t command);
std::int32_t GetWindowLongA(Handle window, std::int32_t index);
// Returns the earlier number.
std::int32_t SetWindowLongA(Handle window, std::int32_t index, std::int32_t number);

// Buttons and icon of a message box, added up.
inline constexpr std::uint32_t ButtonsOk = 0x00;           // MB_OK
inline constexpr std::uint32_t ButtonsYesNoCancel = 0x03;  // MB_YESNOCANCEL; the first button has the focus
inline constexpr std::uint32_t IconCritical = 0x10;        // MB_ICONERROR
inline constexpr std::uint32_t IconQuestion = 0x20;        // MB_ICONQUESTION
inline constexpr std::uint32_t IconExclamation = 0x30;     // MB_ICONWARNING
inline constexpr std::uint32_t IconInformation = 0x40;     // MB_ICONINFORMATION

inline constexpr std::int32_t AnswerOk = 1;
inline constexpr std::int32_t AnswerCancel = 2;  // also the close box of a box with the button Cancel
inline constexpr std::int32_t AnswerYes = 6;
inline constexpr std::int32_t AnswerNo = 7;

// Shows a message box over the program's active window, and waits for the answer. Lines of `text` are parted by CR LF.
std::int32_t MessageBoxW(const std::u16string& text, const std::u16string& caption, std::uint32_t type);

// The system's plain beep.
void MessageBeep();

inline constexpr std::uint32_t ClipboardText = 1;  // CF_TEXT

// Empties the clipboard; false when it cannot be had.
bool ClipboardClear();
// Puts `text`, in the system's 8-bit code page, on the clipboard in `format`; false when it cannot be had.
bool ClipboardSet(const std::string& text, std::uint32_t format);

// Gives the pending window messages a turn, and returns when none is left.
void DoEvents();

}  // namespace platform
