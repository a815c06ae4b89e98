#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>
#include <regex>

#include "Session.h"

// The program on a machine that lacks something of the suite.

namespace {

constexpr DWORD Red = 0xFF0000;
constexpr DWORD White = 0xFFFFFF;
constexpr DWORD Green = 0x00FF00;
constexpr DWORD Black = 0x000000;

std::string Variable(const char* name) {
    char value[MAX_PATH];
    return {value, ::GetEnvironmentVariableA(name, value, MAX_PATH)};
}

// A file that is away as long as the object lives.
class AwayFile {
public:
    explicit AwayFile(const std::string& path) : path_(path) { std::filesystem::rename(path_, path_ + ".away"); }
    ~AwayFile() { std::filesystem::rename(path_ + ".away", path_); }
    AwayFile(const AwayFile&) = delete;
    AwayFile& operator=(const AwayFile&) = delete;

private:
    std::string path_;
};

// The program started where the check fails, with the check's window.
struct CheckStart {
    TestMachine machine;
    Program program{MasterStart()};
    HWND window = program.Window("Vandrel Core Elements V1");
    std::vector<HWND> labels = Children(window);
    HWND panel = labels.at(0);
    HWND heading = labels.at(1);
    HWND hint = labels.at(2);
};

struct ControlAway {
    AwayFile control{Variable("SystemRoot") + "\\System32\\sevcmd4.ocx"};
};

// The same where one control is missing.
struct FailedStart : ControlAway, CheckStart {};

// Not every system has words for every status; the number must do then.
std::string MessageOf(HRESULT status) {
    char words[512];
    std::string text(words, ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                             static_cast<DWORD>(status), 0, words, sizeof words, nullptr));
    text.resize(text.find_last_not_of("\r\n ") + 1);
    return text.empty() ? "Automatisierungsfehler " + std::to_string(status) : text;
}

// The report without what differs from machine to machine: folders, and the versions and dates that files have. A row
// whose file is named as the row is, in the folder X, reads "name=X".
std::string Comparable(std::string report) {
    const std::pair<const char*, std::string> folders[] = {
        {"System", Variable("SystemRoot") + "\\System32\\"},
        {"Common", Variable("CommonProgramFiles") + "\\"},
        {"Core", Variable("ProgramFiles") + "\\Vandrel\\Core\\V1\\"}};
    for (const auto& [name, folder] : folders) {
        for (std::size_t place = report.find(folder); place != std::string::npos; place = report.find(folder)) {
            report.replace(place, folder.size(), std::string(name) + ":");
        }
    }
    report = std::regex_replace(
        report, std::regex(R"(, Version\(-?\d+(\.-?\d+){3}\), Release\(\d[^)]*\d:\d\d:\d\d[^)]*\))"), "");
    return std::regex_replace(report, std::regex(R"(([\w.]+)=Path\((\w+):\1\))"), "$1=$2");
}

constexpr char ThreeFailures[] = R"([Generator]
Application=Vandrel Tallora V4 Version Controller
Copyright=Copyright (C) 2017 Vandrel
Version=4.8.63
Release=16.12.2017-10:16:40

[Microsoft Core]
MSVBVM60.DLL=System
OLEAUT32.DLL=System
OLEPRO32.DLL=System
ASYCFILT.DLL=System
STDOLE2.TLB=System
COMCAT.DLL=System
VB6DE.DLL=System
MSSTDFMT.DLL=System
SCRRUN.DLL=System

[Microsoft Components]
COMDLG32.OCX=System
MSCOMCTL.OCX=System
MSCOMCT2.OCX=System
COMCT332.OCX=System

[Microsoft Shared]
DAO360.DLL=Path(Common:Microsoft Shared\DAO\DAO360.DLL)
MSADDNDR.DLL=Path(Common:Designer\MSADDNDR.DLL)

[SevTools Components]
sevPopUp2.PopUp=Path(System:sevPopUp2.dll), Test=Ok
sevImLib2.dll=System
sevCmd4.ocx=System, *** File not Found ***
sevEin20.ocx=System
sevClb30.ocx=System
sevMenuXP2.ocx=System
sevXPCtl.ocx=System
sevDataGrid3.ocx=System
sevDTA30.dll=System, Test=*** sevDTA30_Init failed ***

[Vandrel Components]
vcutil1.dll=Core, Test=*** REGDB_E_CLASSNOTREG ***
MazeWalker.exe=Path(Core:Extras\MazeWalker.exe)

