#include "platform/WindowSystem.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <utility>

#include "platform/host/console/Dialog.h"
#include "platform/host/console/NewtView.h"

namespace platform {

namespace {

using host::Act;
using host::Dialog;
using host::DialogControl;

struct HostWindow {
    Dialog dialog;
    Size outer;  // twips; a frame takes no room
    WindowEvents events;
    bool visible = false;
};

std::map<Handle, HostWindow> windows;
Handle lastWindow = GetDesktopWindow();
Handle activeWindow = 0;

HostWindow* WindowOf(Handle window) {
    const auto found = windows.find(window);
    return found == windows.end() ? nullptr : &found->second;
}

bool Shown(Handle window) {
    const HostWindow* const found = WindowOf(window);
    return found != nullptr && found->visible;
}

template <typename Change>
void WithControl(Handle window, std::size_t control, Change&& change) {
    if (HostWindow* const found = WindowOf(window); found != nullptr && control < found->dialog.controls.size()) {
        change(found->dialog.controls[control]);
    }
}

// An event is called by a copy, because it may destroy the window that keeps it.
template <typename Event, typename... Arguments>
void Tell(Event event, Arguments... arguments) {
    if (event) {
        event(arguments...);
    }
}

void ServeEvents(Handle window) {
    if (!Shown(window)) {
        return;
    }
    const std::unique_ptr<host::DialogView> view = host::DialogShow(WindowOf(window)->dialog);
    while (Shown(window)) {
        const Act act = view->Next();
        switch (act.kind) {
            case Act::Kind::Click:
                Tell(WindowOf(window)->events.clicked, act.control);
                break;
            case Act::Kind::Close:
                WindowDestroy(window);
                break;
            case Act::Kind::Resize:
                WindowOuterSize(window, host::NewtScreenSize().value_or(WindowOuterSize(window)));
                view->Update(WindowOf(window)->dialog);
                break;
        }
    }
}

// Gives a window that is shown the focus and tells its owner; any other is passed over.
void Activate(Handle window) {
    if (!Shown(window)) {
        return;
    }
    activeWindow = window;
    Tell(WindowOf(window)->events.activated);
}

constexpr std::uint32_t ButtonsMask = 0x0F;
constexpr std::uint32_t IconMask = 0xF0;

struct BoxButton {
    const char16_t* caption;
    std::int32_t answer;
};

// An icon is a word on its colour.
struct BoxIcon {
    std::uint32_t number;
    const char16_t* word;
    Colour background;
    Colour text;
};
constexpr std::array<BoxIcon, 4> Icons = {{{IconInformation, u"Hinweis", 0xFF0000, 0xFFFFFF},
                                           {IconCritical, u"Fehler", 0x0000FF, 0xFFFFFF},
                                           {IconQuestion, u"Frage", 0xFF0000, 0xFFFFFF},
                                           {IconExclamation, u"Warnung", 0x00FFFF, 0x000000}}};

}  // namespace

Handle WindowCreate(const WindowDesign& design, WindowEvents events) {
    HostWindow window{{design.caption, false, design.sizable, {}}, design.client, std::move(events)};
    if (design.sizable) {
        window.outer = host::NewtScreenSize().value_or(window.outer);
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

// The events' owner may call back while they are released, and finds the window gone.
void WindowDestroy(Handle window) noexcept {
    activeWindow = activeWindow == window ? 0 : activeWindow;
    const auto removed = windows.extract(window);
}

void ControlCaption(Handle window, std::size_t control, const std::u16string& caption) {
    WithControl(window, control, [&](DialogControl& found) { found.design.caption = caption; });
}

void ControlToolTip(Handle window, std::size_t control, const std::u16string& text) {
    WithControl(window, control, [&](DialogControl& found) { found.toolTip = text; });
}

void ControlColours(Handle window, std::size_t control, Colour background, Colour text) {
    WithControl(window, control, [&](DialogControl& found) {
        found.background = background;
        found.text = text;
    });
}

void ControlVisible(Handle window, std::size_t control, bool visible) {
    WithControl(window, control, [&](DialogControl& found) { found.design.visible = visible; });
}

void ControlBounds(Handle window, std::size_t control, const Rectangle& bounds) {
    WithControl(window, control, [&](DialogControl& found) { found.design.bounds = bounds; });
}

Size WindowOuterSize(Handle window) {
    const HostWindow* const found = WindowOf(window);
    return found == nullptr ? Size{0, 0} : found->outer;
}

bool ShutdownBlockReasonCreate(Handle /*window*/, const std::u16string& /*reason*/) {
    return false;
}

void ShutdownBlockReasonDestroy(Handle /*window*/) noexcept {
}

// The size that a window has already is no change, and not told again.
void WindowOuterSize(Handle window, Size size) {
    HostWindow* const found = WindowOf(window);
    if (found != nullptr && (found->outer.width != size.width || found->outer.height != size.height)) {
        found->outer = size;
        Tell(found->events.resized);
    }
}

Handle GetDesktopWindow() {
    return 0x10010;
}

// Nothing is drawn between two events.
bool LockWindowUpdate(Handle /*window*/) {
    return true;
}

bool ShowWindow(Handle window, std::int32_t command) {
    HostWindow* const found = WindowOf(window);
    if (found == nullptr) {
        return false;
    }
    const bool earlier = std::exchange(found->visible, command != ShowHide);
    if (command == ShowHide) {
        activeWindow = activeWindow == window ? 0 : activeWindow;
    } else if (activeWindow != window) {
        Activate(window);
    }
    return earlier;
}

// The host's windows have no styles.
std::int32_t GetWindowLongA(Handle /*window*/, std::int32_t /*index*/) {
    return 0;
}

std::int32_t SetWindowLongA(Handle /*window*/, std::int32_t /*index*/, std::int32_t /*number*/) {
    return 0;
}

std::int32_t MessageBoxW(const std::u16string& text, const std::u16string& caption, std::uint32_t type) {
    const std::vector<BoxButton> buttons =
        (type & ButtonsMask) == ButtonsYesNoCancel
            ? std::vector<BoxButton>{{u"Ja", AnswerYes}, {u"Nein", AnswerNo}, {u"Abbrechen", AnswerCancel}}
            : std::vector<BoxButton>{{u"OK", AnswerOk}};
    std::int32_t place = 0;  // one below the other, and the buttons side by side
    const auto* const icon = std::ranges::find(Icons, type & IconMask, &BoxIcon::number);
    Dialog dialog{caption,
                  true,
                  false,
                  {{{ControlKind::Label, icon->word, {}}, {}, icon->background, icon->text},
                   {{ControlKind::Label, text, {0, 1, 0, 0}}}}};
    const std::size_t firstButton = dialog.controls.size();
    for (const BoxButton& button : buttons) {
        dialog.controls.push_back({{ControlKind::Button, button.caption, {place++, 2, 0, 0}}});
    }
    const Handle owner = activeWindow;
    const Act act = host::DialogShow(dialog)->Next();
    Activate(owner);
    // The close box stands for Cancel, or for the one button.
    return act.kind == Act::Kind::Click ? buttons.at(act.control - firstButton).answer : buttons.back().answer;
}

void MessageBeep() {
    if (host::HasTerminal()) {
        static_cast<void>(write(STDOUT_FILENO, "\a", 1));
    }
}

// What is typed waits in its stream until a dialog asks for the next act: nothing is ever pending, and no key is lost.
void DoEvents() {
}

}  // namespace platform
