#include "Check.h"
#include "platform/WindowSystem.h"
#include "platform/host/console/LineRun.h"

using namespace platform;

namespace {

Handle Created(WindowEvents events) {
    WindowDesign design{u"Ein Fenster", {3040, 1320}, false, 1, {}};
    design.controls = {{ControlKind::Button, u"Löschen", {1520, 220, 1335, 375}},
                       {ControlKind::Label, u"zwei\x1B\r\ndrei", {160, 620, 800, 660}, true},
                       {ControlKind::Label, u"eins", {160, 220, 800, 260}},
                       {ControlKind::Button, u"LÖSCHEN", {1520, 880, 1335, 375}}};
    return WindowCreate(design, std::move(events));
}

}  // namespace

TEST_CASE("A window tells its caption, labels and buttons, and explains them where there is something to explain") {
    for (const bool explains : {false, true}) {
        const LineRun run("qu\x1Btsch\n?\n");
        const Handle window = Created({});
        if (explains) {
            ControlToolTip(window, 3, u"Warum.");
        }
        WindowShowModal(window);
        const std::string choices =
            std::string("  1 Löschen\n  2 LÖSCHEN\n") + (explains ? "  ? Erklärungen\n" : "") + "  x Schließen\n";
        CHECK(run.Output().starts_with("== Ein Fenster ==\neins\nzwei \ndrei\n" + choices +
                                       "> qu tsch\nDas gibt es hier nicht. Eingeben lässt sich:\n" + choices));
        CHECK(run.Shows("2 LÖSCHEN: Warum.\n") == explains);
    }
}

TEST_CASE("A line of input clicks the button that it names or numbers, and nothing else does") {
    const std::vector<std::pair<std::string, std::vector<std::size_t>>> cases{
        {"  LÖSCHEN \r\nlo\u0308schen\n2\n", {0, 0, 3}},
        {"0\n01\n3\n4\n-1\n1 2\n99999999999999999999\nLösch\n\n\t\n\xFF\n1", {0}},
        {std::string(100000, '1') + "\n2\n", {3}},
        {"X\n1\n", {}},
    };
    for (const auto& [input, wanted] : cases) {
        const LineRun run(input);
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
                       {"OK\n?\n4\n\nnein\nJa\n", ButtonsYesNoCancel, AnswerNo},
                       {"JA\n", ButtonsYesNoCancel, AnswerYes},
                       {"", ButtonsYesNoCancel, AnswerCancel},
                       {"", ButtonsOk, AnswerOk}};
    for (const auto& given : cases) {
        CAPTURE(given.input);
        const LineRun run(given.input);
        CHECK(MessageBoxW(u"Alles wird gelöscht.\r\n\r\nWeiter?", u"Titel", given.buttons + IconExclamation) ==
              given.answer);
        CHECK(run.Shows("== Titel ==\nWarnung\nAlles wird gelöscht.\n\nWeiter?\n  1 "));
        CHECK(run.Shows(given.buttons == ButtonsOk ? "  1 OK\n" : "  1 Ja\n  2 Nein\n  3 Abbrechen\n"));
    }
}
