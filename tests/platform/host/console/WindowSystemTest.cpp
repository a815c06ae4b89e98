#include "Check.h"
#include "platform/WindowSystem.h"
#include "platform/host/console/FrontEndRun.h"
#include "platform/host/console/WindowPicture.h"
#include "platform/host/console/WindowTable.h"

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

}  // namespace

TEST_CASE("The window is drawn with its buttons where the twips put them, and explains itself") {
    const FrontEndRun run("qu\x1B[2Jatsch\n?\n");
    const Handle window = WindowCreate(SixButtons(), {});
    ControlToolTip(window, 2, u"Es wird eine Steuerungs-Datei zu Demonstrationszwecken erstellt. Die angepasst wird.");
    WindowShowModal(window);
    WindowDestroy(window);
    CHECK(
        run.Output().starts_with("┌─ VTV4 Version Controller ───────────────[x]┐\n"
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
                                 "> "));
    CHECK(run.Shows("»qu\uFFFD[2Jatsch« gibt es hier nicht. Eingeben lässt sich: Exportieren, "));
    CHECK(
        run.Shows("\n3 Demo  Es wird eine Steuerungs-Datei zu Demonstrationszwecken erstellt. Die\n"
                  "        angepasst wird.\nName oder"));
    CHECK(run.Output().ends_with("> \n"));
}

TEST_CASE("A line of input clicks the button that it names or numbers, and nothing else does") {
    WindowDesign design = SixButtons();
    design.controls.push_back({ControlKind::Label, u"Text", {240, 1900, 900, 255}});
    design.controls.push_back(Button(u"LÖSCHEN", 1920, 1900));
    design.controls.push_back(Button(u"Verborgen", 240, 2200));
    const std::vector<std::pair<std::string, std::vector<std::size_t>>> cases{
        {"  Exportieren \r\nexportieren\n", {0}},
        {"Löschen\nLÖSCHEN\n3\n04\nlöschen\n", {3, 7, 2}},
        {"0\n8\n9\n-1\n1 2\n99999999999999999999\nExport\n\n\t\n5000x5000\n\xFF\n6", {5}},
        {"Text\nVerborgen\n" + std::string(100000, '1') + "\n2\n", {1}},
        {"x\n1\n", {}},
    };
    for (const auto& [input, wanted] : cases) {
        const FrontEndRun run(input);
        std::vector<std::size_t> clicks;
        const Handle window =
            WindowCreate(design, {{}, [&clicks](std::size_t control) { clicks.push_back(control); }, {}});
        ControlVisible(window, 8, false);
        WindowShowModal(window);
        WindowDestroy(window);
        CHECK(clicks == wanted);
        CHECK_FALSE(run.Shows("Verborgen ]"));
    }
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
                       {"", ButtonsOk, AnswerOk}};
    for (const auto& given : cases) {
        CAPTURE(given.input);
        const FrontEndRun run(given.input);
        CHECK(MessageBoxW(u"Alles wird gelöscht.\r\n\r\nWeiter?", u"Titel", given.buttons + IconExclamation) ==
              given.answer);
        CHECK(run.Shows(given.buttons == ButtonsOk ? "[►1 OK◄]" : "[►1 Ja◄]  [ 2 Nein ]  [ 3 Abbrechen ]"));
        CHECK(run.Shows("│  ⚠  Alles wird gelöscht.  "));
    }
}

TEST_CASE("Hiding and showing the window while it becomes active does not end its modal show, an error does") {
    const FrontEndRun run("4\nJa\n6\n1\n");
    Handle window = 0;
    int activations = 0;
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
        if (control == 0) {
            throw std::string("eins");
        }
        if (control == 3) {
            MessageBoxW(u"Weiter?", u"Titel", ButtonsYesNoCancel);
        } else {
            ShowWindow(window, ShowHide);
        }
    };
    window = WindowCreate(SixButtons(), {activated, clicked, {}});
    WindowShowModal(window);
    CHECK(activations == 3);  // once more shown, and behind the message box
    CHECK(GetWindowLongA(window, LongExtendedStyle) == ExtendedStyleAppWindow);
    CHECK_THROWS_AS(WindowShowModal(window), std::string);
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
    CHECK(host::WindowPicture(window, {80, 24, true}).Print(true).find("\x1B[0;1;38;5;231;48;5;196m") !=
          std::string::npos);
}
