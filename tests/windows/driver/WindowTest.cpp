#include <doctest/doctest.h>

#include <algorithm>
#include <cstdlib>
#include <map>

#include "Desktop.h"
#include "TestMachine.h"

// Drives the program like a user, through windows, mouse, keyboard, message boxes and the clipboard. The test cases in
// the test suite "anywhere" also run on machines without the accounting suite, and change only the clipboard there.

namespace {

constexpr char CheckTitle[] = "Vandrel Core Elements V1";
const std::string ProgramTitle = "Vandrel Tallora V4 Version Controller";
const std::string ImportEffect =
    "Die Steuerungs-Datei wird importiert. Die neuen Versions-Einstellungen werden gesetzt.";
const std::string ClearEffect = "Alle Versions-Einstellungen werden gel\xF6scht.";
const std::string Import = "Importieren";
const std::string Clear = "L\xF6schen";

// Returns the path of a program in the parent folder of the driver's folder.
std::string ProgramPath(const std::string& name = "vtv4v.exe") {
    char driver[MAX_PATH];
    const std::string path(driver, ::GetModuleFileNameA(nullptr, driver, MAX_PATH));
    return path.substr(0, path.rfind("tests\\")) + name;
}

std::string Start(const std::string& tail = " -master") {
    return "\"" + ProgramPath() + "\"" + tail;
}

// Runs the program without a control file and terminates it on destruction.
class Program {
public:
    // `component` controls sevDTA_Init: "-1" makes every call fail, "once" only the first call.
    explicit Program(std::string commandLine = Start(), const std::string& component = "0") {
        machine.Environment("VTV4V_SEVDTA_RESULT", component);
        // The program, unlike this process, always uses the real registry.
        ::RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        ::SetProcessDPIAware();  // bounds and colours are in physical pixels
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

    // Waits for the process to exit. Returns true if it exits by itself with code 0.
    [[nodiscard]] bool ExitedCleanly() const {
        DWORD code = 1;
        return ::WaitForSingleObject(process_.hProcess, 10000) == WAIT_OBJECT_0 &&
               ::GetExitCodeProcess(process_.hProcess, &code) && code == 0;
    }

    TestMachine machine;

private:
    PROCESS_INFORMATION process_{};
};

// Runs the program until its main window is open. Deletes the machine's forced versions, so it must run on a test
// machine.
class Session : public Program {
public:
    // Waits until the window is in the taskbar, because adding it there hides the window and shows it again.
    explicit Session(const std::string& start = Start()) : Program(start) {
        REQUIRE(Eventually([this] { return InTaskBar() && Waiting() && Focus(window) != nullptr; }));
        const LSTATUS status = ::RegDeleteTreeA(HKEY_LOCAL_MACHINE, "Software\\Vandrel\\Tallora");
        REQUIRE((status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND));
    }

    [[nodiscard]] HWND Button(const std::string& caption) const {
        return ::FindWindowExA(window, nullptr, "BUTTON", caption.c_str());
    }
    // True if the window is waiting for input and no message box is showing.
    [[nodiscard]] bool Waiting() const {
        return ::IsWindowVisible(window) && ::IsWindowEnabled(window) && ::FindWindowA("#32770", nullptr) == nullptr;
    }
    [[nodiscard]] bool InTaskBar() const { return (::GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_APPWINDOW) != 0; }

