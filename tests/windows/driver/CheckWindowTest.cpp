#include <doctest/doctest.h>

#include <filesystem>
#include <regex>
#include <string>

#include "Desktop.h"
#include "Editor.h"
#include "Session.h"
#include "WideText.h"

// The program on a machine that lacks something of the suite.

namespace {

constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF White = RGB(255, 255, 255);
constexpr char DebugLogClass[] = "VCUTIL1.DebugLog\\CLSID";
const std::wstring Hint = L"Obiger Text wurde in die Zwisachenablage kopiert und kann weiterverwendet werden!";

std::string Variable(const char* name) {
    std::string value(MAX_PATH, '\0');
    value.resize(::GetEnvironmentVariableA(name, value.data(), MAX_PATH));
    return value;
}

std::string SystemPath(const std::string& file) {
    return Variable("SystemRoot") + "\\System32\\" + file;
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

// A class whose programmatic identifier leads to none that is registered as long as the object lives.
class AwayClass {
public:
    explicit AwayClass(const std::string& key) : key_(key), class_(ClassText(key)) {
        ClassText(key, "{3C0E5F0A-52B4-4E0E-8D5E-9C1B6A7F21FF}");
    }
    ~AwayClass() { ClassText(key_, class_); }
    AwayClass(const AwayClass&) = delete;
    AwayClass& operator=(const AwayClass&) = delete;

private:
    std::string key_;
    std::string class_;
};

// The program started where one control is missing, with its check window.
struct FailedStart {
    FailedStart() {
        REQUIRE(window != nullptr);
        const std::vector<HWND> labels = Children(window, L"Static");
        REQUIRE(labels.size() == 3);
        panel = labels[0];
        heading = labels[1];
        hint = labels[2];
    }

    TestMachine machine;
    AwayFile control{SystemPath("sevcmd4.ocx")};
    Program program{ProgramPath() + L" -master"};
    HWND window = program.Window(L"Vandrel Core Elements V1");
    HWND panel = nullptr;
    HWND heading = nullptr;
    HWND hint = nullptr;
};

struct Dots {
    int left;
    int top;
    int width;
    int height;
    bool operator==(const Dots&) const = default;
};

Dots PlaceOf(HWND child) {
    const RECT place = Place(child);
    return {place.left, place.top, place.right - place.left, place.bottom - place.top};
}

Dots Outer(HWND window) {
    RECT frame{};
    ::GetWindowRect(window, &frame);
    return {0, 0, frame.right - frame.left, frame.bottom - frame.top};
}

std::string Escaped(const std::string& text) {
    return std::regex_replace(text, std::regex(R"([.\\(){}*+?^$|[\]])"), R"(\$&)");
}

// Not every system has words for every status; the number must do then.
std::string MessageOf(HRESULT status) {
    std::string text(512, '\0');
    text.resize(::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                 static_cast<DWORD>(status), 0, text.data(), 512, nullptr));
    text.resize(text.find_last_not_of("\r\n ") + 1);
    return text.empty() ? "Automatisierungsfehler " + std::to_string(status) : text;
}

// A row of a file that is there, with the end that a further test adds, as a pattern.
std::string Row(const std::string& name, const std::string& path, const std::string& end = "") {
    return Escaped(name + "=Path(" + path + "), ") +
           R"(Version\(-?\d+\.-?\d+\.-?\d+\.-?\d+\), Release\(\d.*\d:\d\d:\d\d.*\))" + Escaped(end);
}

// Lines as patterns, for the machine with three kinds of failure.
std::vector<std::string> ReportForm() {
    std::vector<std::string> lines = {R"(\[Generator\])", "Application=Vandrel Tallora V4 Version Controller",
                                      "Copyright=.+", R"(Version=4\.8\.63)", R"(Release=16\.12\.2017-10:16:40)"};
    const auto section = [&](const std::string& name) { lines.insert(lines.end(), {"", "\\[" + name + "\\]"}); };
    const auto system = [&](const std::string& file) { lines.push_back(Row(file, SystemPath(file))); };
    section("Microsoft Core");
    for (const char* const file : {"MSVBVM60.DLL", "OLEAUT32.DLL", "OLEPRO32.DLL", "ASYCFILT.DLL", "STDOLE2.TLB",
                                   "COMCAT.DLL", "VB6DE.DLL", "MSSTDFMT.DLL", "SCRRUN.DLL"}) {
        system(file);
    }
    section("Microsoft Components");
    for (const char* const file : {"COMDLG32.OCX", "MSCOMCTL.OCX", "MSCOMCT2.OCX", "COMCT332.OCX"}) {
        system(file);
    }
    section("Microsoft Shared");
    const std::string common = Variable("CommonProgramFiles");
    lines.push_back(Row("DAO360.DLL", common + "\\Microsoft Shared\\DAO\\DAO360.DLL"));
    lines.push_back(Row("MSADDNDR.DLL", common + "\\Designer\\MSADDNDR.DLL"));
    section("SevTools Components");
    lines.push_back(Row("sevPopUp2.PopUp", SystemPath("sevPopUp2.dll"), ", Test=Ok"));
    system("sevImLib2.dll");
    lines.push_back(Escaped("sevCmd4.ocx=Path(" + SystemPath("sevCmd4.ocx") + "), *** File not Found ***"));
    for (const char* const file :
         {"sevEin20.ocx", "sevClb30.ocx", "sevMenuXP2.ocx", "sevXPCtl.ocx", "sevDataGrid3.ocx"}) {
        system(file);
    }
    lines.push_back(Row("sevDTA30.dll", SystemPath("sevDTA30.dll"), ", Test=*** sevDTA30_Init failed ***"));
    section("Vandrel Components");
    const std::string core = Variable("ProgramFiles") + "\\Vandrel\\Core\\V1\\";
    const std::string failure = MessageOf(REGDB_E_CLASSNOTREG);
    lines.push_back(Row("vcutil1.dll", core + "vcutil1.dll", ", Test=*** " + failure + " ***"));
    lines.push_back(Row("MazeWalker.exe", core + "Extras\\MazeWalker.exe"));
    section("Status");
    lines.insert(lines.end(), {Escaped("Error=*** Es fehlen Vandrel Core Elements! ***"), ""});
    return lines;
}

// Text between CR LF; a lone CR or LF stays in its line, where no pattern allows it.
std::vector<std::string> Lines(const std::wstring& text) {
    std::vector<std::string> lines(1);
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (text.compare(place, 2, L"\r\n") == 0) {
            lines.emplace_back();
            ++place;
        } else {
            lines.back() += static_cast<char>(text[place]);
        }
    }
    return lines;
}

}  // namespace