[Status]
Error=*** Es fehlen Vandrel Core Elements! ***
)";

}  // namespace

TEST_CASE("A machine without one component shows the red window and nothing else") {
    ClipboardContent("earlier");
    const FailedStart start;
    Dots top = ScreenPlace(start.panel);
    top.height = 12;
    CHECK(Eventually([&] { return std::ranges::count(Picture(top), White) > 0; }));
    CHECK(std::ranges::count(Picture(top), Red) > top.width * top.height / 2);
    CHECK(Caption(start.heading) == "Information");
    CHECK(Caption(start.hint) == "Obiger Text wurde in die Zwisachenablage kopiert und kann weiterverwendet werden!");
    const std::string report = Caption(start.panel);
    CHECK(report.ends_with("\r\n[Status]\r\nError=*** Es fehlen Vandrel Core Elements! ***\r\n"));
    CHECK(ClipboardContent() == report);
    CHECK(start.program.Windows() == std::vector<HWND>{start.window});
    Screenshot("check-failed");
    CloseByFrame(start.window);
    CHECK(start.program.Ended() == 0);
    CHECK(ClipboardContent() == report);
}

TEST_CASE(
    "A machine that is whole again by the second look shows the green window, and the program ends all the same") {
    ::SetEnvironmentVariableA("VTV4V_SEVDTA_RESULT", "once");
    const CheckStart start;
    ::SetEnvironmentVariableA("VTV4V_SEVDTA_RESULT", nullptr);
    Dots top = ScreenPlace(start.panel);
    top.height = 12;
    CHECK(Eventually([&] { return std::ranges::count(Picture(top), Green) > top.width * top.height / 2; }));
    CHECK(Eventually([&] { return std::ranges::count(Picture(top), Black) > 0; }));
    CHECK(Caption(start.panel).ends_with("\r\n[Status]\r\nOK\r\n"));
    CHECK(ClipboardContent() == Caption(start.panel));
    CloseByFrame(start.window);
    CHECK(start.program.Ended() == 0);
}

TEST_CASE("The check window's panel and hint follow its size, down to the least one") {
    const FailedStart start;
    CHECK((::GetWindowLongA(start.window, GWL_STYLE) & WS_THICKFRAME) != 0);
    struct {
        int width, height, widthAfter, heightAfter;
    } const resizes[] = {{582, 352, 582, 352}, {790, 352, 790, 352}, {600, 590, 600, 590},
                         {400, 500, 582, 500}, {700, 200, 700, 352}, {100, 100, 582, 352}};
    CHECK(ScreenPlace(start.window).width == resizes[0].width);
    CHECK(ScreenPlace(start.window).height == resizes[0].height);
    for (const auto& [askedWidth, askedHeight, width, height] : resizes) {
        CAPTURE(askedWidth);
        ::SetWindowPos(start.window, nullptr, 0, 0, askedWidth, askedHeight, SWP_NOZORDER | SWP_NOACTIVATE);
        CHECK(Eventually([&] { return ScreenPlace(start.window) == Dots{0, 0, width, height}; }));
        CHECK(Eventually([&] { return Place(start.panel) == Dots{16, 32, width - 44, height - 99}; }));
        CHECK(Eventually([&] { return Place(start.hint) == Dots{16, height - 59, 537, 17}; }));
        CHECK(Place(start.heading) == Dots{16, 8, 361, 25});
    }
}

TEST_CASE("The report tells all kinds of failure, line for line, with CR LF") {
    ::SetEnvironmentVariableA("VTV4V_SEVDTA_RESULT", "-1");
    const ClassChange debugLog("VCUTIL1.DebugLog\\CLSID", "{3C0E5F0A-52B4-4E0E-8D5E-9C1B6A7F21FF}");
    const FailedStart start;
    ::SetEnvironmentVariableA("VTV4V_SEVDTA_RESULT", nullptr);
    std::string expected = std::regex_replace(ThreeFailures, std::regex("\n"), "\r\n");
    expected = std::regex_replace(expected, std::regex("REGDB_E_CLASSNOTREG"), MessageOf(REGDB_E_CLASSNOTREG));
    CHECK(Comparable(ClipboardContent()) == expected);
}

TEST_CASE("A clipboard that another program holds open costs the copy and nothing else") {
    ClipboardContent("earlier");
    REQUIRE(::OpenClipboard(nullptr));
    const FailedStart start;
    CHECK(Caption(start.panel).starts_with("[Generator]\r\n"));
    ::CloseClipboard();
    CHECK(ClipboardContent() == "earlier");
}
