#include "Check.h"
#include "platform/WindowSystem.h"
#include "platform/host/FrontEndRun.h"
#include "platform/host/WindowPicture.h"
#include "platform/host/WindowTable.h"

using namespace platform;

namespace {

Control Button(const char16_t* caption, std::int32_t left, std::int32_t top) {
    return {ControlKind::Button, caption, {left, top, 1335, 375}};
}

WindowDesign SixButtons() {
    return {u"VTV4 Version Controller",
            {3555, 2130},
            false,
            1,
            {Button(u"Exportieren", 240, 240), Button(u"Importieren", 1920, 240), Button(u"Demo", 240, 840),
             Button(u"Löschen", 240, 1440), Button(u"Bearbeiten", 1920, 840), Button(u"Fertig", 1920, 1440)}};
}

// A window whose events are noted.
struct Watched {
    std::vector<std::size_t> clicks = {};
    Handle window;

    explicit Watched(const WindowDesign& design)
        : window(WindowCreate(design, {{}, [this](std::size_t control) { clicks.push_back(control); }, {}})) {}
    ~Watched() { WindowDestroy(window); }
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;
};

}  // namespace

TEST_CASE("The window is drawn with its buttons where the twips put them, and closed at the end of input") {
    const FrontEndRun run("");
    const Watched watched(SixButtons());
    ControlToolTip(watched.window, 0, u"Exportiert.");
    WindowShowModal(watched.window);
    CHECK(run.Output() ==
          "┌─ VTV4 Version Controller ───────────────[x]┐\n"
          "│                                            │\n"
          "│   [ 1 Exportieren ]    [ 2 Importieren ]   │\n"
          "│                                            │\n"
          "│                                            │\n"
          "│   [    3 Demo     ]    [ 5 Bearbeiten  ]   │\n"
          "│                                            │\n"
          "│                                            │\n"
          "│   [   4 Löschen   ]    [   6 Fertig    ]   │\n"
          "│                                            │\n"
          "│                                            │\n"
          "└────────────────────────────────────────────┘\n"
          "Name oder Nummer · ? Erklärungen · x Schließen\n"
          "> \n");
}

TEST_CASE("A line of input clicks the button that it names or numbers, and nothing else does") {
    const std::vector<std::pair<std::string, std::vector<std::size_t>>> cases{
        {"  Exportieren \r\nexportieren\n", {0}},
        {"Löschen\nLÖSCHEN\n3\n04\n", {3, 2}},
        {"0\n7\n-1\n1 2\n99999999999999999999\nExport\n\n\t\n5000x5000\n\xFF\n6", {5}},
        {std::string(100000, '1') + "\n2\n", {1}},
        {"x\n1\n", {}},
    };
    for (const auto& [input, clicks] : cases) {
        const FrontEndRun run(input);
        Watched watched(SixButtons());
        WindowShowModal(watched.window);
        CHECK(watched.clicks == clicks);
    }
}

TEST_CASE("Hidden buttons keep their number and cannot be clicked, and a caption in two spellings must be exact") {
    const FrontEndRun run("Eins\n1\nZWEI\nzwei\n2\nZwei\n4\n");
    WindowDesign design = SixButtons();
    design.controls = {Button(u"Eins", 0, 0),
                       {ControlKind::Label, u"zwischen", {0, 500, 900, 255}},
                       Button(u"Zwei", 2000, 0),
                       Button(u"zwei", 0, 1000)};
    Watched watched(design);
    ControlVisible(watched.window, 0, false);
    WindowShowModal(watched.window);
    CHECK(watched.clicks == std::vector<std::size_t>{3, 2, 2});
    CHECK_FALSE(run.Shows("Eins ]"));
}

TEST_CASE("What can be typed and the tool tips are told, wrapped, and without a terminal's commands") {
    const FrontEndRun run("qu\x1B[2Jatsch\n?\n");
    Watched watched(SixButtons());
    ControlToolTip(watched.window, 2,
                   u"Es wird eine Steuerungs-Datei zu Demonstrationszwecken erstellt. Die kann "
                   u"angepasst und abgespeichert werden.");
    WindowShowModal(watched.window);
    CHECK(run.Shows("»qu\uFFFD[2Jatsch« gibt es hier nicht. Eingeben lässt sich: Exportieren, "));
    CHECK(
        run.Shows("\n3 Demo  Es wird eine Steuerungs-Datei zu Demonstrationszwecken erstellt. Die\n"
                  "        kann angepasst und abgespeichert werden.\nName oder"));
    CHECK(run.Output().find('\x1B') == std::string::npos);
}

TEST_CASE("A message box gives the answer of the button, of its close box, and of the end of input") {
    struct {
        const char* input;
        std::uint32_t buttons;
        std::int32_t answer;
    } const cases[] = {{"Ja\n", ButtonsYesNoCancel, AnswerYes},
                       {"3\n", ButtonsYesNoCancel, AnswerCancel},
                       {"x\n", ButtonsYesNoCancel, AnswerCancel},
                       {"OK\n?\n4\n\nnein\nNein\n", ButtonsYesNoCancel, AnswerNo},
                       {"", ButtonsYesNoCancel, AnswerCancel},
                       {"ok\nOK\n", ButtonsOk, AnswerOk},
                       {"x\n", ButtonsOk, AnswerOk},
                       {"", ButtonsOk, AnswerOk}};
    for (const auto& given : cases) {
        CAPTURE(given.input);
        const FrontEndRun run(given.input);
        CHECK(MessageBoxW(u"Weiter?", u"Titel", given.buttons + IconQuestion) == given.answer);
    }
}

