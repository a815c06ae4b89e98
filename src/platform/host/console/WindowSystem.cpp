#include "platform/WindowSystem.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/Regional.h"
#include "platform/host/Machine.h"
#include "platform/host/Unicode.h"
#include "platform/host/console/Dialog.h"
#include "platform/host/console/Terminal.h"

namespace platform {

namespace {

using host::Dialog;
using host::DialogControl;
using host::UserAction;

struct HostWindow {
    Dialog dialog = {};
    Size outer = {};  // outer size in twips; frames take no space
    WindowEvents events = {};
    bool visible = false;
};

std::map<Handle, HostWindow> windows;
Handle lastWindow = GetDesktopWindow();
Handle activeWindow = 0;         // the last activated window; may be hidden or destroyed
std::filesystem::path copiedTo;  // the clipboard file, if it contains our text

// Returns an empty, hidden window if the window doesn't exist.
HostWindow& WindowOf(Handle window) {
    static HostWindow missing;
    const auto found = windows.find(window);
    return found == windows.end() ? missing = {} : found->second;
}

// Returns a dummy control if no control has this index.
DialogControl& ControlOf(Handle window, std::size_t control) {
    static DialogControl missing;
    std::vector<DialogControl>& controls = WindowOf(window).dialog.controls;
    return control < controls.size() ? controls[control] : missing;
}

// Takes the handler by value, because the call may destroy the window that owns the handler.
template <typename Handler, typename... Arguments>
void InvokeHandler(Handler handler, Arguments... arguments) {
    if (handler) {
        handler(arguments...);
    }
}

void ServeEvents(Handle window) {
    if (!WindowOf(window).visible) {
        return;
    }
    if (!copiedTo.empty()) {
        WindowOf(window).dialog.note = u"Kopiert nach " + copiedTo.u16string();
    }
    const std::unique_ptr<host::DialogView> view = host::ShowDialog(WindowOf(window).dialog);
    while (WindowOf(window).visible) {
        const UserAction action = view->Next();
        if (action.kind == UserAction::Kind::Click) {
            InvokeHandler(WindowOf(window).events.clicked, action.control);
        } else if (action.kind == UserAction::Kind::Close) {
            WindowDestroy(window);
        } else {
            WindowOuterSize(window, host::ScreenSize().value_or(WindowOuterSize(window)));
            view->Update(WindowOf(window).dialog);
        }
    }
}

// Activates the window if it is visible.
void Activate(Handle window) {
    if (WindowOf(window).visible) {
        activeWindow = window;
        InvokeHandler(WindowOf(window).events.activated);
    }
}

// Writes the clipboard file and returns its path, or an empty path on failure.
std::filesystem::path WriteClipboard(const std::string& bytes) {
    const std::filesystem::path file = host::MachineFolder() / "clipboard.txt";
    std::error_code failure;  // ignored; the write below reports any failure
    std::filesystem::create_directories(file.parent_path(), failure);
    const bool isWritten = (std::ofstream(file, std::ios::binary) << bytes << std::flush).good();
    return isWritten ? file : std::filesystem::path();
}

constexpr std::uint32_t ButtonsMask = 0x0F;
constexpr std::uint32_t IconMask = 0xF0;

using BoxButtons = std::vector<std::pair<const char16_t*, std::int32_t>>;  // each button's caption and answer

// Icons are drawn as coloured words.
const std::map<std::uint32_t, DialogControl> Icons = {
    {IconInformation, {{ControlKind::Label, u"Hinweis", {}}, {}, 0xFF0000, 0xFFFFFF}},
    {IconCritical, {{ControlKind::Label, u"Fehler", {}}, {}, 0x0000FF, 0xFFFFFF}},
    {IconQuestion, {{ControlKind::Label, u"Frage", {}}, {}, 0xFF0000, 0xFFFFFF}},
    {IconExclamation, {{ControlKind::Label, u"Warnung", {}}, {}, 0x00FFFF, 0x000000}}};

}  // namespace

Handle WindowCreate(const WindowDesign& design, WindowEvents events) {
    HostWindow window{{design.caption, false, design.sizable, {}}, design.client, std::move(events)};
    if (design.sizable) {
        window.outer = host::ScreenSize().value_or(window.outer);
    }
    for (const Control& control : design.controls) {
        window.dialog.controls.push_back({control});
    }
    lastWindow += 2;
    windows.emplace(lastWindow, std::move(window));
    return lastWindow;
}

void WindowShowModal(Handle window) {
    const Handle earlier = activeWindow;
    ShowWindow(window, ShowShow);
    ServeEvents(window);
    if (earlier != window) {
        Activate(earlier);
    }
}

// Removes the window before its handlers are destroyed, because their destructors may call back.
void WindowDestroy(Handle window) noexcept {
    const auto removed = windows.extract(window);
}

void ControlCaption(Handle window, std::size_t control, const std::u16string& caption) {
    ControlOf(window, control).caption = caption;
}

void ControlToolTip(Handle window, std::size_t control, const std::u16string& text) {
    ControlOf(window, control).toolTip = text;
}

void ControlColours(Handle window, std::size_t control, Colour background, Colour text) {
    ControlOf(window, control).background = background;
    ControlOf(window, control).text = text;
}

void ControlVisible(Handle window, std::size_t control, bool visible) {
    ControlOf(window, control).visible = visible;
}

void ControlBounds(Handle window, std::size_t control, const Rectangle& bounds) {
    ControlOf(window, control).bounds = bounds;
}

Size WindowOuterSize(Handle window) {
    return WindowOf(window).outer;
}

void WindowOuterSize(Handle window, Size size) {
    const Size earlier = std::exchange(WindowOf(window).outer, size);
    if (earlier.width != size.width || earlier.height != size.height) {
        InvokeHandler(WindowOf(window).events.resized);
    }
}

bool ShutdownBlockReasonCreate(Handle /*window*/, const std::u16string& /*reason*/) {
    return false;
}

void ShutdownBlockReasonDestroy(Handle /*window*/) noexcept {
}

Handle GetDesktopWindow() {
    return 0x10010;
}

// Does nothing, because nothing is drawn between events.
bool LockWindowUpdate(Handle /*window*/) {
    return true;
}

bool ShowWindow(Handle window, std::int32_t command) {
    const bool wasVisible = std::exchange(WindowOf(window).visible, command != ShowHide);
    if (!wasVisible || activeWindow != window) {
        Activate(window);
    }
    return wasVisible;
}

// The host's windows have no styles.
std::int32_t GetWindowLongA(Handle /*window*/, std::int32_t /*index*/) {
    return 0;
}

std::int32_t SetWindowLongA(Handle /*window*/, std::int32_t /*index*/, std::int32_t /*number*/) {
    return 0;
}

std::int32_t MessageBoxW(const std::u16string& text, const std::u16string& caption, std::uint32_t type) {
    const BoxButtons buttons = (type & ButtonsMask) == ButtonsYesNoCancel
                                   ? BoxButtons{{u"Ja", AnswerYes}, {u"Nein", AnswerNo}, {u"Abbrechen", AnswerCancel}}
                                   : BoxButtons{{u"OK", AnswerOk}};
    // Only the order of the positions matters: the icon, the text below it, and a row of buttons.
    Dialog dialog{caption, true, false, {Icons.at(type & IconMask), {{ControlKind::Label, text, {0, 1, 0, 0}}}}};
    for (const auto& button : buttons) {
        const auto left = static_cast<std::int32_t>(dialog.controls.size());
        dialog.controls.push_back({{ControlKind::Button, button.first, {left, 2, 0, 0}}});
    }
    const Handle owner = activeWindow;
    const UserAction action = host::ShowDialog(dialog)->Next();
    Activate(owner);
    // The close box acts as Cancel, or as the only button.
    return action.kind == UserAction::Kind::Click ? buttons.at(action.control - 2).second : buttons.back().second;
}

bool ClipboardClear() {
    copiedTo.clear();
    return !WriteClipboard("").empty();
}

// Treats every format as CF_TEXT, in which a string ends at the first NUL.
bool ClipboardSet(const std::string& text, std::uint32_t /*format*/) {
    copiedTo = WriteClipboard(host::ToUtf8(TextFromAnsi(text.substr(0, text.find('\0')))));
    return !copiedTo.empty();
}

void MessageBeep() {
    if (host::HasTerminal()) {
        static_cast<void>(write(STDOUT_FILENO, "\a", 1));
    }
}

// Input stays in its stream until a dialog reads it, so no event is ever pending.
void DoEvents() {
}

}  // namespace platform
