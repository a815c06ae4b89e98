#include "Check.h"
#include "host/MachineFiles.h"
#include "platform/WindowSystem.h"

using namespace platform;

TEST_CASE("Windows and message boxes print their content and take a caption or number") {
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
    const std::string output = OutputOf("qu\x1Btsch\n?\n  LÖSCHEN \r\nlo\u0308schen\n2\n0\n01\nLösch\n\n\xFF\nX\n1\n",
                                        [&] { WindowShowModal(window); });
    CHECK(clicks == std::vector<std::size_t>{0, 0, 3});
    CHECK(activations == 1);
    const std::string choices = "  1 Löschen\n  2 LÖSCHEN\n  ? Erklärungen\n  x Schließen\n";
    CHECK(output.starts_with("== Ein Fenster ==\neins\nzwei \ndrei\n" + choices +
                             "> qu tsch\nDas gibt es hier nicht. Eingeben lässt sich:\n" + choices +
                             "> ?\n  1 Löschen: \n  2 LÖSCHEN: Warum.\n>   LÖSCHEN \n"));
    std::int32_t answer = 0;
    for (const auto& [input, expected] : {std::pair("OK\n?\n4\n\nnein\nJa\n", AnswerNo), {"x\n", AnswerCancel}}) {
        const std::string box = OutputOf(input, [&] {
            answer = MessageBoxW(u"Weg.\r\n\r\nWeiter?", u"Titel", ButtonsYesNoCancel + IconExclamation);
        });
        CHECK(answer == expected);
        CHECK(box.starts_with("== Titel ==\nWarnung\nWeg.\n\nWeiter?\n  1 Ja\n  2 Nein\n  3 Abbrechen\n  x"));
    }
    OutputOf("", [&] { answer = MessageBoxW(u"Text", u"Titel", ButtonsOk + IconCritical); });
    CHECK(answer == AnswerOk);
}
