#include "Check.h"
#include "platform/WindowSystem.h"
#include "platform/host/console/LineRun.h"

using namespace platform;

TEST_CASE("A window prints its content; an input line clicks a button by caption or number") {
    const LineRun run("qu\x1Btsch\n?\n  LÖSCHEN \r\nlo\u0308schen\n2\n0\n01\n1 2\nLösch\n\n\xFF\nX\n1\n");
    WindowDesign design{u"Ein Fenster", {3040, 1320}, false, 1, {}};
    design.controls = {{ControlKind::Button, u"Löschen", {1520, 220, 1335, 375}},
                       {ControlKind::Label, u"zwei\x1B\r\ndrei", {160, 620, 800, 660}, true},
                       {ControlKind::Label, u"eins", {160, 220, 800, 260}},
                       {ControlKind::Button, u"LÖSCHEN", {1520, 880, 1335, 375}}};
    std::vector<std::size_t> clicks;
    int activations = 0;
    const Handle window =
        WindowCreate(design, {[&] { ++activations; }, [&](std::size_t control) { clicks.push_back(control); }, {}});
    ControlToolTip(window, 3, u"Warum.");
    WindowShowModal(window);
    CHECK(clicks == std::vector<std::size_t>{0, 0, 3});
    CHECK(activations == 1);
    const std::string choices = "  1 Löschen\n  2 LÖSCHEN\n  ? Erklärungen\n  x Schließen\n";
    CHECK(run.Output().starts_with("== Ein Fenster ==\neins\nzwei \ndrei\n" + choices +
                                   "> qu tsch\nDas gibt es hier nicht. Eingeben lässt sich:\n" + choices +
                                   "> ?\n  1 Löschen: \n  2 LÖSCHEN: Warum.\n>   LÖSCHEN \n"));
}

TEST_CASE("A message box returns the clicked button; closing it means Cancel or OK") {
    for (const auto& [input, answer] : {std::pair("OK\n?\n4\n\nnein\nJa\n", AnswerNo), {"x\n", AnswerCancel}}) {
        const LineRun run(input);
        CHECK(MessageBoxW(u"Weg.\r\n\r\nWeiter?", u"Titel", ButtonsYesNoCancel + IconExclamation) == answer);
        CHECK(run.Shows("== Titel ==\nWarnung\nWeg.\n\nWeiter?\n  1 Ja\n  2 Nein\n  3 Abbrechen\n  x"));
    }
    const LineRun run("");
    CHECK(MessageBoxW(u"Text", u"Titel", ButtonsOk + IconCritical) == AnswerOk);
}
