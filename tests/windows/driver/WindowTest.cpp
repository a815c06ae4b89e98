#include <doctest/doctest.h>

#include <array>
#include <cstdlib>
#include <filesystem>

#include "Session.h"

// The program as the administrator meets it: windows, mouse, keyboard, message boxes.

namespace {

const std::string ProgramTitle = "Vandrel Tallora V4 Version Controller";
const std::string ImportEffect =
    "Die Steuerungs-Datei wird importiert. Die neuen Versions-Einstellungen werden gesetzt.";
const std::string ClearEffect = "Alle Versions-Einstellungen werden gel\xF6scht.";
const std::string Import = "Importieren";
const std::string Clear = "L\xF6schen";

const std::string ControlFileText =
    "[Tallora]\r\n(Standard)=3\r\nhugo=0\r\n\r\n[Reporting]\r\nruedi=99\r\n\r\n[End]\r\n";

// Checks the box that the program shows, whole, and answers it.
void CheckBox(const Session& session, const std::string& title, const std::string& text, LPCSTR icon,
              const std::vector<int>& buttons, int answer) {
    const HWND box = session.program.Box();
    const std::vector<HWND> labels = Children(box, "Static");
    REQUIRE(labels.size() == 2);
    CHECK(Caption(box) == title);
    CHECK(Caption(labels[1]) == text);
    const Dots picture = ScreenPlace(labels[0]);
    CHECK(Eventually([&] { return Picture(picture) == Picture(picture, icon); }));
    std::vector<int> shown;
    for (const HWND button : Children(box, "Button")) {
        shown.push_back(::GetDlgCtrlID(button));
    }
    CHECK(shown == buttons);
    CHECK(::GetDlgCtrlID(Focus(box)) == buttons.front());
    if (answer == IDYES) {
        Screenshot("confirmation");
    }
    Answer(box, answer);
}

}  // namespace

// What the mouse does here may be lost on a virtual display, where a window that comes or goes takes it; so it is done
// again.
TEST_CASE("The window has its told form, shows tool tips, and ends by a click of the mouse") {
    const Session session;
    const HWND window = session.window;
    const LONG style = ::GetWindowLongA(window, GWL_STYLE);
    CHECK((style & (WS_CAPTION | WS_SYSMENU)) == (WS_CAPTION | WS_SYSMENU));
    CHECK((style & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_THICKFRAME)) == 0);
    CHECK((::GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_APPWINDOW) != 0);
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
    const std::vector<HWND> buttons = Children(window);
    REQUIRE(buttons.size() == std::size(forms));
    CHECK(Eventually([&] { return Focus(window) == buttons.front(); }));
    Screenshot("window");
    for (std::size_t number = 0; number < buttons.size(); ++number) {
        CAPTURE(number);
        CHECK(Caption(buttons[number]) == forms[number].caption);
        CHECK(Place(buttons[number]) == Dots{forms[number].left, forms[number].top, 89, 25});
        CHECK(Eventually([&] {
            Point(window);  // between the buttons
            StillAfterAWhile([&] { return session.program.ToolTip().empty(); });
            Point(buttons[number]);
            return StillAfterAWhile([&] { return session.program.ToolTip() == forms[number].toolTip; });
        }));
        const HWND next = buttons[(number + 1) % buttons.size()];
        Press(Focus(window), VK_TAB);
        CHECK(Eventually([&] { return Focus(window) == next; }));
    }
    Screenshot("tooltip");
    CHECK(Eventually([&] {
        Point(buttons.back());
        ::mouse_event(MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        return StillAfterAWhile([&] { return !::IsWindow(window); });
    }));
    CHECK(session.program.Ended() == 0);
}

