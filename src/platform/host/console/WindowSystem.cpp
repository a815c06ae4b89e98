#include "platform/WindowSystem.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <variant>

#include "platform/host/console/Console.h"
#include "platform/host/console/InputLine.h"
#include "platform/host/console/WindowPicture.h"
#include "platform/host/console/WindowTable.h"

namespace platform {

namespace {

using host::HostControl;
using host::HostWindow;
using host::WindowOf;

// The window whose drawing is stopped, 0 for none; the desktop stands for all.
Handle lockedWindow = 0;

bool Locked(Handle window) {
    return lockedWindow == window || lockedWindow == GetDesktopWindow();
}

// 32767 pixels at 15 twips, the largest window there is.
std::int32_t Bounded(std::int32_t length) {
    return std::clamp(length, 0, 32767 * 15);
}

HostControl* ControlOf(Handle window, std::size_t control) {
    HostWindow* const found = WindowOf(window);
    return found != nullptr && control < found->controls.size() ? &found->controls[control] : nullptr;
}

void TellResized(Handle window) {
    WindowOf(window)->sizeTold = true;
    if (const auto resized = WindowOf(window)->events.resized) {
        resized();
    }
}

std::vector<std::optional<std::u16string>> Captions(const HostWindow& window) {
    std::vector<std::optional<std::u16string>> captions;
    for (const std::size_t button : host::ButtonsOf(window)) {
        const Control& design = window.controls[button].design;
        captions.push_back(design.visible ? std::optional(design.caption) : std::nullopt);
    }
    return captions;
}

// Does what one line of input asks of a window, and gives what the user is to be told.
class InputService {
public:
    InputService(Handle window, std::optional<std::u16string> line) : window_(window), line_(std::move(line)) {}

    std::vector<std::u32string> Serve() {
        const HostWindow& window = *WindowOf(window_);
        return std::visit(*this, host::InputMeaning(line_, Captions(window), window.sizable));
    }

    std::vector<std::u32string> operator()(const host::ClickInput& input) const {
        const HostWindow& window = *WindowOf(window_);
        const std::size_t control = host::ButtonsOf(window)[input.button];
        if (const auto clicked = window.events.clicked) {
            clicked(control);
        }
        return {};
    }

    std::vector<std::u32string> operator()(const host::ToolTipsInput&) const {
        return host::ToolTipLines(*WindowOf(window_), host::ConsoleCanvas());
    }

    std::vector<std::u32string> operator()(const host::CloseInput&) const {
        WindowDestroy(window_);
        return {};
    }

    std::vector<std::u32string> operator()(const host::SizeInput& input) const {
        WindowOuterSize(window_, input.outer);
        return {};
    }

    std::vector<std::u32string> operator()(const host::UnknownInput&) const {
        return host::UnknownInputNotice(line_.value_or(u""), host::WindowChoices(*WindowOf(window_)),
                                        host::ConsoleCanvas());
    }

private:
    Handle window_;
    std::optional<std::u16string> line_;
};

std::string Drawing(const HostWindow& window, const std::vector<std::u32string>& notice) {
    const host::Canvas canvas = host::ConsoleCanvas();
    return host::WindowPicture(window, canvas).Print(canvas.colours) +
           host::Footer(notice, host::WindowHint(window), canvas);
}

void ServeEvents(Handle window) {
    host::ConsolePicture picture;
    std::vector<std::u32string> notice;
    while (host::WindowShown(window)) {
        if (!Locked(window)) {
            picture.Show(Drawing(*WindowOf(window), notice));
        }
        notice = InputService(window, host::ConsoleReadLine()).Serve();
    }
}

}  // namespace

Handle WindowCreate(const WindowDesign& design, WindowEvents events) {
    const Size frame = host::FrameOf(design.sizable);
    HostWindow window{design.caption,
                      design.sizable,
                      {Bounded(design.client.width + frame.width), Bounded(design.client.height + frame.height)},
                      {},
                      std::move(events)};
    for (const Control& control : design.controls) {
        window.controls.push_back({control});
    }
    return host::WindowAdd(std::move(window));
}

void WindowShowModal(Handle window) {
    if (WindowOf(window) == nullptr) {
        return;
    }
    const Handle earlier = host::ActiveWindow();
    ShowWindow(window, ShowShow);
    ServeEvents(window);
    if (earlier != window) {
        host::WindowActivate(earlier);
    }
}

void WindowDestroy(Handle window) noexcept {
    host::WindowRemove(window);
}

void ControlCaption(Handle window, std::size_t control, const std::u16string& caption) {
    if (HostControl* const found = ControlOf(window, control)) {
        found->design.caption = caption;
    }
}

void ControlToolTip(Handle window, std::size_t control, const std::u16string& text) {
    if (HostControl* const found = ControlOf(window, control)) {
        found->toolTip = text;
    }
}

void ControlColours(Handle window, std::size_t control, Colour background, Colour text) {
    if (HostControl* const found = ControlOf(window, control)) {
        found->background = background;
        found->text = text;
    }
}

void ControlVisible(Handle window, std::size_t control, bool visible) {
    if (HostControl* const found = ControlOf(window, control)) {
        found->design.visible = visible;
    }
}

void ControlPlace(Handle window, std::size_t control, const Rectangle& place) {
    if (HostControl* const found = ControlOf(window, control)) {
        found->design.place = place;
    }
}

Size WindowOuterSize(Handle window) {
    const HostWindow* const found = WindowOf(window);
    return found == nullptr ? Size{0, 0} : found->outer;
}

// The size that a window has already is no change, and not told again.
void WindowOuterSize(Handle window, Size size) {
    HostWindow* const found = WindowOf(window);
    const Size bounded{Bounded(size.width), Bounded(size.height)};
    if (found != nullptr && (found->outer.width != bounded.width || found->outer.height != bounded.height)) {
        found->outer = bounded;
        TellResized(window);
    }
}

Handle GetDesktopWindow() {
    return 0x10010;
}

bool LockWindowUpdate(Handle window) {
    if (window != 0 && lockedWindow != 0) {
        return false;
    }
    lockedWindow = window;
    return true;
}

bool ShowWindow(Handle window, std::int32_t command) {
    HostWindow* const found = WindowOf(window);
    if (found == nullptr) {
        return false;
    }
    const bool earlier = std::exchange(found->visible, command != ShowHide);
    if (command == ShowHide) {
        host::WindowDeactivate(window);
        return earlier;
    }
    if (!found->sizeTold) {
        TellResized(window);
    }
    if (host::ActiveWindow() != window) {
        host::WindowActivate(window);
    }
    return earlier;
}

std::int32_t GetWindowLongA(Handle window, std::int32_t index) {
    const HostWindow* const found = WindowOf(window);
    if (found == nullptr) {
        return 0;
    }
    const auto number = found->longs.find(index);
    return number == found->longs.end() ? 0 : number->second;
}

std::int32_t SetWindowLongA(Handle window, std::int32_t index, std::int32_t number) {
    HostWindow* const found = WindowOf(window);
    return found == nullptr ? 0 : std::exchange(found->longs[index], number);
}

// Input waits in its stream until the window asks for the next line: nothing is ever pending.
void DoEvents() {
}

}  // namespace platform