TEST_CASE("A machine without one component shows the red window and nothing else") {
    ClipboardContent("earlier");
    const FailedStart start;
    CHECK(Eventually([&] { return Colours(start.panel, 12).contains(White); }));
    CHECK(Colours(start.panel, 12).contains(Red));
    CHECK(Caption(start.heading) == L"Information");
    CHECK(Caption(start.hint) == Hint);
    CHECK(::IsWindowVisible(start.hint));
    const std::wstring report = Caption(start.panel);
    CHECK(report.ends_with(L"\r\n[Status]\r\nError=*** Es fehlen Vandrel Core Elements! ***\r\n"));
    CHECK(ClipboardContent() == report);
    CHECK(start.program.Windows() == std::vector<HWND>{start.window});
    Screenshot("check-failed");
    CloseByFrame(start.window);
    CHECK(start.program.Ended() == 0);
    CHECK(ClipboardContent() == report);
}

TEST_CASE("The check window's panel and hint follow its size, down to the least one") {
    const FailedStart start;
    CHECK((::GetWindowLongW(start.window, GWL_STYLE) & WS_THICKFRAME) != 0);
    CHECK(Outer(start.window) == Dots{0, 0, 582, 352});
    struct Resize {
        int width;
        int height;
        int widthAfter;
        int heightAfter;
    };
    for (const Resize& resize : {Resize{700, 500, 700, 500}, Resize{790, 352, 790, 352}, Resize{600, 590, 600, 590},
                                 Resize{400, 500, 582, 500}, Resize{700, 200, 700, 352}, Resize{100, 100, 582, 352}}) {
        CAPTURE(resize.width);
        ::SetWindowPos(start.window, nullptr, 0, 0, resize.width, resize.height, SWP_NOZORDER | SWP_NOACTIVATE);
        const int width = resize.widthAfter;
        const int height = resize.heightAfter;
        CHECK(Eventually([&] { return Outer(start.window) == Dots{0, 0, width, height}; }));
        CHECK(Eventually([&] { return PlaceOf(start.panel) == Dots{16, 32, width - 44, height - 99}; }));
        CHECK(Eventually([&] { return PlaceOf(start.hint) == Dots{16, height - 59, 537, 17}; }));
        CHECK(PlaceOf(start.heading) == Dots{16, 8, 361, 25});
    }
}

TEST_CASE("The report tells all kinds of failure, line for line") {
    ::SetEnvironmentVariableA("VTV4V_SEVDTA_RESULT", "-1");
    const AwayClass debugLog(DebugLogClass);
    const FailedStart start;
    ::SetEnvironmentVariableA("VTV4V_SEVDTA_RESULT", nullptr);
    const std::vector<std::string> lines = Lines(ClipboardContent().value_or(L""));
    const std::vector<std::string> form = ReportForm();
    REQUIRE(lines.size() == form.size());
    for (std::size_t number = 0; number < form.size(); ++number) {
        CAPTURE(lines[number]);
        CAPTURE(form[number]);
        CHECK(std::regex_match(lines[number], std::regex(form[number])));
    }
}

TEST_CASE("A clipboard that another program holds costs the copy at most") {
    ClipboardContent("earlier");
    for (const auto kind : {ClipboardHolder::Kind::ForMoments, ClipboardHolder::Kind::ForGood}) {
        std::wstring report;
        {
            const ClipboardHolder holder(kind);
            const FailedStart start;
            report = Caption(start.panel);
            CHECK(report.starts_with(L"[Generator]\r\n"));
            CHECK(::IsWindowVisible(start.hint));
            if (kind == ClipboardHolder::Kind::ForMoments) {
                CHECK(Eventually([&] { return ::IsClipboardFormatAvailable(CF_TEXT) != FALSE; }));
            }
        }
        CHECK((ClipboardContent() == report) == (kind == ClipboardHolder::Kind::ForMoments));
        ClipboardContent("earlier");
    }
}