// A window's own icon cannot be asked for from outside everywhere.
TEST_CASE("The program file holds the window's icon") {
    const HMODULE program = ::LoadLibraryExA(ProgramPath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HRSRC found = ::FindResourceA(program, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(14));  // RT_GROUP_ICON
    REQUIRE(found != nullptr);
    const auto* const group = static_cast<const BYTE*>(::LockResource(::LoadResource(program, found)));
    CHECK(group[4] == 1);   // pictures
    CHECK(group[6] == 32);  // width
    CHECK(group[7] == 32);  // height
    CHECK(group[8] == 16);  // colours
    ::FreeLibrary(program);
}

TEST_CASE("Only the option alone opens the window") {
    const TestMachine machine;
    for (const std::string tail : {"", " -MASTER", " -Master", " \"-master\"", " -master x", " -master\t"}) {
        CAPTURE(tail);
        CHECK(Program(ProgramPath() + tail).Ended() == 0);
    }
    for (const std::string& start : {ProgramPath() + "   -master  ", "\"" + ProgramPath() + "\" -master"}) {
        CHECK(Program(start).Window("VTV4 Version Controller") != nullptr);
    }
}

TEST_CASE("Import and Clear ask; Yes runs them and tells how it went, and anything else changes nothing") {
    const auto enter = [](HWND button) { Press(button, VK_RETURN); };
    const auto space = [](HWND button) { Press(button, VK_SPACE); };
    const std::string done = "Fertig";
    const Tables before = {{{"", 3}, {"otto", 5}}, {{"", 1}}};
    const Tables imported = {{{"", 3}, {"hugo", 0}}, {{"ruedi", 99}}};
    struct {
        std::string button;
        void (*press)(HWND);
        bool hasFile;
        int answer;
        std::string message;
        Tables after;
    } const flows[] = {
        {Import, Click, false, IDYES, "Fehlgeschlagen!", before},
        {Import, enter, true, IDNO, "", before},
        {Import, space, true, IDCANCEL, "", before},
        {Import, Click, true, CloseBox, "", before},
        {Import, DoubleClick, true, IDYES, done, imported},
        {Clear, Click, false, IDNO, "", before},
        {Clear, enter, false, IDCANCEL, "", before},
        {Clear, space, false, CloseBox, "", before},
        {Clear, DoubleClick, false, IDYES, done, {}},
    };
    const Session session;
    for (const auto& flow : flows) {
        CAPTURE(flow.button);
        CAPTURE(flow.answer);
        TablesSet(before);
        std::filesystem::remove(session.machine.ControlFile());
        if (flow.hasFile) {
            FileContent(session.machine.ControlFile(), ControlFileText);
        }
        const HWND button = session.Button(flow.button);
        flow.press(button);
        CheckBox(session, ProgramTitle, (flow.button == Import ? ImportEffect : ClearEffect) + "\r\nWeiterfahren?",
                 IDI_QUESTION, {IDYES, IDNO, IDCANCEL}, flow.answer);
        if (!flow.message.empty()) {
            CheckBox(session, flow.button, flow.message, flow.message == done ? IDI_INFORMATION : IDI_ERROR, {IDOK},
                     IDOK);
        }
        CHECK(Eventually([&] { return session.Waiting() && Focus(session.window) == button; }));
        CHECK(StillAfterAWhile([&] { return session.Waiting(); }));
        CHECK(TablesNow() == flow.after);
    }
}

TEST_CASE("Export and Edit open the control file or tell why not; Demo writes it and does no more") {
    const Session session;
    const std::string file = session.machine.ControlFile();
    const std::string head =
        "Kann Version File nicht \xF6"
        "ffnen:\r\n" +
        file + "\r\n";
    const Tables tables = {{{"", 3}, {"otto", 5}}, {}};
    TablesSet(tables);
    session.ClickButton("Bearbeiten");
    CheckBox(session, ProgramTitle, head + "File not found", IDI_WARNING, {IDOK}, IDOK);
    {
        const ClassChange noEditor(".txt", "vtv4v.none");
        session.ClickButton("Exportieren");
        CheckBox(session, ProgramTitle, head + "No association for file extension", IDI_WARNING, {IDOK}, IDOK);
        CHECK(FileContent(file).has_value());
    }
    // An editor that notes what it is asked to open and ends at once.
    const std::string note = file + ".opened";
    const ClassChange editor(".txt", "vtv4v.driver");
    const ClassChange command("vtv4v.driver\\shell\\open\\command", "cmd.exe /c echo %1>>\"" + note + "\"");
    const auto opened = [&] { return FileContent(note).value_or(""); };
    FileContent(file, "earlier");
    session.ClickButton("Exportieren");
    CHECK(Eventually([&] { return opened() == file + "\r\n"; }));
    CHECK(FileContent(file).value_or("").ends_with(
        "\r\n[Tallora]\r\n(Standard)=3\r\notto=5\r\n\r\n[Reporting]\r\n\r\n[End]\r\n"));
    session.ClickButton("Bearbeiten");
    CHECK(Eventually([&] { return opened() == file + "\r\n" + file + "\r\n"; }));
    std::filesystem::remove(note);
    std::filesystem::remove(file);
    session.ClickButton("Demo");
    CHECK(Eventually([&] { return FileContent(file).has_value(); }));
    CHECK(StillAfterAWhile([&] { return session.Waiting() && opened().empty(); }));
    const std::string demo = FileContent(file).value_or("");
    CHECK(demo.starts_with("[Info]\r\nFile=" + file + "\r\nUser=hugo\r\nTimeStamp="));
    CHECK(
        demo.ends_with("[Tallora]\r\n(Standard)=3\r\nhugo=0\r\nruedi=1\r\n\r\n"
                       "[Reporting]\r\n(Standard)=3\r\nhugo=1\r\nruedi=99\r\n\r\n\r\n[End]\r\n"));
    CHECK(TablesNow() == tables);
}

// The number of rounds is $VTV4V_ROUNDS; a thousand take minutes.
TEST_CASE("Rounds of all operations leave nothing behind in the system") {
    const Session session;
    const ClassChange noEditor(".txt", "vtv4v.none");  // an editor would take the front from the boxes that follow
    const auto round = [&] {
        session.ClickButton("Exportieren");
        Answer(session.program.Box(), IDOK);
        for (const std::string& button : {Import, Clear}) {
            session.ClickButton(button);
            Answer(session.program.Box(), IDYES);
            Answer(session.program.Box(), IDOK);
            REQUIRE(Eventually([&] { return session.Waiting(); }));
        }
    };
    char text[16];
    const int rounds = ::GetEnvironmentVariableA("VTV4V_ROUNDS", text, sizeof text) == 0 ? 20 : std::atoi(text);
    round();
    const HeldObjects first = session.program.Objects();
    REQUIRE(first.handles > 0);
    REQUIRE(first.drawing > 0);
    REQUIRE(first.user > 0);
    for (int number = 1; number < rounds; ++number) {
        round();
    }
    HeldObjects last{};
    // The system keeps some drawing objects for the next time, a dozen at most. A leak is as many as the rounds.
    CHECK(Eventually([&] {
        last = session.program.Objects();
        return last.handles == first.handles && last.user == first.user && last.drawing <= first.drawing + 12;
    }));
    MESSAGE(rounds, " rounds: handles ", first.handles, " then ", last.handles, ", drawing objects ", first.drawing,
            " then ", last.drawing, ", user objects ", first.user, " then ", last.user);
}

// What other programs send arrives without passing the program's own loop.
TEST_CASE("Fertig and the close box end the process, posted or sent") {
    void (*const ends[])(const Session&) = {
        [](const Session& session) { session.ClickButton("Fertig"); },
        [](const Session& session) { ::SendMessageA(session.Button("Fertig"), BM_CLICK, 0, 0); },
        [](const Session& session) { CloseByFrame(session.window); },
        [](const Session& session) { ::SendMessageA(session.window, WM_CLOSE, 0, 0); },
    };
    for (const auto& end : ends) {
        CAPTURE(&end - ends);
        const Session session;
        end(session);
        CHECK(session.program.Ended() == 0);
        CHECK_FALSE(FileContent(session.machine.ControlFile()).has_value());
        CHECK(TablesNow() == Tables{});
    }
}

TEST_CASE("A window that becomes active again keeps its focus and its place in the task bar; Escape does nothing") {
    const Session session;
    Press(Focus(session.window), VK_TAB);
    const HWND import = session.Button(Import);
    REQUIRE(Eventually([&] { return Focus(session.window) == import; }));
    Press(import, VK_ESCAPE);
    const LONG style = ::GetWindowLongA(session.window, GWL_EXSTYLE);
    ::SetWindowLongA(session.window, GWL_EXSTYLE, style & ~static_cast<LONG>(WS_EX_APPWINDOW));
    ::SendMessageA(session.window, WM_ACTIVATE, WA_INACTIVE, 0);
    ::SendMessageA(session.window, WM_ACTIVATE, WA_ACTIVE, 0);
    CHECK(StillAfterAWhile([&] { return session.Waiting() && Focus(session.window) == import; }));
    CHECK((::GetWindowLongA(session.window, GWL_EXSTYLE) & WS_EX_APPWINDOW) != 0);
}