    HWND window = WaitForWindow(nullptr, "VTV4 Version Controller");
};

// Runs vtv4v-reg and returns its exit code. cmd.exe removes the outer quotation marks.
int Rollout(const std::string& arguments) {
    return std::system(("\"\"" + ProgramPath("vtv4v-reg.exe") + "\" " + arguments + "\"").c_str());
}

// Exports both tables of the machine to `file` and returns the exported sections.
std::string ExportedTables(const std::string& file) {
    CHECK(Rollout("/export \"" + file + "\"") != 2);
    const std::string content = FileContent(file).value_or("");
    return content.substr(std::min(content.find("[Tallora]"), content.size()));
}

// Returns the plain text on the clipboard, or an empty string.
std::string ClipboardContent() {
    REQUIRE(Eventually([] { return ::OpenClipboard(nullptr) != FALSE; }));
    const HANDLE memory = ::GetClipboardData(CF_TEXT);
    std::string content = memory == nullptr ? "" : static_cast<const char*>(::GlobalLock(memory));
    ::GlobalUnlock(memory);
    ::CloseClipboard();
    return content;
}

// Samples the pixels of a window and returns the number of samples of each colour.
std::map<COLORREF, int> Colours(HWND window) {
    RECT bounds{};
    ::GetWindowRect(window, &bounds);
    const HDC screen = ::GetDC(nullptr);
    std::map<COLORREF, int> colours;
    for (int y = bounds.top; y < bounds.bottom; y += 3) {
        for (int x = bounds.left; x < bounds.right; x += 3) {
            ++colours[::GetPixel(screen, x, y)];
        }
    }
    ::ReleaseDC(nullptr, screen);
    return colours;
}

// Click, double-click or press a key by posting messages. Unlike real input, posted messages can't get lost when a
// window appears.
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
    RECT bounds{};
    ::GetWindowRect(window, &bounds);
    ::SetCursorPos((bounds.left + bounds.right) / 2, (bounds.top + bounds.bottom) / 2);
}

// Waits for a message box, checks it, answers it with a button (IDYES etc.), and waits until it has closed. Posts the
// button's notification instead of a click: a box in the background would miss a click, and once the program has ended,
// another window could receive it.
void CheckBox(const std::string& title, const std::string& text, const std::vector<int>& buttons, int answer) {
    const HWND box = WaitForBox();
    CHECK(Caption(box) == title);
    const HWND icon = ::FindWindowExA(box, nullptr, "Static", nullptr);
    CHECK(Caption(::FindWindowExA(box, icon, "Static", nullptr)) == text);
    for (const int button : {IDOK, IDYES, IDNO, IDCANCEL, IDABORT, IDRETRY, IDIGNORE}) {
        const bool shown = ::IsWindowVisible(::GetDlgItem(box, button));
        CHECK(shown == (std::ranges::count(buttons, button) > 0));
    }
    CHECK(::GetDlgCtrlID(Focus(box)) == buttons.front());
    ::PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(answer), 0);
    CHECK(Eventually([&] { return !::IsWindow(box); }));
}

// Verifies the contents of the check's window, then closes the window.
void CheckReport(const Program& program, COLORREF background, COLORREF text, const std::string& status) {
    const HWND window = WaitForWindow(nullptr, CheckTitle);
    const std::vector<HWND> labels = Children(window);
    CHECK(Eventually([&] {
        std::map<COLORREF, int> colours = Colours(labels.at(0));
        return colours[background] > colours[text] && colours[text] > 0;
    }));
    CHECK(Caption(labels.at(1)) == "Information");
    CHECK(Caption(labels.at(2)) == "Obiger Text wurde in die Zwisachenablage kopiert und kann weiterverwendet werden!");
    const std::string report = Caption(labels.at(0));
    CHECK(report.ends_with("\r\n\r\n[Status]\r\n" + status + "\r\n"));
    CHECK(ClipboardContent() == report);
    ::PostMessageA(window, WM_CLOSE, 0, 0);
    CHECK(program.ExitedCleanly());
    CHECK(ClipboardContent() == report);  // kept on the clipboard after the program has exited
}

}  // namespace

TEST_CASE("A failed check shows only its red window" * doctest::test_suite("anywhere")) {
    CheckReport(Program(Start(), "-1"), RGB(255, 0, 0), RGB(255, 255, 255),
                "Error=*** Es fehlen Vandrel Core Elements! ***");
}

TEST_CASE("A check that passes when repeated shows a resizable green window") {
    const Program program(Start(), "once");
    const HWND window = WaitForWindow(nullptr, CheckTitle);
    const std::vector<HWND> labels = Children(window);
    CHECK((::GetWindowLongA(window, GWL_STYLE) & WS_THICKFRAME) != 0);
    ::SetWindowPos(window, nullptr, 0, 0, 400, 590, SWP_NOZORDER | SWP_NOACTIVATE);
    using Box = std::array<int, 4>;
    CHECK(Eventually([&] { return Bounds(window) == Box{0, 0, 582, 590}; }));  // the minimum width
    CHECK(Eventually([&] { return Bounds(labels.at(0)) == Box{16, 32, 538, 491}; }));
    CHECK(Eventually([&] { return Bounds(labels.at(2)) == Box{16, 531, 537, 17}; }));
    CHECK(Bounds(labels.at(1)) == Box{16, 8, 361, 25});
    CheckReport(program, RGB(0, 255, 0), RGB(0, 0, 0), "OK");
}

