#include <doctest/doctest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "Desktop.h"
#include "TestMachine.h"

// The program as the administrator meets it: windows, mouse, keyboard, message boxes, clipboard. Cases of the test
// suite "anywhere" run on machines without the suite too, and change nothing there but the clipboard.

namespace {

constexpr char MainTitle[] = "VTV4 Version Controller";
constexpr char CheckTitle[] = "Vandrel Core Elements V1";
const std::string ProgramTitle = "Vandrel Tallora V4 Version Controller";
const std::string ImportEffect =
    "Die Steuerungs-Datei wird importiert. Die neuen Versions-Einstellungen werden gesetzt.";
const std::string ClearEffect = "Alle Versions-Einstellungen werden gel\xF6scht.";
const std::string Import = "Importieren";
const std::string Clear = "L\xF6schen";
const std::string Tables = "Software\\Vandrel\\Tallora";

// The program of that name in the folder above the driver's.
std::string ProgramPath(const std::string& name = "vtv4v.exe") {
    char driver[MAX_PATH];
    const std::string path(driver, ::GetModuleFileNameA(nullptr, driver, MAX_PATH));
    return path.substr(0, path.rfind("tests\\")) + name;
}

std::string Start(const std::string& tail = " -master") {
    return "\"" + ProgramPath() + "\"" + tail;
}

// The program without a control file, ended at the latest with the object.
class Program {
public:
    // One of the suite's components starts as `component` says: "-1" never, "once" not at first.
    explicit Program(std::string commandLine = Start(), const std::string& component = "0") {
        machine.Environment("VTV4V_SEVDTA_RESULT", component);
        // The program's own process has the system's registry.
        ::RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        ::SetProcessDPIAware();  // places and pictures are in the screen's own dots
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        REQUIRE(::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                                 &process_));
    }
    ~Program() {
        ::TerminateProcess(process_.hProcess, 1);
        ::WaitForSingleObject(process_.hProcess, INFINITE);
        ::CloseHandle(process_.hProcess);
        ::CloseHandle(process_.hThread);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // True once the process has ended by itself, without an error; false when it does not end.
    [[nodiscard]] bool EndedWell() const {
        DWORD code = 1;
        return ::WaitForSingleObject(process_.hProcess, 10000) == WAIT_OBJECT_0 &&
               ::GetExitCodeProcess(process_.hProcess, &code) && code == 0;
    }

    TestMachine machine;

private:
    PROCESS_INFORMATION process_{};
};

// The program with its window open. Removes the forced versions from the machine, which is why these tests run on one
// made for them.
class Session : public Program {
public:
    // Waits until the window is in the task bar, for which it goes and comes once.
    explicit Session(const std::string& start = Start()) : Program(start) {
        REQUIRE(Eventually([this] { return InTaskBar() && Waiting() && Focus(window) != nullptr; }));
        const LSTATUS status = ::RegDeleteTreeA(HKEY_LOCAL_MACHINE, Tables.c_str());
        REQUIRE((status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND));
    }

    [[nodiscard]] HWND Button(const std::string& caption) const {
        return ::FindWindowExA(window, nullptr, "BUTTON", caption.c_str());
    }
    // True while the window waits for the user and shows no box.
    [[nodiscard]] bool Waiting() const {
        return ::IsWindowVisible(window) && ::IsWindowEnabled(window) && ::FindWindowA("#32770", nullptr) == nullptr;
    }
    [[nodiscard]] bool InTaskBar() const { return (::GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_APPWINDOW) != 0; }

