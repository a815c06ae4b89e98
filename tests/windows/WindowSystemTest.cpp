#include <doctest/doctest.h>

#include <stdexcept>

#include "platform/WindowSystem.h"
#include "platform/windows/Win32.h"

TEST_CASE("Non-resizable windows keep their size; a handler's exception is rethrown once") {
    HWND window = nullptr;
    const auto fail = [] { throw std::runtime_error("event"); };
    const auto click = [&] { ::PostMessageW(::GetWindow(window, GW_CHILD), BM_CLICK, 0, 0); };
    const platform::WindowDesign design = {
        u"Failure", {3000, 1500}, false, 1, {{platform::ControlKind::Button, u"Button", {0, 0, 1335, 375}}}};
    const std::pair<int, platform::WindowEvents> cases[] = {
        {SW_SHOWMAXIMIZED, {fail, {}, {}}}, {SW_SHOWMINIMIZED, {click, [&](std::size_t) { fail(); }, {}}}};
    for (const auto& [command, events] : cases) {
        const platform::Handle handle = platform::WindowCreate(design, events);
        window = platform::windows::SystemHandleOf<HWND>(handle);
        CHECK(::SendMessageW(window, WM_GETICON, ICON_BIG, 0) != 0);
        ::ShowWindow(window, command);
        CHECK_THROWS_AS(platform::WindowShowModal(handle), std::runtime_error);
        CHECK_FALSE(::IsZoomed(window));
        CHECK_FALSE(::IsIconic(window));
        platform::WindowDestroy(handle);
        CHECK_NOTHROW(platform::DoEvents());
    }
}
