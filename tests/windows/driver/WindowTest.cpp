#include <doctest/doctest.h>

#include <array>
#include <cstdlib>
#include <string>

#include "Desktop.h"
#include "Editor.h"
#include "Session.h"
#include "WideText.h"

// The program as the administrator meets it: windows, mouse, keyboard, message boxes.

namespace {

const std::wstring ProgramTitle = L"Vandrel Tallora V4 Version Controller";
const std::wstring ImportEffect =
    L"Die Steuerungs-Datei wird importiert. Die neuen Versions-Einstellungen werden gesetzt.";
const std::wstring ClearEffect = L"Alle Versions-Einstellungen werden gel\u00F6scht.";

const std::string ControlFileText =
    "[Tallora]\r\n(Standard)=3\r\nhugo=0\r\n\r\n[Reporting]\r\nruedi=99\r\n\r\n[End]\r\n";

struct ButtonForm {
    std::wstring caption;
    int left;
    int top;
    std::wstring toolTip;
};

// In the order of the tab key; places in dots at 96 to the inch.
const std::vector<ButtonForm> ButtonForms = {
    {L"Exportieren", 16, 16,
     L"Die aktuellen Versions-Einstellungen werden in die Steuerungs-Datei exportiert. Die kann angepasst und "
     L"abgespeichert werden."},
    {L"Importieren", 128, 16, ImportEffect},
    {L"Demo", 16, 56,
     L"Es wird eine Steuerungs-Datei zu Demonstrationszwecken erstellt. Die kann angepasst und abgespeichert werden."},
    {L"L\u00F6schen", 16, 96, ClearEffect},
    {L"Bearbeiten", 128, 56, L"Die Steuerungs-Datei bearbeiten."},
    {L"Fertig", 128, 96, L"Programm beenden."},
};

struct BoxForm {
    std::wstring title;
    std::wstring text;
    BoxIcon icon;
    std::vector<int> buttons;
};

void CheckBox(const Box& box, const BoxForm& form) {
    REQUIRE(box.Shown());
    CHECK(box.Title() == form.title);
    CHECK(box.Text() == form.text);
    CHECK(Eventually([&] { return box.Icon() == form.icon; }));
    CHECK(box.Buttons() == form.buttons);
    CHECK(Eventually([&] { return box.FocusedButton() == form.buttons.front(); }));
}

void CheckQuestion(const Box& box, const std::wstring& effect) {
    CheckBox(box, {ProgramTitle, effect + L"\r\nWeiterfahren?", BoxIcon::Question, {IDYES, IDNO, IDCANCEL}});
}

BoxForm Message(const std::wstring& title, const std::wstring& text, BoxIcon icon) {
    return {title, text, icon, {IDOK}};
}

std::wstring WideText(const std::string& text) {
    return {text.begin(), text.end()};
}

// Answers the question behind a button with Yes and checks the message that follows.
void Confirm(const Session& session, const std::wstring& button, const std::wstring& message, BoxIcon icon) {
    session.ClickButton(button);
    Box(session.program).Answer(IDYES);
    Box closing(session.program);
    CheckBox(closing, Message(button, message, icon));
    closing.Answer(IDOK);
    CHECK(Eventually([&] { return session.Waiting(); }));
}

}  // namespace

TEST_CASE("The window has its told form") {
    const Session session;
    const HWND window = session.window;
    const LONG style = ::GetWindowLongW(window, GWL_STYLE);
    CHECK((style & WS_CAPTION) == WS_CAPTION);
    CHECK((style & WS_SYSMENU) != 0);
    CHECK((style & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_THICKFRAME)) == 0);
    CHECK((::GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_APPWINDOW) != 0);
    RECT client{};
    ::GetClientRect(window, &client);
    CHECK(client.right == 237);
    CHECK(client.bottom == 142);
    const std::vector<HWND> buttons = Children(window, L"Button");
    REQUIRE(buttons.size() == ButtonForms.size());
    for (std::size_t number = 0; number < buttons.size(); ++number) {
        const ButtonForm& form = ButtonForms[number];
        const HWND button = buttons[number];
        CAPTURE(number);
        CHECK(Caption(button) == form.caption);
        const RECT place = Place(button);
        CHECK(place.left == form.left);
        CHECK(place.top == form.top);
        CHECK(place.right - place.left == 89);
        CHECK(place.bottom - place.top == 25);
        CHECK(session.program.ToolTip(window, button) == form.toolTip);
        CHECK(::GetNextDlgTabItem(window, button, FALSE) == buttons[(number + 1) % buttons.size()]);
    }
    CHECK(Eventually([&] { return Focus(window) == buttons.front(); }));
    Screenshot("window");
}