TEST_CASE("A message box is drawn with icon, title and wrapped text, and its owner becomes active again") {
    const FrontEndRun run("1\nJa\n");
    int activations = 0;
    const auto clicked = [](std::size_t) {
        MessageBoxW(u"Alles wird gelöscht, und zwar von Anfang bis Ende.\r\n\r\nWeiterfahren?", u"Ein Titel",
                    ButtonsYesNoCancel + IconExclamation);
    };
    WindowShowModal(WindowCreate(SixButtons(), {[&] { ++activations; }, clicked, {}}));
    CHECK(activations == 2);
    CHECK(
        run.Shows("> 1\n"
                  "┌─ Ein Titel ──────────────────────────────────────────[x]┐\n"
                  "│                                                         │\n"
                  "│  ⚠  Alles wird gelöscht, und zwar von Anfang bis Ende.  │\n"
                  "│                                                         │\n"
                  "│     Weiterfahren?                                       │\n"
                  "│                                                         │\n"
                  "│          [►1 Ja◄]  [ 2 Nein ]  [ 3 Abbrechen ]          │\n"
                  "│                                                         │\n"
                  "└─────────────────────────────────────────────────────────┘\n"
                  "Name oder Nummer · x Schließen\n"
                  "> Ja\n"));
}

TEST_CASE("Hiding and showing the window while it becomes active does not end its modal show") {
    const FrontEndRun run("4\n6\n");
    Handle window = 0;
    int activations = 0;
    std::vector<std::size_t> clicks;
    const auto activated = [&] {
        if (++activations == 1) {
            CHECK(LockWindowUpdate(GetDesktopWindow()));
            CHECK_FALSE(LockWindowUpdate(window));
            CHECK(ShowWindow(window, ShowHide));
            CHECK(SetWindowLongA(window, LongExtendedStyle, ExtendedStyleAppWindow) == 0);
            CHECK_FALSE(ShowWindow(window, ShowShow));
            CHECK(LockWindowUpdate(0));
        }
    };
    const auto clicked = [&](std::size_t control) {
        clicks.push_back(control);
        ShowWindow(window, control == 5 ? ShowHide : ShowShow);
    };
    window = WindowCreate(SixButtons(), {activated, clicked, {}});
    WindowShowModal(window);
    CHECK(clicks == std::vector<std::size_t>{3, 5});
    CHECK(activations == 2);
    CHECK(GetWindowLongA(window, LongExtendedStyle) == ExtendedStyleAppWindow);
    WindowDestroy(window);
}

TEST_CASE("An event may destroy its window, and an error that leaves it ends the modal show") {
    const FrontEndRun run("1\n2\n3\n");
    Handle window = 0;
    const auto clicked = [&window](std::size_t control) {
        if (control == 1) {
            throw std::string("zwei");
        }
        WindowDestroy(window);
    };
    window = WindowCreate(SixButtons(), {{}, clicked, {}});
    WindowShowModal(window);
    CHECK_FALSE(ShowWindow(window, ShowShow));
    ControlCaption(window, 0, u"a");  // nor does any other call on what is gone
    window = WindowCreate(SixButtons(), {{}, clicked, {}});
    CHECK_THROWS_AS(WindowShowModal(window), std::string);
    WindowShowModal(window);
    WindowDestroy(window);
}

TEST_CASE("A sizable window is given its outer size, by its owner or by a line of input, and tells when it changes") {
    const FrontEndRun run("12000x9000\n12000x9000\n1x1\n");
    Handle window = 0;
    std::vector<std::int32_t> widths;
    const auto resized = [&] {
        const Size size = WindowOuterSize(window);
        widths.push_back(size.width);
        if (size.width < 8730) {
            WindowOuterSize(window, {8730, size.height});
        }
    };
    window = WindowCreate({u"W", {8610, 4305}, true, 1, {}}, {{}, {}, resized});
    CHECK(WindowOuterSize(window).height == 4710);
    CHECK(widths.empty());
    WindowShowModal(window);
    CHECK(widths == std::vector<std::int32_t>{8730, 12000, 1, 8730});
    CHECK(run.Shows("9000x6000 Größe in Twips · x Schließen"));
}

TEST_CASE("A label is drawn in its colours, wrapped, and cut at its lower edge") {
    host::HostWindow window{u"Ein Fenster", true, {1600 + 120, 220 * 5 + 405}, {}, {}};
    window.controls.push_back(
        {{ControlKind::Label, u"eins zwei drei vier\r\nfünf\x1B\r\nsechs", {160, 220, 800, 660}, true},
         {},
         255,
         0xFFFFFF});
    CHECK(host::WindowPicture(window, {80, 24, false}).Print(false) ==
          "┌─ Ein Fenster ───[x]┐\n"
          "│                    │\n"
          "│  eins zwei         │\n"
          "│  drei vier         │\n"
          "│  fünf\uFFFD             │\n"
          "│                    │\n"
          "└────────────────────┘\n");
    const std::string colours = host::WindowPicture(window, {80, 24, true}).Print(true);
    CHECK(colours.find("\x1B[0;1;38;5;231;48;5;196m") != std::string::npos);
}

TEST_CASE("A picture stays within the terminal's columns, however it is sized") {
    host::HostWindow window{u"Fenster", true, {8730, 5280}, {}, {}};
    window.controls.push_back({Button(u"Weit draußen", -2000000000, 2000000000)});
    for (const int columns : {40, 80, 200}) {
        CHECK(host::WindowPicture(window, {columns, 24, false}).Columns() <= columns);
    }
    CHECK(host::WindowPicture(window, {80, 24, false}).Rows() == 22);
}
