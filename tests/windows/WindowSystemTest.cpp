#include <doctest/doctest.h>

#include <future>
#include <stdexcept>
#include <thread>

#include "platform/WindowSystem.h"
#include "platform/windows/Win32.h"

namespace {

platform::WindowDesign OneButton() {
    return {u"Failure", {3000, 1500}, false, 1, {{platform::ControlKind::Button, u"Button", {240, 240, 1335, 375}}}};
}

void ButtonClick(platform::Handle window) {
    const HWND parent = platform::windows::SystemHandleOf<HWND>(window);
    ::PostMessageW(::FindWindowExW(parent, nullptr, L"BUTTON", nullptr), BM_CLICK, 0, 0);
}

}  // namespace

TEST_CASE("An exception that leaves an event leaves the modal show, once") {
    platform::Handle window = 0;
    platform::WindowEvents activation;
    activation.activated = [] { throw std::runtime_error("activated"); };
    platform::WindowEvents click;
    click.activated = [&] { ButtonClick(window); };
    click.clicked = [](std::size_t) { throw std::runtime_error("clicked"); };
    for (const platform::WindowEvents& events : {activation, click}) {
        window = platform::WindowCreate(OneButton(), events);
        REQUIRE(window != 0);
        CHECK_THROWS_AS(platform::WindowShowModal(window), std::runtime_error);
        platform::WindowDestroy(window);
        CHECK_NOTHROW(platform::DoEvents());
    }
}

// As a process' first window does when the shell was asked to start the program so.
TEST_CASE("A fixed window that came up in another size is shown at its own") {
    for (const int command : {SW_SHOWMAXIMIZED, SW_SHOWMINIMIZED}) {
        platform::Handle window = 0;
        platform::Size shown{};
        platform::WindowEvents events;
        events.clicked = [&](std::size_t) {
            shown = platform::WindowOuterSize(window);
            platform::WindowDestroy(window);
        };
        window = platform::WindowCreate(OneButton(), events);
        const platform::Size own = platform::WindowOuterSize(window);
        platform::ShowWindow(window, command);
        ButtonClick(window);
        platform::WindowShowModal(window);
        CHECK(shown.width == own.width);
        CHECK(shown.height == own.height);
    }
}

TEST_CASE("The clipboard's text says in which locale's code page it is") {
    REQUIRE(platform::ClipboardSet("text", platform::ClipboardText));
    REQUIRE(::OpenClipboard(nullptr));
    CHECK(::EnumClipboardFormats(0) == CF_LOCALE);  // not one that the system puts behind the text
    const auto* const locale = static_cast<const LCID*>(::GlobalLock(::GetClipboardData(CF_LOCALE)));
    REQUIRE(locale != nullptr);
    CHECK(*locale == ::GetSystemDefaultLCID());
    ::CloseClipboard();
}

TEST_CASE("The clipboard is tried again while another program holds it open for a moment, and no longer") {
    for (const DWORD held : {40, 2000}) {  // milliseconds
        std::promise<bool> opened;
        const std::jthread holder([&] {
            opened.set_value(::OpenClipboard(nullptr) != FALSE);
            ::Sleep(held);
            ::CloseClipboard();
        });
        REQUIRE(opened.get_future().get());
        CHECK(platform::ClipboardSet("text", platform::ClipboardText) == (held == 40));
    }
}
