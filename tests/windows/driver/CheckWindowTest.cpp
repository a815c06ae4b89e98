#include <doctest/doctest.h>

#include <algorithm>
#include <map>

#include "Program.h"

// The program on a machine that lacks something of the suite.

namespace {

constexpr char CheckTitle[] = "Vandrel Core Elements V1";

// The variable that says how one of the components starts.
const std::string ComponentStart = "VTV4V_SEVDTA_RESULT";

// The clipboard's plain text; empty when it holds none.
std::string ClipboardContent() {
    REQUIRE(Eventually([] { return ::OpenClipboard(nullptr) != FALSE; }));
    const HANDLE memory = ::GetClipboardData(CF_TEXT);
    std::string content = memory == nullptr ? "" : static_cast<const char*>(::GlobalLock(memory));
    ::GlobalUnlock(memory);
    ::CloseClipboard();
    return content;
}

// Starts the program under these variables, compares the window of its check, and closes it.
void CheckWindow(const std::map<std::string, std::string>& environment, COLORREF ground, COLORREF letters,
                 const std::string& status) {
    const Program program(Start(), environment);
    const HWND window = Shown(CheckTitle);
    const std::vector<HWND> labels = Parts(window);
    CHECK(Eventually([&] {
        const std::vector<COLORREF> dots = Dots(labels.at(0));
        return std::ranges::count(dots, ground) > std::ssize(dots) / 2 && std::ranges::count(dots, letters) > 0;
    }));
    CHECK(Caption(labels.at(1)) == "Information");
    CHECK(Caption(labels.at(2)) == "Obiger Text wurde in die Zwisachenablage kopiert und kann weiterverwendet werden!");
    const std::string report = Caption(labels.at(0));
    CHECK(report.ends_with("\r\n\r\n[Status]\r\n" + status + "\r\n"));
    CHECK(ClipboardContent() == report);
    CloseByFrame(window);
    CHECK(program.EndedWell());
    CHECK(ClipboardContent() == report);  // which outlives the program
}

}  // namespace

TEST_CASE("The check that fails shows its window, red, and nothing else" * doctest::test_suite("anywhere")) {
    CheckWindow({{ComponentStart, "-1"}}, RGB(255, 0, 0), RGB(255, 255, 255),
                "Error=*** Es fehlen Vandrel Core Elements! ***");
}

TEST_CASE("The check that fails at its first look alone shows its window, green") {
    CheckWindow({{ComponentStart, "once"}}, RGB(0, 255, 0), RGB(0, 0, 0), "OK");
}

TEST_CASE("The check window's panel and hint follow its size, down to the least one") {
    const Program program(Start(), {{ComponentStart, "-1"}});
    const HWND window = Shown(CheckTitle);
    const std::vector<HWND> labels = Parts(window);
    CHECK((::GetWindowLongA(window, GWL_STYLE) & WS_THICKFRAME) != 0);
    CHECK(Place(window).width == 582);
    CHECK(Place(window).height == 352);
    struct {
        int askedWidth, askedHeight, width, height;
    } const resizes[] = {{600, 590, 600, 590}, {400, 200, 582, 352}};
    for (const auto& each : resizes) {
        CAPTURE(each.askedWidth);
        ::SetWindowPos(window, nullptr, 0, 0, each.askedWidth, each.askedHeight, SWP_NOZORDER | SWP_NOACTIVATE);
        CHECK(Eventually([&] { return Place(window) == Spot{0, 0, each.width, each.height}; }));
        CHECK(Eventually([&] { return Place(labels.at(0)) == Spot{16, 32, each.width - 44, each.height - 99}; }));
        CHECK(Eventually([&] { return Place(labels.at(2)) == Spot{16, each.height - 59, 537, 17}; }));
        CHECK(Place(labels.at(1)) == Spot{16, 8, 361, 25});
    }
}
