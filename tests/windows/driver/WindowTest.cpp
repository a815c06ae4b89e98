#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>

#include "Program.h"

// The program as the administrator meets it: windows, mouse, keyboard, message boxes.

namespace {

constexpr char MainTitle[] = "VTV4 Version Controller";
const std::string ProgramTitle = "Vandrel Tallora V4 Version Controller";
const std::string ImportEffect =
    "Die Steuerungs-Datei wird importiert. Die neuen Versions-Einstellungen werden gesetzt.";
const std::string ClearEffect = "Alle Versions-Einstellungen werden gel\xF6scht.";
const std::string Import = "Importieren";
const std::string Clear = "L\xF6schen";

const std::string Tables = "Software\\Vandrel\\Tallora";

// Removes the forced versions from the machine, which is why these tests run on one made for them.
const std::string& TablesRemoved(const std::string& start) {
    const LSTATUS status = ::RegDeleteTreeA(HKEY_LOCAL_MACHINE, Tables.c_str());
    REQUIRE((status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND));
    return start;
}

// The program with its window open, on a machine without forced versions.
class Session : public Program {
public:
    // Waits until the window is in the task bar, for which it goes and comes once.
    explicit Session(const std::string& start = Start(), WORD show = SW_SHOWNORMAL)
        : Program(TablesRemoved(start), {}, show) {
        REQUIRE(Eventually([this] { return InTaskBar() && Waiting() && Focus(window) != nullptr; }));
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
        char name[1024];
        DWORD length = sizeof name;
        DWORD type = 0;
        DWORD number = 0;
        DWORD size = sizeof number;
        for (DWORD index = 0; ::RegEnumValueA(key, index, name, &length, nullptr, &type,
                                              reinterpret_cast<BYTE*>(&number), &size) == ERROR_SUCCESS;
             ++index, length = sizeof name, size = sizeof number) {
            CHECK(type == REG_DWORD);
            held += std::string(name, length) + "=" + std::to_string(number) + " ";
        }
        ::RegCloseKey(key);
        held += "| ";
    }
    return held;
}

// Runs a command line to its end, and gives its exit code.
DWORD RunToEnd(std::string commandLine) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    REQUIRE(::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr,
                             &startup, &process));
    DWORD code = 0;
    CHECK(::WaitForSingleObject(process.hProcess, 30000) == WAIT_OBJECT_0);
    ::GetExitCodeProcess(process.hProcess, &code);
    ::CloseHandle(process.hProcess);
    ::CloseHandle(process.hThread);
    return code;
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
    CHECK(Caption(Parts(box, "Static").at(1)) == text);  // behind the icon
    std::vector<int> shown;
    for (const HWND button : Parts(box, "Button")) {
        shown.push_back(::GetDlgCtrlID(button));
    }
    CHECK(shown == buttons);
    CHECK(::GetDlgCtrlID(Focus(box)) == buttons.front());
    Answer(box, answer);
}

}  // namespace