    HWND window = Shown(MainTitle);
};

// Both tables, as "=3 otto=5 | ruedi=99 | ": the main product's, the other's, each in the registry's order.
std::string ForcedVersions() {
    std::string held;
    for (const std::string product : {"V4", "V4\\Reporting"}) {
        HKEY key = nullptr;
        ::RegOpenKeyA(HKEY_LOCAL_MACHINE, (Tables + "\\" + product + "\\Version\\ForcedVersion").c_str(), &key);
        for (DWORD index = 0;; ++index) {
            char name[1024];
            DWORD length = sizeof name;
            DWORD number = 0;
            DWORD size = sizeof number;
            if (::RegEnumValueA(key, index, name, &length, nullptr, nullptr, reinterpret_cast<BYTE*>(&number), &size) !=
                ERROR_SUCCESS) {
                break;
            }
            held += std::string(name, length) + "=" + std::to_string(number) + " ";
        }
        ::RegCloseKey(key);
        held += "| ";
    }
    return held;
}

// The clipboard's plain text; empty when it holds none.
std::string ClipboardContent() {
    REQUIRE(Eventually([] { return ::OpenClipboard(nullptr) != FALSE; }));
    const HANDLE memory = ::GetClipboardData(CF_TEXT);
    std::string content = memory == nullptr ? "" : static_cast<const char*>(::GlobalLock(memory));
    ::GlobalUnlock(memory);
    ::CloseClipboard();
    return content;
}

// How many of some dots on the screen where a window is have each colour.
std::map<COLORREF, int> Colours(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    const HDC screen = ::GetDC(nullptr);
    std::map<COLORREF, int> colours;
    for (int y = place.top; y < place.bottom; y += 3) {
        for (int x = place.left; x < place.right; x += 3) {
            ++colours[::GetPixel(screen, x, y)];
        }
    }
    ::ReleaseDC(nullptr, screen);
    return colours;
}

// What a button is told by its user. None of it can be missed, as a click of the mouse is when a window comes.
void Click(HWND button) {
    ::PostMessageA(button, BM_CLICK, 0, 0);
}

void DoubleClick(HWND button) {
    ::PostMessageA(button, WM_LBUTTONDBLCLK, MK_LBUTTON, 0);
    ::PostMessageA(button, WM_LBUTTONUP, 0, 0);
}

void Press(HWND focused, WPARAM key) {
    ::PostMessageA(focused, WM_KEYDOWN, key, 0);
    ::PostMessageA(focused, WM_KEYUP, key, 0);
}

void Point(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    ::SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
}

// Checks the box that is shown, and answers it.
void CheckBox(const std::string& title, const std::string& text, const std::vector<int>& buttons, int answer) {
    const HWND box = Box();
    CHECK(Caption(box) == title);
    const HWND icon = ::FindWindowExA(box, nullptr, "Static", nullptr);
    CHECK(Caption(::FindWindowExA(box, icon, "Static", nullptr)) == text);
    for (const int button : {IDOK, IDYES, IDNO, IDCANCEL, IDABORT, IDRETRY, IDIGNORE}) {
        const bool shown = ::IsWindowVisible(::GetDlgItem(box, button));
        CHECK(shown == (std::ranges::count(buttons, button) > 0));
    }
    CHECK(::GetDlgCtrlID(Focus(box)) == buttons.front());
    Answer(box, answer);
}

// Compares the window of a check that failed at first, and closes it.
void CheckReport(const Program& program, COLORREF ground, COLORREF letters, const std::string& status) {
    const HWND window = Shown(CheckTitle);
    const std::vector<HWND> labels = Parts(window);
    CHECK(Eventually([&] {
        std::map<COLORREF, int> colours = Colours(labels.at(0));
        return colours[ground] > colours[letters] && colours[letters] > 0;
    }));
    CHECK(Caption(labels.at(1)) == "Information");
    CHECK(Caption(labels.at(2)) == "Obiger Text wurde in die Zwisachenablage kopiert und kann weiterverwendet werden!");
    const std::string report = Caption(labels.at(0));
    CHECK(report.ends_with("\r\n\r\n[Status]\r\n" + status + "\r\n"));
    CHECK(ClipboardContent() == report);
    ::PostMessageA(window, WM_CLOSE, 0, 0);
    CHECK(program.EndedWell());
    CHECK(ClipboardContent() == report);  // which outlives the program
}

}  // namespace

TEST_CASE("The check that fails shows its window, red, and nothing else" * doctest::test_suite("anywhere")) {
    CheckReport(Program(Start(), "-1"), RGB(255, 0, 0), RGB(255, 255, 255),
                "Error=*** Es fehlen Vandrel Core Elements! ***");
}

TEST_CASE("The check that fails at its first look alone shows its window, green; panel and hint follow its size") {
    const Program program(Start(), "once");
    const HWND window = Shown(CheckTitle);
    const std::vector<HWND> labels = Parts(window);
    CHECK((::GetWindowLongA(window, GWL_STYLE) & WS_THICKFRAME) != 0);
    ::SetWindowPos(window, nullptr, 0, 0, 400, 590, SWP_NOZORDER | SWP_NOACTIVATE);
    using Spot = std::array<int, 4>;
    CHECK(Eventually([&] { return Place(window) == Spot{0, 0, 582, 590}; }));  // it never gets less wide
    CHECK(Eventually([&] { return Place(labels.at(0)) == Spot{16, 32, 538, 491}; }));
    CHECK(Eventually([&] { return Place(labels.at(2)) == Spot{16, 531, 537, 17}; }));
    CHECK(Place(labels.at(1)) == Spot{16, 8, 361, 25});
    CheckReport(program, RGB(0, 255, 0), RGB(0, 0, 0), "OK");
}