// A window's own icon cannot be asked for from outside everywhere.
TEST_CASE("The program file holds the window's icon") {
    const HMODULE program = ::LoadLibraryExW(ProgramPath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HRSRC found = ::FindResourceA(program, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(14));  // RT_GROUP_ICON
    REQUIRE(found != nullptr);
    const auto* const group = static_cast<const BYTE*>(::LockResource(::LoadResource(program, found)));
    CHECK(group[4] == 1);   // pictures
    CHECK(group[6] == 32);  // width
    CHECK(group[7] == 32);  // height
    CHECK(group[8] == 16);  // colours
    ::FreeLibrary(program);
}

TEST_CASE("The window shows the tool tip of the button under the mouse") {
    const Session session;
    Point(session.Button(L"Exportieren"));
    HWND shown = nullptr;
    CHECK(Eventually([&] {
        shown = ::FindWindowW(L"tooltips_class32", nullptr);
        while (shown != nullptr && !::IsWindowVisible(shown)) {
            shown = ::FindWindowExW(nullptr, shown, L"tooltips_class32", nullptr);
        }
        return shown != nullptr;
    }));
    Screenshot("tooltip");
}

TEST_CASE("Only the option alone opens the window") {
    const TestMachine machine;
    for (const std::wstring tail : {L"", L" -MASTER", L" -Master", L" \"-master\"", L" -master x", L" -master\t"}) {
        CAPTURE(tail.size());
        const Program program(ProgramPath() + tail);
        CHECK(program.Ended() == 0);
    }
    for (const std::wstring& start : {ProgramPath() + L"   -master  ", L"\"" + ProgramPath() + L"\" -master"}) {
        const Program program(start);
        CHECK(program.Window(L"VTV4 Version Controller") != nullptr);
    }
}

TEST_CASE("Import asks, then replaces both tables") {
    const Session session;
    FileContent(session.machine.ControlFile(), ControlFileText);
    MainTable({{"otto", 5}});
    session.ClickButton(L"Importieren");
    Box question(session.program);
    CheckQuestion(question, ImportEffect);
    Screenshot("confirmation");
    question.Answer(IDYES);
    Box closing(session.program);
    CheckBox(closing, Message(L"Importieren", L"Fertig", BoxIcon::Information));
    closing.Answer(IDOK);
    CHECK(MainTable() == Table{{"", 3}, {"hugo", 0}});
    CHECK(ReportingTable() == Table{{"ruedi", 99}});
    CHECK(Eventually([&] { return session.Waiting() && Focus(session.window) == session.Button(L"Importieren"); }));
}

TEST_CASE("Clear asks, then empties both tables") {
    const Session session;
    MainTable({{"", 3}, {"otto", 5}});
    session.ClickButton(L"L\u00F6schen");
    Box question(session.program);
    CheckQuestion(question, ClearEffect);
    question.Answer(IDYES);
    Box closing(session.program);
    CheckBox(closing, Message(L"L\u00F6schen", L"Fertig", BoxIcon::Information));
    closing.Answer(IDOK);
    CHECK(MainTable().empty());
    Confirm(session, L"L\u00F6schen", L"Fertig", BoxIcon::Information);
}

TEST_CASE("A question that is not answered with Yes changes nothing") {
    const Session session;
    FileContent(session.machine.ControlFile(), ControlFileText);
    const Table before = {{"otto", 5}};
    MainTable(before);
    for (const std::wstring button : {L"Importieren", L"L\u00F6schen"}) {
        for (const int answer : {IDNO, IDCANCEL, 0}) {
            CAPTURE(answer);
            session.ClickButton(button);
            Box question(session.program);
            REQUIRE(question.Shown());
            answer == 0 ? question.Close() : question.Answer(answer);
            CHECK(StillAfterAWhile([&] { return session.Waiting(); }));
            CHECK(MainTable() == before);
        }
    }
}

TEST_CASE("Import without a control file fails and leaves the tables") {
    const Session session;
    const Table before = {{"otto", 5}};
    MainTable(before);
    Confirm(session, L"Importieren", L"Fehlgeschlagen!", BoxIcon::Critical);
    CHECK(MainTable() == before);
}

TEST_CASE("Demo writes the control file and neither asks nor opens it") {
    const Session session;
    Editor editor(Editor::Kind::Noting);
    session.ClickButton(L"Demo");
    CHECK(Eventually([&] { return FileContent(session.machine.ControlFile()).has_value(); }));
    CHECK(StillAfterAWhile([&] { return session.Waiting() && editor.Idle(); }));
    const std::string content = FileContent(session.machine.ControlFile()).value_or("");
    CHECK(content.starts_with("[Info]\r\nFile=" + session.machine.ControlFile() + "\r\nUser=hugo\r\nTimeStamp="));
    CHECK(
        content.ends_with("[Tallora]\r\n(Standard)=3\r\nhugo=0\r\nruedi=1\r\n\r\n"
                          "[Reporting]\r\n(Standard)=3\r\nhugo=1\r\nruedi=99\r\n\r\n\r\n[End]\r\n"));
    CHECK(MainTable().empty());
}

TEST_CASE("Export writes the tables and opens the file") {
    const Session session;
    MainTable({{"", 3}, {"otto", 5}});
    Editor editor(Editor::Kind::Noting);
    session.ClickButton(L"Exportieren");
    CHECK(editor.NextOpened() == session.machine.ControlFile());
    const std::string content = FileContent(session.machine.ControlFile()).value_or("");
    CHECK(content.find("\r\n[Tallora]\r\n(Standard)=3\r\notto=5\r\n\r\n[Reporting]\r\n\r\n[End]\r\n") !=
          std::string::npos);
    CHECK(StillAfterAWhile([&] { return session.Waiting(); }));
    session.ClickButton(L"Bearbeiten");
    CHECK(editor.NextOpened() == session.machine.ControlFile());
}

TEST_CASE("A file that cannot be opened is told") {
    const Session session;
    const std::wstring path = WideText(session.machine.ControlFile());
    const std::wstring head = L"Kann Version File nicht \u00F6ffnen:\r\n" + path + L"\r\n";
    session.ClickButton(L"Bearbeiten");
    Box missing(session.program);
    CheckBox(missing, Message(ProgramTitle, head + L"File not found", BoxIcon::Exclamation));
    missing.Answer(IDOK);
    const Editor editor(Editor::Kind::None);
    session.ClickButton(L"Exportieren");
    Box unknown(session.program);
    CheckBox(unknown, Message(ProgramTitle, head + L"No association for file extension", BoxIcon::Exclamation));
    unknown.Answer(IDOK);
    CHECK(FileContent(session.machine.ControlFile()).has_value());
}

// The number of rounds is $VTV4V_ROUNDS; a thousand take minutes.
TEST_CASE("Rounds of all operations leave nothing behind in the system") {
    const Session session;
    const Editor editor(Editor::Kind::None);  // an editor would take the front from the boxes that follow
    const auto round = [&] {
        session.ClickButton(L"Exportieren");
        Box(session.program).Answer(IDOK);
        for (const std::wstring button : {L"Importieren", L"L\u00F6schen"}) {
            session.ClickButton(button);
            Box(session.program).Answer(IDYES);
            Box(session.program).Answer(IDOK);
            REQUIRE(Eventually([&] { return session.Waiting(); }));
        }
    };
    std::array<char, 16> text{};
    const DWORD length = ::GetEnvironmentVariableA("VTV4V_ROUNDS", text.data(), static_cast<DWORD>(text.size()));
    const int rounds = length == 0 ? 20 : std::atoi(text.data());
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
    const auto asFirst = [&] {
        last = session.program.Objects();
        return last.handles == first.handles && last.user == first.user && last.drawing <= first.drawing + 12;
    };
    CHECK(Eventually(asFirst));
    MESSAGE(rounds, " rounds: handles ", first.handles, " then ", last.handles, ", drawing objects ", first.drawing,
            " then ", last.drawing, ", user objects ", first.user, " then ", last.user);
}

TEST_CASE("Both ways of ending end the process") {
    for (const bool byButton : {true, false}) {
        const Session session;
        byButton ? ClickByMouse(session.Button(L"Fertig")) : CloseByFrame(session.window);
        CHECK(session.program.Ended() == 0);
        CHECK_FALSE(FileContent(session.machine.ControlFile()).has_value());
        CHECK(MainTable().empty());
    }
}

TEST_CASE("Keys lead through the buttons; Enter and Space click, Escape does nothing") {
    const Session session;
    FileContent(session.machine.ControlFile(), ControlFileText);
    Press(VK_ESCAPE);
    CHECK(StillAfterAWhile([&] { return session.Waiting(); }));
    for (std::size_t number = 1; number <= ButtonForms.size(); ++number) {
        Press(VK_TAB);
        const HWND expected = session.Button(ButtonForms[number % ButtonForms.size()].caption);
        CHECK(Eventually([&] { return Focus(session.window) == expected; }));
    }
    Press(VK_TAB);
    const HWND import = session.Button(L"Importieren");
    REQUIRE(Eventually([&] { return Focus(session.window) == import; }));
    for (const WORD key : {WORD{VK_RETURN}, WORD{VK_SPACE}}) {
        Press(key);
        const Box question(session.program);
        CheckQuestion(question, ImportEffect);
        Press(VK_ESCAPE);
        CHECK(Eventually([&] { return session.Waiting() && Focus(session.window) == import; }));
    }
}

TEST_CASE("A window that becomes active again keeps its focus and its place in the task bar") {
    const Session session;
    Press(VK_TAB);
    const HWND import = session.Button(L"Importieren");
    REQUIRE(Eventually([&] { return Focus(session.window) == import; }));
    ::SetWindowLongW(session.window, GWL_EXSTYLE,
                     ::GetWindowLongW(session.window, GWL_EXSTYLE) & ~static_cast<LONG>(WS_EX_APPWINDOW));
    {
        const OtherWindow other;
        REQUIRE(Eventually([&] { return other.Foreground(); }));
    }
    CHECK(Eventually([&] {
        // The system may give the front to another window when one goes.
        ::SetForegroundWindow(session.window);
        return ::GetForegroundWindow() == session.window && Focus(session.window) == import &&
               (::GetWindowLongW(session.window, GWL_EXSTYLE) & WS_EX_APPWINDOW) != 0;
    }));
    CHECK(StillAfterAWhile([&] { return session.Waiting(); }));
}
