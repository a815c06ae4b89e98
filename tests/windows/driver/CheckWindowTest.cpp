#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <memory>
#include <regex>

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
    const std::string content = memory == nullptr ? "" : static_cast<const char*>(::GlobalLock(memory));
    ::GlobalUnlock(memory);
    ::CloseClipboard();
    return content;
}

std::ptrdiff_t Count(const std::string& text, const std::string& expression) {
    const std::regex wanted(expression);
    return std::distance(std::sregex_iterator(text.begin(), text.end(), wanted), {});
}

// Starts the program under these variables, compares the window of its check, and closes it.
void CheckWindow(const std::map<std::string, std::string>& environment, DWORD ground, DWORD letters,
                 const std::string& status, const std::string& picture) {
    const Program program(Start(), environment);
    const HWND window = Shown(CheckTitle);
    const std::vector<HWND> labels = Parts(window);
    CHECK(Eventually([&] {
        const std::vector<DWORD> dots = Picture(labels.at(0));
        return std::ranges::count(dots, ground) > std::ssize(dots) / 2 && std::ranges::count(dots, letters) > 0;
    }));
    CHECK(Caption(labels.at(1)) == "Information");
    CHECK(Caption(labels.at(2)) == "Obiger Text wurde in die Zwisachenablage kopiert und kann weiterverwendet werden!");
    const std::string report = Caption(labels.at(0));
    CHECK(report.ends_with("\r\n\r\n[Status]\r\n" + status + "\r\n"));
    CHECK(ClipboardContent() == report);
    Screenshot(picture);
    CloseByFrame(window);
    CHECK(program.EndedWell());
    CHECK(ClipboardContent() == report);  // which outlives the program
}

}  // namespace

TEST_CASE("The check that fails shows its window, red, and nothing else" * doctest::test_suite("anywhere")) {
    CheckWindow({{ComponentStart, "-1"}}, 0xFF0000, 0xFFFFFF, "Error=*** Es fehlen Vandrel Core Elements! ***",
                "check-failed");
}

TEST_CASE("The check that fails at its first look alone shows its window, green") {
    CheckWindow({{ComponentStart, "once"}}, 0x00FF00, 0x000000, "OK", "check-passed");
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
    } const resizes[] = {{790, 352, 790, 352}, {600, 590, 600, 590}, {400, 500, 582, 500}, {700, 200, 700, 352}};
    for (const auto& [askedWidth, askedHeight, width, height] : resizes) {
        CAPTURE(askedWidth);
        ::SetWindowPos(window, nullptr, 0, 0, askedWidth, askedHeight, SWP_NOZORDER | SWP_NOACTIVATE);
        CHECK(Eventually([&] { return Place(window) == Dots{0, 0, width, height}; }));
        CHECK(Eventually([&] { return Place(labels.at(0)) == Dots{16, 32, width - 44, height - 99}; }));
        CHECK(Eventually([&] { return Place(labels.at(2)) == Dots{16, height - 59, 537, 17}; }));
        CHECK(Place(labels.at(1)) == Dots{16, 8, 361, 25});
    }
}

// The rows' names and order are tested without a window.
TEST_CASE("The report tells what was found and all kinds of failure, with CR LF") {
    const std::string control = ProcessVariable("SystemRoot").value_or("") + "\\System32\\sevcmd4.ocx";  // as installed
    std::filesystem::rename(control, control + ".away");
    const std::shared_ptr<void> atTheEnd(nullptr, [&](void*) { std::filesystem::rename(control + ".away", control); });
    const ClassText object("VCUTIL1.DebugLog\\CLSID", "{3C0E5F0A-52B4-4E0E-8D5E-9C1B6A7F21FF}");
    const Program program(Start(), {{ComponentStart, "-1"}});
    const std::string report = Caption(Parts(Shown(CheckTitle)).at(0));
    CHECK(
        report.starts_with("[Generator]\r\nApplication=Vandrel Tallora V4 Version Controller\r\n"
                           "Copyright=Copyright (C) 2017 Vandrel\r\nVersion=4.8.63\r\n"
                           "Release=16.12.2017-10:16:40\r\n\r\n[Microsoft Core]\r\nMSVBVM60.DLL=Path("));
    CHECK(Count(report, R"(\r\nsevCmd4.ocx=Path\(.*\\System32\\sevCmd4.ocx\), \*\*\* File not Found \*\*\*\r\n)") == 1);
    const std::string found = R"(\r\n[\w.]+=Path\(\w:\\[^)]+\), Version\(-?\d+(\.-?\d+){3}\), Release\(\d[^)]+\))";
    CHECK(Count(report, found + "(?=\r\n)") == 22);
    CHECK(Count(report, found + ", Test=Ok\r\n") == 1);
    CHECK(Count(report, found + R"(, Test=\*\*\* [^*\r]+ \*\*\*(?=\r\n))") == 2);
    CHECK(Count(report, R"(\r\nsevDTA30.dll=.*, Test=\*\*\* sevDTA30_Init failed \*\*\*\r\n)") == 1);
    CHECK(Count(report, "\n") == Count(report, "\r\n"));
}
