#include "Check.h"
#include "platform/WindowSystem.h"
#include "platform/host/console/LineRun.h"

using namespace platform;

namespace {

Handle CreateTestWindow(WindowEvents events) {
    WindowDesign design{u"Ein Fenster", {3040, 1320}, false, 1, {}};
    design.controls = {{ControlKind::Button, u"Löschen", {1520, 220, 1335, 375}},
                       {ControlKind::Label, u"zwei\x1B\r\ndrei", {160, 620, 800, 660}, true},
                       {ControlKind::Label, u"eins", {160, 220, 800, 260}},
                       {ControlKind::Button, u"LÖSCHEN", {1520, 880, 1335, 375}}};
    return WindowCreate(design, std::move(events));
}

}  // namespace

TEST_CASE("A window prints its caption, labels and buttons, and its tooltips on request") {
    const LineRun run("qu\x1Btsch\n?\n");
    const Handle window = CreateTestWindow({});
    ControlToolTip(window, 3, u"Warum.");
    WindowShowModal(window);
    const std::string choices = "  1 Löschen\n  2 LÖSCHEN\n  ? Erklärungen\n  x Schließen\n";
    CHECK(run.Output() == "== Ein Fenster ==\neins\nzwei \ndrei\n" + choices +
                              "> qu tsch\nDas gibt es hier nicht. Eingeben lässt sich:\n" + choices +
                              "> ?\n  1 Löschen: \n  2 LÖSCHEN: Warum.\n> \n");
}

TEST_CASE("An input line clicks a button only if it is the button's caption or number") {
    const std::vector<std::pair<std::string, std::vector<std::size_t>>> cases{
        {"  LÖSCHEN \r\nlo\u0308schen\n2\n", {0, 0, 3}},
        {"0\n01\n3\n4\n-1\n1 2\n99999999999999999999\nLösch\n\n\t\n\xFF\n1", {0}},
        {std::string(100000, '1') + "\n2\n", {3}},
        {"X\n1\n", {}},
    };
    for (const auto& [input, expected] : cases) {
        const LineRun run(input);
        std::vector<std::size_t> clicks;
        int activations = 0;
        WindowShowModal(
            CreateTestWindow({[&] { ++activations; }, [&](std::size_t control) { clicks.push_back(control); }, {}}));
        CHECK(clicks == expected);
        CHECK(activations == 1);
    }
}

TEST_CASE("A message box returns the clicked button; closing it means Cancel or OK") {
    for (const auto& [input, answer] : {std::pair("OK\n?\n4\n\nnein\nJa\n", AnswerNo),
                                        {"JA\n", AnswerYes},
                                        {"x\n", AnswerCancel},
                                        {"", AnswerCancel}}) {
        const LineRun run(input);
        CHECK(MessageBoxW(u"Weg.\r\n\r\nWeiter?", u"Titel", ButtonsYesNoCancel + IconExclamation) == answer);
        CHECK(run.Shows("== Titel ==\nWarnung\nWeg.\n\nWeiter?\n  1 Ja\n  2 Nein\n  3 Abbrechen\n  x"));
    }
    const LineRun run("");
    CHECK(MessageBoxW(u"Text", u"Titel", ButtonsOk + IconCritical) == AnswerOk);
}