TEST_CASE("The program exits immediately unless started with -master" * doctest::test_suite("anywhere")) {
    for (const std::string tail : {"", " -MASTER", " -Master", " \"-master\"", " -master x", " -master\t"}) {
        CAPTURE(tail);
        CHECK(Program(Start(tail)).ExitedCleanly());
    }
}

// Mouse actions are repeated until they work: on a virtual display, a window that appears or closes can swallow them.
TEST_CASE("The main window has the expected layout and tooltips, and Fertig closes it") {
    const Session session;
    const HWND window = session.window;
    CHECK((::GetWindowLongA(window, GWL_STYLE) & (WS_OVERLAPPEDWINDOW)) == (WS_CAPTION | WS_SYSMENU));
    RECT client{};
    ::GetClientRect(window, &client);
    CHECK((client.right == 237 && client.bottom == 142));  // in pixels at 96 DPI
    const std::vector<HWND> buttons = Children(window);
    REQUIRE(buttons.size() == 6);
    struct {
        std::string caption;
        int left, top;
        std::string toolTip;
    } const layout[] = {
        {"Exportieren", 16, 16,
         "Die aktuellen Versions-Einstellungen werden in die Steuerungs-Datei exportiert. Die kann angepasst und "
         "abgespeichert werden."},
        {Import, 128, 16, ImportEffect},
        {"Demo", 16, 56,
         "Es wird eine Steuerungs-Datei zu Demonstrationszwecken erstellt. Die kann angepasst und abgespeichert "
         "werden."},
        {Clear, 16, 96, ClearEffect},
        {"Bearbeiten", 128, 56, "Die Steuerungs-Datei bearbeiten."},
        {"Fertig", 128, 96, "Programm beenden."}};
    for (const WPARAM key : {VK_TAB, VK_RIGHT, VK_DOWN}) {
        for (const auto& [caption, left, top, toolTip] : layout) {
            const HWND button = Focus(window);
            CHECK(Caption(button) == caption);
            CHECK(Bounds(button) == std::array{left, top, 89, 25});
            Press(button, key);
            CHECK(Eventually([&] { return Focus(window) != button; }));
        }
    }
    CHECK(Focus(window) == buttons.front());
    for (std::size_t index = 0; index < buttons.size(); ++index) {
        CHECK(Eventually([&] {
            Point(window);  // between the buttons
            Point(buttons[index]);
            return StaysTrue([&] { return ToolTip() == layout[index].toolTip; });
        }));
    }
    CHECK(Eventually([&] {
        Point(buttons.back());
        ::mouse_event(MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        return StaysTrue([&] { return !::IsWindow(window); });
    }));
    CHECK(session.ExitedCleanly());
}

TEST_CASE("Import and Clear run only after Yes and then report the result") {
    const std::string file = "[Tallora]\r\n(Standard)=3\r\notto=5\r\n\r\n[Reporting]\r\nruedi=99\r\n\r\n\r\n[End]\r\n";
    struct {
        std::string button;
        void (*press)(HWND);
        int answer;
        std::string tables;
    } const flows[] = {
        {Import, Click, IDYES, file},
        {Import, [](HWND button) { Press(button, VK_RETURN); }, IDCANCEL, file},
        {Clear, Click, IDNO, file},
        {Clear, [](HWND button) { Press(button, VK_SPACE); }, IDCANCEL, file},
        {Clear, DoubleClick, IDYES, "[Tallora]\r\n[Reporting]\r\n\r\n[End]\r\n"},
    };
    const Session session;
    FileContent(session.machine.ControlFile(), file);
    for (const auto& flow : flows) {
        CAPTURE(flow.answer);
        const HWND button = session.Button(flow.button);
        flow.press(button);
        CheckBox(ProgramTitle, (flow.button == Import ? ImportEffect : ClearEffect) + "\r\nWeiterfahren?",
                 {IDYES, IDNO, IDCANCEL}, flow.answer);
        if (flow.answer == IDYES) {
            CheckBox(flow.button, "Fertig", {IDOK}, IDOK);
        }
        CHECK(Eventually([&] { return session.Waiting() && Focus(session.window) == button; }));
        CHECK(StaysTrue([&] { return session.Waiting(); }));
        CHECK(ExportedTables(session.machine.ControlFile()) == flow.tables);
    }
}

TEST_CASE("reg import accepts the file that vtv4v-reg writes") {
    const Session session;
    const std::string file = session.machine.ControlFile();
    const std::string tables =
        "[Tallora]\r\n(Standard)=3\r\nJ\xF6rg=1\r\nq\"\\u=99\r\n\r\n[Reporting]\r\nruedi=0\r\n\r\n\r\n[End]\r\n";
    FileContent(file, tables);
    const std::string target = "\"" + file + ".reg\"";
    CHECK(Rollout("\"" + file + "\" " + target) == 1);  // warns about the backslash
    CHECK(std::system(("reg import " + target).c_str()) == 0);
    CHECK(ExportedTables(file) == tables);
}

// The messages are queued behind the answer to the question, so the import receives them while it runs.
TEST_CASE("During an import, clicks are ignored, logoff is refused and closing is delayed") {
    const Session session;
    std::string file = "[Tallora]\r\n";
    for (int number = 1000; number < 3000; ++number) {
        file += std::to_string(number) + "=1\r\n";
    }
    file += "\r\n[Reporting]\r\nc=3\r\n\r\n\r\n[End]\r\n";
    FileContent(session.machine.ControlFile(), file);
    const auto mayEndSession = [&] { return ::SendMessageA(session.window, WM_QUERYENDSESSION, 0, 0) != 0; };
    Click(session.Button(Import));
    const HWND question = WaitForBox();
    CHECK_FALSE(::IsWindowEnabled(session.window));
    CHECK(mayEndSession());
    DoubleClick(::GetDlgItem(question, IDYES));
    DoubleClick(session.Button(Import));
    Click(session.Button(Clear));
    Click(session.Button("Fertig"));
    ::PostMessageA(session.window, WM_CLOSE, 0, 0);
    REQUIRE(Eventually([&] { return !::IsWindow(question); }));
    CHECK(Eventually([&] { return !mayEndSession(); }));
    WaitForBox();
    CHECK(mayEndSession());
    CHECK(::IsWindowVisible(session.window));
    CHECK(ExportedTables(session.machine.ControlFile()) == file);
    CheckBox(Import, "Fertig", {IDOK}, IDOK);
    CHECK(session.ExitedCleanly());
}

TEST_CASE("Export and Edit open the control file or report why not") {
    const Session session;
    const std::string file = session.machine.ControlFile();
    const std::string head = "Kann Version File nicht \366ffnen:\r\n" + file + "\r\n";
    Click(session.Button("Bearbeiten"));
    CheckBox(ProgramTitle, head + "File not found", {IDOK}, IDOK);
    ::RegSetValueA(HKEY_CLASSES_ROOT, ".txt", REG_SZ, "vtv4v.none", 0);
    Click(session.Button("Exportieren"));
    CheckBox(ProgramTitle, head + "No association for file extension", {IDOK}, IDOK);
    // An "editor" that writes the name of the opened file to a log.
    const std::string log = file + ".opened";
    ::RegSetValueA(HKEY_CLASSES_ROOT, ".txt", REG_SZ, "vtv4v.driver", 0);
    ::RegSetValueA(HKEY_CLASSES_ROOT, "vtv4v.driver\\shell\\open\\command", REG_SZ,
                   ("cmd.exe /c echo %1>\"" + log + "\"").c_str(), 0);
    Click(session.Button("Bearbeiten"));
    CHECK(Eventually([&] { return FileContent(log) == file + "\r\n"; }));
}

// WM_CLOSE is sent, so the program handles it while waiting in GetMessage. The mouse must not end that wait.
TEST_CASE("A reactivated window keeps its focus and taskbar button and ignores Escape") {
    ::SetCursorPos(9999, 9999);
    const Session session("\"" + ProgramPath().insert(2, "\\a b\\..") + "\"   -master  ");
    Press(Focus(session.window), VK_TAB);
    const HWND import = session.Button(Import);
    REQUIRE(Eventually([&] { return Focus(session.window) == import; }));
    Press(import, VK_ESCAPE);
    ::SetWindowLongA(session.window, GWL_EXSTYLE, 0);
    ::SendMessageA(session.window, WM_ACTIVATE, WA_INACTIVE, 0);
    ::SendMessageA(session.window, WM_ACTIVATE, WA_ACTIVE, 0);
    CHECK(StaysTrue([&] { return session.Waiting() && Focus(session.window) == import; }));
    CHECK(session.InTaskBar());
    ::SendMessageA(session.window, WM_CLOSE, 0, 0);
    CHECK(session.ExitedCleanly());
}