// What the mouse does here may be lost on a virtual display, where a window that comes or goes takes it; so it is done
// again.
TEST_CASE("The window has its told form, shows tool tips, and ends by a click of the mouse") {
    const Session session(Start(), SW_SHOWMAXIMIZED);
    const HWND window = session.window;
    CHECK((::GetWindowLongA(window, GWL_STYLE) & (WS_OVERLAPPEDWINDOW)) == (WS_CAPTION | WS_SYSMENU));
    const HMODULE program = ::LoadLibraryExA(ProgramPath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    CHECK(::FindResourceA(program, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(14)) != nullptr);  // RT_GROUP_ICON
    RECT client{};
    ::GetClientRect(window, &client);
    CHECK(client.right == 237);
    CHECK(client.bottom == 142);
    // In the order of the tab key; places in dots at 96 to the inch.
    struct {
        std::string caption;
        int left, top;
        std::string toolTip;
    } const forms[] = {
        {"Exportieren", 16, 16,
         "Die aktuellen Versions-Einstellungen werden in die Steuerungs-Datei exportiert. Die kann angepasst und "
         "abgespeichert werden."},
        {Import, 128, 16, ImportEffect},
        {"Demo", 16, 56,
         "Es wird eine Steuerungs-Datei zu Demonstrationszwecken erstellt. Die kann angepasst und abgespeichert "
         "werden."},
        {Clear, 16, 96, ClearEffect},
        {"Bearbeiten", 128, 56, "Die Steuerungs-Datei bearbeiten."},
        {"Fertig", 128, 96, "Programm beenden."},
    };
    const std::vector<HWND> buttons = Parts(window);
    REQUIRE(buttons.size() == std::size(forms));
    CHECK(Focus(window) == buttons.front());
    for (std::size_t number = 0; number < buttons.size(); ++number) {
        CAPTURE(number);
        CHECK(Caption(buttons[number]) == forms[number].caption);
        CHECK(Place(buttons[number]) == Spot{forms[number].left, forms[number].top, 89, 25});
        CHECK(Eventually([&] {
            Point(window);  // between the buttons
            StillAfterAWhile([&] { return ToolTip(window).empty(); });
            Point(buttons[number]);
            return StillAfterAWhile([&] { return ToolTip(window) == forms[number].toolTip; });
        }));
        const HWND next = buttons[(number + 1) % buttons.size()];
        Press(Focus(window), VK_TAB);
        CHECK(Eventually([&] { return Focus(window) == next; }));
    }
    CHECK(Eventually([&] {
        Point(buttons.back());
        ::mouse_event(MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        return StillAfterAWhile([&] { return !::IsWindow(window); });
    }));
    CHECK(session.EndedWell());
}

TEST_CASE("Anything but the option alone ends the program at once" * doctest::test_suite("anywhere")) {
    for (const std::string tail : {"", " -MASTER", " -Master", " \"-master\"", " -master x", " -master\t"}) {
        CAPTURE(tail);
        CHECK(Program(Start(tail)).EndedWell());
    }
}

TEST_CASE("Import and Clear ask; Yes runs them and tells how it went, and anything else changes nothing") {
    const auto enter = [](HWND button) { Press(button, VK_RETURN); };
    const auto space = [](HWND button) { Press(button, VK_SPACE); };
    const std::string done = "Fertig";
    const std::string first = "[Tallora]\r\n(Standard)=3\r\notto=5\r\n\r\n[Reporting]\r\nruedi=99\r\n\r\n[End]\r\n";
    const std::string firstHeld = "=3 otto=5 | ruedi=99 | ";
    const std::string second = "[Tallora]\r\nhugo=0\r\n\r\n[End]\r\n";
    struct {
        std::string button;
        void (*press)(HWND);
        std::string file;  // empty for none
        int answer;
        std::string message;
        std::string held;
    } const flows[] = {
        {Import, Click, first, IDYES, done, firstHeld},   {Import, Click, "", IDYES, "Fehlgeschlagen!", firstHeld},
        {Import, enter, second, IDNO, "", firstHeld},     {Import, space, second, IDCANCEL, "", firstHeld},
        {Import, Click, second, CloseBox, "", firstHeld}, {Import, DoubleClick, second, IDYES, done, "hugo=0 | | "},
        {Clear, Click, "", IDNO, "", "hugo=0 | | "},      {Clear, enter, "", IDCANCEL, "", "hugo=0 | | "},
        {Clear, space, "", CloseBox, "", "hugo=0 | | "},  {Clear, DoubleClick, "", IDYES, done, "| | "},
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

TEST_CASE("What vtv4v-reg prepares leaves the tables that an import of the same control file leaves") {
    const Session session;
    const std::string file = session.machine.ControlFile();
    FileContent(
        file,
        "[Info]\r\n(Standard)=1\n[Reporting]\rhugo=0\nHugo=2\n[Tallora]\nJ\xD6rg=1\nj\xF6rg=5\n\xDF\x80\x9F=99\n"
        "a =1\n  c=1  \n=5\nx=7;y=8\nz=1;bad\nbad\na=b=1\nn=-1\nt=Demo\n; remark\nq\"\\u=1\n\t[Tallora]\nm= 2\n\n"
        "e=1e1\nh=&H1F\nf=2147483647\n@=1\n'%s'=1\nk=1;\nu=1=\nd=0.5\n[Tallora) \na b=4\n[Reporting\ng=1\n");
    Click(session.Button(Import));
    Answer(Box(), IDYES);
    Answer(Box(), IDOK);
    REQUIRE(Eventually([&] { return session.Waiting(); }));
    const std::string imported = ForcedVersions();
    CHECK(std::ranges::count(imported, '=') > 10);
    TablesRemoved({});
    CHECK(RunToEnd("\"" + ProgramPath().insert(ProgramPath().rfind('.'), "-reg") + "\" \"" + file + "\" \"" + file +
                   ".reg\"") == 1);
    CHECK(RunToEnd("reg import \"" + file + ".reg\"") == 0);
    CHECK(ForcedVersions() == imported);
}

// The impatient user's messages stand behind the answer in the program's queue, so that the import finds them.
TEST_CASE("What is clicked while an import runs is passed over, and a close waits for its end") {
    constexpr int entries = 1000;
    std::string file = "[Tallora]\r\n";
    for (int number = 0; number < entries; ++number) {
        file += "user" + std::to_string(number) + "=1\r\n";
    }
    for (const bool closes : {false, true}) {
        CAPTURE(closes);
        const Session session;
        FileContent(session.machine.ControlFile(), file);
        Click(session.Button(Import));
        const HWND question = Box();
        DoubleClick(::GetDlgItem(question, IDYES));
        if (closes) {
            CloseByFrame(session.window);
        } else {
            DoubleClick(session.Button(Import));
            Click(session.Button(Clear));
            Click(session.Button("Fertig"));
        }
        REQUIRE(Eventually([&] { return !::IsWindow(question); }));
        const HWND box = Box();
        CHECK(Caption(box) == Import);
        CHECK(::IsWindowVisible(session.window));
        const std::string held = ForcedVersions();
        CHECK(std::ranges::count(held, '=') == entries);
        Answer(box, IDOK);
        CHECK(closes ? session.EndedWell() : StillAfterAWhile([&] { return session.Waiting(); }));
    }
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
    const ClassText noEditor(".txt", "vtv4v.none");
    Click(session.Button("Exportieren"));
    CheckBox(ProgramTitle, head + "No association for file extension", {IDOK}, IDOK);
    // An editor that notes what it is asked to open and ends at once.
    const std::string note = file + ".opened";
    const ClassText editor(".txt", "vtv4v.driver");
    const ClassText command("vtv4v.driver\\shell\\open\\command", "cmd.exe /c echo %1>>\"" + note + "\"");
    std::string opened;
    for (const std::string button : {"Exportieren", "Bearbeiten"}) {
        Click(session.Button(button));
        opened += file + "\r\n";
        CHECK(Eventually([&] { return FileContent(note) == opened; }));
    }
    CHECK(FileContent(file).value_or("").ends_with("\r\n[Tallora]\r\n[Reporting]\r\n\r\n[End]\r\n"));
    Click(session.Button("Demo"));
    CHECK(Eventually([&] { return FileContent(file).value_or("").ends_with("ruedi=99\r\n\r\n\r\n[End]\r\n"); }));
    CHECK(StillAfterAWhile([&] { return session.Waiting() && FileContent(note) == opened; }));
    CHECK(ForcedVersions() == "| | ");
}

TEST_CASE("A window that becomes active again keeps its focus and its place in the task bar; Escape does nothing") {
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
}

// What is sent arrives while the program's own loop waits. Nothing else may wake that, as a mouse over the window does.
TEST_CASE("A window that is closed, or whose button is told to, by a message that is sent ends the process") {
    ::SetCursorPos(9999, 9999);
    for (const bool closes : {false, true}) {
        CAPTURE(closes);
        const Session session;
        CHECK(StillAfterAWhile([&] { return session.Waiting(); }));
        ::SendMessageA(closes ? session.window : session.Button("Fertig"), closes ? WM_CLOSE : BM_CLICK, 0, 0);
        CHECK(session.EndedWell());
    }
}
