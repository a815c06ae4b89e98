#include "Check.h"
#include "platform/WindowSystem.h"
#include "platform/host/console/FrontEndRun.h"
#include "platform/host/console/WindowPicture.h"
#include "platform/host/console/WindowTable.h"

using namespace platform;

namespace {

Handle Created(WindowEvents events) {
    WindowDesign design{u"Ein Fenster", {3040, 1320}, false, 1, {}};
    design.controls = {{ControlKind::Button, u"Löschen", {1520, 220, 1335, 375}},
                       {ControlKind::Label, u"eins zwei drei vier\r\nfünf\x1B\r\nsechs", {160, 220, 800, 660}, true},
                       {ControlKind::Button, u"LÖSCHEN", {1520, 880, 1335, 375}},
                       {ControlKind::Button, u"Verborgen", {160, 880, 1335, 375}}};
    const Handle window = WindowCreate(design, std::move(events));
    ControlVisible(window, 3, false);
    return window;
}

}  // namespace

TEST_CASE("The window is drawn with its controls where the twips put them, and explains itself") {
    const FrontEndRun run("qu\x1B[2Jatsch\n?\n");
    const Handle window = Created({});
    ControlToolTip(window, 2, u"Es wird eine Steuerungs-Datei zu Demonstrationszwecken erstellt. Die angepasst wird.");
    ControlColours(window, 1, 255, 0xFFFFFF);
    CHECK(
        host::WindowPicture(*host::WindowOf(window), {80, 24, true}).Print(true).find("\x1B[0;1;38;5;231;48;5;196m") !=
        std::string::npos);
    WindowShowModal(window);
    CHECK(
        run.Output().starts_with("┌─ Ein Fenster ─────────────────────[x]┐\n"
                                 "│                                      │\n"
                                 "│  eins zwei        [   1 Löschen   ]  │\n"
                                 "│  drei vier                           │\n"
                                 "│  fünf\uFFFD                               │\n"
                                 "│                   [   2 LÖSCHEN   ]  │\n"
                                 "│                                      │\n"
                                 "└──────────────────────────────────────┘\n"
                                 "Name oder Nummer · ? Erklärungen · x Schließen\n"
                                 "> "));
    CHECK(run.Shows("»qu\uFFFD[2Jatsch« gibt es hier nicht. Eingeben lässt sich: Löschen, "));
    CHECK(
        run.Shows("\n2 LÖSCHEN  Es wird eine Steuerungs-Datei zu Demonstrationszwecken erstellt. Die\n"
                  "           angepasst wird.\nName oder"));
}

TEST_CASE("A line of input clicks the button that it names or numbers, and nothing else does") {
    const std::vector<std::pair<std::string, std::vector<std::size_t>>> cases{
        {"  LÖSCHEN \r\nlöschen\nLöschen\n2\n", {2, 0, 2}},
        {"0\n01\n3\n4\n-1\n1 2\n99999999999999999999\nLösch\n\n\t\n5000x5000\n\xFF\n1", {0}},
        {"eins\nVerborgen\n" + std::string(100000, '1') + "\n2\n", {2}},
        {"x\n1\n", {}},
    };
    for (const auto& [input, wanted] : cases) {
        const FrontEndRun run(input);
        std::vector<std::size_t> clicks;
        int activations = 0;
        const auto clicked = [&clicks](std::size_t control) { clicks.push_back(control); };
        WindowShowModal(Created({[&activations] { ++activations; }, clicked, {}}));
        CHECK(clicks == wanted);
        CHECK(activations == 1);
    }
}

TEST_CASE("A message box gives the answer of the button, of its close box, and of the end of input") {
    struct {
        const char* input;
        std::uint32_t buttons;
        std::int32_t answer;
    } const cases[] = {{"2\n", ButtonsYesNoCancel, AnswerNo},
                       {"x\n", ButtonsYesNoCancel, AnswerCancel},
                       {"OK\n?\n4\n\nnein\nJa\n", ButtonsYesNoCancel, AnswerYes},
                       {"", ButtonsYesNoCancel, AnswerCancel},
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

TEST_CASE("A sizable window is given its outer size, by its owner or by a line of input, and tells when it changes") {
    const FrontEndRun run("12000x9000\n12000x9000\n1x1\n");
    Handle window = 0;
    std::vector<std::int32_t> widths;
    const auto resized = [&] {
        widths.push_back(WindowOuterSize(window).width);
        if (widths.back() < 8730) {
            WindowOuterSize(window, {8730, 5280});
        }
    };
    window = WindowCreate({u"W", {8610, 4305}, true, 1, {}}, {{}, {}, resized});
    CHECK(WindowOuterSize(window).height == 4710);
    WindowShowModal(window);
    CHECK(widths == std::vector<std::int32_t>{8730, 12000, 1, 8730});
    CHECK(run.Shows("Größe in Twips, zum Beispiel 9000x18000 · x Schließen"));
}