TEST_CASE("Anything but the option alone ends the program at once" * doctest::test_suite("anywhere")) {
    for (const std::string tail : {"", " -MASTER", " -Master", " \"-master\"", " -master x", " -master\t"}) {
        CAPTURE(tail);
        CHECK(Program(Start(tail)).EndedWell());
    }
}

// What the mouse does here may be lost on a virtual display, where a window that comes or goes takes it; so it is done
// again.
TEST_CASE("The window has its told form, shows tool tips, and ends by a click of the mouse") {
    const Session session;
    const HWND window = session.window;
    CHECK((::GetWindowLongA(window, GWL_STYLE) & (WS_OVERLAPPEDWINDOW)) == (WS_CAPTION | WS_SYSMENU));
    RECT client{};
    ::GetClientRect(window, &client);
    CHECK(client.right == 237);  // in dots at 96 to the inch
    CHECK(client.bottom == 142);
    // In the order of the tab key.
    const std::vector<HWND> buttons = Parts(window);
    REQUIRE(buttons.size() == 6);
    CHECK(Place(buttons.back()) == std::array{128, 96, 89, 25});
    for (const WPARAM key : {VK_TAB, VK_RIGHT, VK_DOWN}) {
        for (const std::string caption : {"Exportieren", "Importieren", "Demo", "L\xF6schen", "Bearbeiten", "Fertig"}) {
            const HWND button = Focus(window);
            CHECK(Caption(button) == caption);
            Press(button, key);
            CHECK(Eventually([&] { return Focus(window) != button; }));
        }
    }
    CHECK(Focus(window) == buttons.front());
    Press(buttons.front(), VK_LEFT);
    CHECK(Eventually([&] { return Focus(window) == buttons.back(); }));
    Press(buttons.back(), VK_UP);
    CHECK(Eventually([&] { return Focus(window) == buttons.at(4); }));
    CHECK(Eventually([&] {
        Point(window);  // between the buttons
        StillAfterAWhile([&] { return ToolTip().empty(); });
        Point(buttons.back());
        return StillAfterAWhile([&] { return ToolTip() == "Programm beenden."; });
    }));
    CHECK(Eventually([&] {
        Point(buttons.back());
        ::mouse_event(MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        return StillAfterAWhile([&] { return !::IsWindow(window); });
    }));
    CHECK(session.EndedWell());
}

TEST_CASE("Import and Clear ask; Yes runs them and tells how it went, and anything else changes nothing") {
    const auto enter = [](HWND button) { Press(button, VK_RETURN); };
    const auto space = [](HWND button) { Press(button, VK_SPACE); };
    const std::string first = "[Tallora]\r\n(Standard)=3\r\notto=5\r\n\r\n[Reporting]\r\nruedi=99\r\n\r\n[End]\r\n";
    const std::string firstHeld = "=3 otto=5 | ruedi=99 | ";
    struct {
        std::string button;
        void (*press)(HWND);
        std::string file;  // empty for none
        int answer;
        std::string message;
        std::string held;
    } const flows[] = {
        {Import, Click, first, IDYES, "Fertig", firstHeld}, {Import, enter, "", IDYES, "Fehlgeschlagen!", firstHeld},
        {Clear, Click, "", CloseBox, "", firstHeld},        {Clear, space, "", IDCANCEL, "", firstHeld},
        {Clear, DoubleClick, "", IDYES, "Fertig", "| | "},
    };
    const Session session;
    for (const auto& flow : flows) {
        CAPTURE(flow.button);
        CAPTURE(flow.answer);
        std::filesystem::remove(session.machine.ControlFile());
        if (!flow.file.empty()) {
            FileContent(session.machine.ControlFile(), flow.file);
        }
        const HWND button = session.Button(flow.button);
        flow.press(button);
        CheckBox(ProgramTitle, (flow.button == Import ? ImportEffect : ClearEffect) + "\r\nWeiterfahren?",
                 {IDYES, IDNO, IDCANCEL}, flow.answer);
        if (!flow.message.empty()) {
            CheckBox(flow.button, flow.message, {IDOK}, IDOK);
        }
        CHECK(Eventually([&] { return session.Waiting() && Focus(session.window) == button; }));
        CHECK(StillAfterAWhile([&] { return session.Waiting(); }));
        CHECK(ForcedVersions() == flow.held);
    }
}

TEST_CASE("The registry editor takes what vtv4v-reg prepares") {
    const Session session;
    const std::string file = session.machine.ControlFile();
    FileContent(file, "[Tallora]\n=3\nJ\xF6rg=1\nq\"\\u=99\n[Reporting]\nruedi=0\n");
    const std::string target = "\"" + file + ".reg\"";
    // The command interpreter takes the outer quotation marks away.
    CHECK(std::system(("\"\"" + ProgramPath("vtv4v-reg.exe") + "\" \"" + file + "\" " + target + "\"").c_str()) == 0);
    CHECK(std::system(("reg import " + target).c_str()) == 0);
    CHECK(ForcedVersions() == "=3 J\xF6rg=1 q\"\\u=99 | ruedi=0 | ");
}

// The impatient user's messages stand behind the answer in the program's queue, so that the import finds them.
TEST_CASE("What is clicked while an import runs is passed over, and a close waits for its end") {
    const Session session;
    FileContent(session.machine.ControlFile(), "[Tallora]\r\na=1\r\nb=2\r\n[Reporting]\r\nc=3\r\n");
    Click(session.Button(Import));
    const HWND question = Box();
    DoubleClick(::GetDlgItem(question, IDYES));
    DoubleClick(session.Button(Import));
    Click(session.Button(Clear));
    Click(session.Button("Fertig"));
    ::PostMessageA(session.window, WM_CLOSE, 0, 0);
    REQUIRE(Eventually([&] { return !::IsWindow(question); }));
    const HWND box = Box();
    CHECK(Caption(box) == Import);
    CHECK(::IsWindowVisible(session.window));
    CHECK(ForcedVersions() == "a=1 b=2 | c=3 | ");
    Answer(box, IDOK);
    CHECK(session.EndedWell());
}

TEST_CASE("Export and Edit open the control file or tell why not; Demo writes it and does no more") {
    const Session session;
    const std::string file = session.machine.ControlFile();
    const std::string head =
        "Kann Version File nicht \xF6"
        "ffnen:\r\n" +
        file + "\r\n";
    Click(session.Button("Bearbeiten"));
    CheckBox(ProgramTitle, head + "File not found", {IDOK}, IDOK);
    ::RegSetValueA(HKEY_CLASSES_ROOT, ".txt", REG_SZ, "vtv4v.none", 0);
    Click(session.Button("Exportieren"));
    CheckBox(ProgramTitle, head + "No association for file extension", {IDOK}, IDOK);
    CHECK(FileContent(file).value_or("").ends_with("[End]\r\n"));
    // An editor that notes what it is asked to open and ends at once.
    const std::string note = file + ".opened";
    ::RegSetValueA(HKEY_CLASSES_ROOT, ".txt", REG_SZ, "vtv4v.driver", 0);
    ::RegSetValueA(HKEY_CLASSES_ROOT, "vtv4v.driver\\shell\\open\\command", REG_SZ,
                   ("cmd.exe /c echo %1>>\"" + note + "\"").c_str(), 0);
    std::string opened;
    for (const std::string button : {"Exportieren", "Bearbeiten"}) {
        Click(session.Button(button));
        opened += file + "\r\n";
        CHECK(Eventually([&] { return FileContent(note) == opened; }));
    }
    Click(session.Button("Demo"));
    CHECK(Eventually([&] { return FileContent(file).value_or("").ends_with("ruedi=99\r\n\r\n\r\n[End]\r\n"); }));
    CHECK(StillAfterAWhile([&] { return session.Waiting() && FileContent(note) == opened; }));
    CHECK(ForcedVersions() == "| | ");
}

// What is sent arrives while the program's own loop waits. Nothing else may wake that, as a mouse over the window does.
TEST_CASE("A window that becomes active again keeps focus and task bar; Escape does nothing; what is sent ends it") {
    ::SetCursorPos(9999, 9999);
    const Session session("\"" + ProgramPath().insert(2, "\\a b\\..") + "\"   -master  ");
    Press(Focus(session.window), VK_TAB);
    const HWND import = session.Button(Import);
    REQUIRE(Eventually([&] { return Focus(session.window) == import; }));
    Press(import, VK_ESCAPE);
    ::SetWindowLongA(session.window, GWL_EXSTYLE, 0);
    ::SendMessageA(session.window, WM_ACTIVATE, WA_INACTIVE, 0);
    ::SendMessageA(session.window, WM_ACTIVATE, WA_ACTIVE, 0);
    CHECK(StillAfterAWhile([&] { return session.Waiting() && Focus(session.window) == import; }));
    CHECK(session.InTaskBar());
    ::SendMessageA(session.window, WM_CLOSE, 0, 0);
    CHECK(session.EndedWell());
}
