#include <algorithm>
#include <cstring>

#include "Check.h"
#include "RawRegistry.h"
#include "common/NameGuid.h"
#include "platform/Regional.h"
#include "rollout/Arguments.h"
#include "rollout/ControlFileCheck.h"
#include "rollout/PreferencesFile.h"
#include "rollout/RegFile.h"
#include "rollout/Rollout.h"
#include "rollout/StoredTables.h"
#include "rollout/WhoReport.h"
#include "version/LoadedMachine.h"

namespace {

const std::string BothSections = "[Tallora]\n[Reporting]\n";
const std::string MainKey = "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion";

Text Lines(const std::vector<Text>& lines) {
    Text all;
    for (const Text& line : lines) {
        all += line + u"\n";
    }
    return all;
}

struct CheckFixture : TestMachine {
    // Returns the findings for a control file, or the error's description if the file is rejected.
    Text Check(const std::string& content) {
        FileContent(ControlFile(), content);
        check = {};
        const Error error = RaisedBy([&] { check.Read(platform::TextFromAnsi(ControlFile())); });
        return error.number == 0 ? Lines(check.Findings()) : error.description;
    }
    ControlFileCheck check;
};

struct RolloutFixture : LoadedMachine {
    // Runs the command with the path of the control file appended.
    [[nodiscard]] RolloutResult Run(const Text& command) const {
        return RunRollout({command, platform::TextFromAnsi(ControlFile())});
    }
};

}  // namespace

TEST_CASE_FIXTURE(CheckFixture, "ControlFileCheck reports exactly what an import skips or silently accepts") {
    CHECK(Check("[Tallora]\n[Reporting]\n(Standard)=3\r\nhugo=0;\r\n\r\n"
                "a=Demo\n  a  \n;\na=1=2;a=-1;b=1\n"  // line 6
                "c =1\nd\\e=99\nf=6\n=2\nB=3\n"       // line 10
                "[ tallora ] x\n[Reporting\n[Other]\na\n\t[Tallora]\n") ==
          u"Zeile 6: »a=Demo« wird übersprungen: keine Zahl\n"
          u"Zeile 7: »a« wird übersprungen: kein »=«\n"
          u"Zeile 8: »;« wird übersprungen: kein »=«\n"
          u"Zeile 9: »a=1=2« wird übersprungen: mehr als ein »=«\n"
          u"Zeile 9: »a=-1« wird übersprungen: negative Zahl\n"
          u"Warnung: Zeile 10: Die Leerzeichen am Anfang oder Ende gehören zum Namen »c «.\n"
          u"Warnung: Zeile 11: »d\\e« enthält »\\«; zwischen Domäne und Benutzer gehört ein Punkt.\n"
          u"Warnung: Zeile 12: 6 ist keine Version der Versionsliste.\n"
          u"Warnung: Zeile 13: »(Standard)« steht schon in Zeile 3; die letzte Zahl gilt.\n"
          u"Warnung: Zeile 14: »B« steht schon in Zeile 9; die letzte Zahl gilt.\n"
          u"Warnung: Zeile 15: »[ tallora ] x« gilt nicht als Kopf [Tallora].\n"
          u"Warnung: Zeile 16: »[Reporting« gilt nicht als Kopf [Reporting].\n"
          u"Warnung: Zeile 19: »\t[Tallora]« gilt nicht als Kopf [Tallora].\n");
    CHECK(check.SkippedCount() == 5);
    CHECK(Check(BothSections + std::string(254, 'x') + "=1\n" + std::string(255, 'x') + "=1\n") ==
          u"Warnung: Zeile 4: Der Name »" + Text(255, u'x') +
              u"« ist zu lang; ein Export bricht bei diesem Eintrag ab.\n");
    CHECK(Check(BothSections + "j\xC3\xB6rg=1\n") ==
          u"Warnung: Die Datei ist in UTF-8 gespeichert; ein Import verfälscht ihre Umlaute.\n");
    CHECK(Check(BothSections + "j\xC3\xB6rg=1\nj\xF6rg=1\n").empty());
    CHECK(Check("[Tallora]\n") == u"Warnung: Der Abschnitt [Reporting] fehlt; ein Import leert seine Tabelle.\n");
}

TEST_CASE_FIXTURE(CheckFixture, "ControlFileCheck rejects files that can't be imported or would clear all tables") {
    CHECK(Check("[Tallora]\na=2147483648\n") == u"Zeile 2: Überlauf");
    CHECK(Check("[Info]\n" + std::string(40000, 'x')) == u"Zeile 2: Überlauf");
    CHECK(Check(BothSections + std::string(16384, 'x') + "=1\n") == u"Zeile 3: Der Name ist länger als 16383 Zeichen");
    Check(BothSections + std::string(16383, 'x') + "=1\n");
    CHECK(check.Tables()[1].Entries().size() == 1);
    for (const std::string& content : {std::string("[\0T\0\n\0", 6), std::string("\xFF\xFE[\n")}) {
        CHECK(Check(content) == u"Zeile 1: kein Text in der ANSI-Codepage, vielleicht UTF-16");
    }
    for (const char* const content : {"", "[Info]\n", "[tallora]\na=1\n"}) {
        CHECK(Check(content) == u"kein Abschnitt [Tallora] oder [Reporting]; ein Import würde alle Tabellen leeren");
    }
}

TEST_CASE_FIXTURE(CheckFixture, "The tables are written as a .reg file and as Group Policy XML") {
    Check("[Tallora]\na\\\"&<=1\nB=2\nb=10\n=3\n[Reporting]\n");
    const std::string bytes = RegFileBytes(check.Tables());
    Text text(bytes.size() / 2, u' ');
    std::memcpy(text.data(), bytes.data(), bytes.size());
    const Text keyLine = u"HKEY_LOCAL_MACHINE\\Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion]\r\n";
    CHECK(text ==
          u"\uFEFFWindows Registry Editor Version 5.00\r\n\r\n[-" + keyLine + u"\r\n[" + keyLine +
              u"\"a\\\\\\\"&<\"=dword:00000001\r\n\"B\"=dword:0000000A\r\n@=dword:00000003\r\n\r\n"
              u"[-HKEY_LOCAL_MACHINE\\Software\\Vandrel\\Tallora\\V4\\Reporting\\Version\\ForcedVersion]\r\n\r\n");
    CheckedTables earlier = EmptyTables();
    for (const TextView name : {u"B", u"", u"Gone", u"gone"}) {
        earlier[0].Add({Text(name), 4});
        earlier[1].Add({Text(name), 5});
    }
    const std::string xml =
        PreferencesFileBytes(check.Tables(), EntriesOnlyIn(earlier, check.Tables()), u"2026-01-02 03:04:05");
    // Seven lines for the collections and three per item: three updates, then one and three deletions.
    CHECK(std::ranges::count(xml, '\n') == 7 + 3 * 7);
    for (const std::string part :
         {"<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<",
          "name=\"a\\&quot;&amp;&lt;\" status=\"a\\&quot;&amp;&lt;\" image=\"12\" changed=\"2026-01-02 03:04:05\" uid=",
          " bypassErrors=\"1\">\r\n      <Properties action=\"U\" displayDecimal=\"1\" default=\"0\" "
          "hive=\"HKEY_LOCAL_MACHINE\" key=\"SOFTWARE\\WOW6432Node\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion\" "
          "name=\"B\" type=\"REG_DWORD\" value=\"0000000A\"/>",
          "name=\"(Default)\" status=\"(Default)\"",
          "action=\"D\" displayDecimal=\"1\" default=\"0\" hive=\"HKEY_LOCAL_MACHINE\" "
          "key=\"SOFTWARE\\WOW6432Node\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion\" name=\"Gone\"",
          "action=\"D\" displayDecimal=\"1\" default=\"1\" hive=\"HKEY_LOCAL_MACHINE\" "
          "key=\"SOFTWARE\\WOW6432Node\\Vandrel\\Tallora\\V4\\Reporting\\Version\\ForcedVersion\" name=\"\" "}) {
        INFO(part);
        CHECK(xml.find(part) != std::string::npos);
    }
    for (const TextView name : {u"\x01", u"\uFFFE", u"\xD83D", u"\xDE00\xD83D"}) {
        CheckedTables tables = EmptyTables();
        tables[1].Add({Text(name), 1});
        CHECK(RaisedBy([&] { PreferencesFileBytes(tables, EmptyTables(), u""); }).number == 5);
    }
    earlier[0].Add({u"\xD83D\xDE00", 1});
    CHECK(RaisedBy([&] { PreferencesFileBytes(earlier, EmptyTables(), u""); }).number == 0);
}

TEST_CASE_FIXTURE(TestMachine, "A target file is written completely or not at all, and is never a control file") {
    const Text file = platform::TextFromAnsi(OnDisk(ControlFile()).string());
    const Text folder = file.substr(0, file.size() - 9);
    const Text target = file + u".reg";
    static const std::string good = BothSections + "a=1\n";
    using enum RolloutResult;
    struct {
        std::vector<Text> arguments;
        RolloutResult result = Failed;
        std::string content = good;
        std::string targets = "earl earl";  // the first four bytes of the .reg file and of the .xml file
    } const cases[] = {
        {{file, target}, Success, good, {"\xFF\xFEW\0 earl", 9}},
        {{file, file + u".XML"}, NeedsReview, good + "b\n", "earl <?xm"},
        {{file, file + u".XML", file}, NeedsReview, "[Tallora]\n", "earl <?xm"},
        {{file}, Success},
        {{u"/wer", u"hugo", file}, NeedsReview, good + "b\n"},
        {{file, target}, Failed, good + "b=2147483648\n"},
        {{file, file + u".txt"}},
        {{file + u".none", target}},
        {{file, folder + u"none/x.reg"}},
        {{file, folder + u"\u0141.reg"}},
        {{file, target, file}},
        {{file, u""}},
        {{u"/wer", u"OFFICE.", file}},
        {{file, file + u".XML", file + u".XML"}},
        {{file, target, u"/dns", u"x"}},
        {{u"/import", file, target}},
        {{u"/export", file, target}},
        {{u"/wer"}},
        {{u"/import", file, u"/export"}},
        {{u"/export", u"-x"}},
        {{u"/wer", u"hugo", file, u"/domaene"}},
    };
    for (const auto& each : cases) {
        CAPTURE(&each - cases);
        FileContent(ControlFile(), each.content);
        FileContent(ControlFile() + ".reg", "earlier");
        FileContent(ControlFile() + ".XML", "earlier");
        CHECK(RunRollout(each.arguments) == each.result);
        CHECK(FileContent(ControlFile()) == each.content);
        CHECK(FileContent(ControlFile() + ".reg")->substr(0, 4) + " " +
                  FileContent(ControlFile() + ".XML")->substr(0, 4) ==
              each.targets);
    }
    // The target is the control file, under another path.
    FileContent(ControlFile() + ".reg", good);
    CHECK(RunRollout({target, folder + u"./vtv4v.txt.reg"}) == Failed);
    CHECK(FileContent(ControlFile() + ".reg") == good);
}

TEST_CASE_FIXTURE(RolloutFixture, "/export and /import report lost entries, and a rejected file changes nothing") {
    using enum RolloutResult;
    Tables(u"(Standard)=3;Jörg Müller=1;.hugo=4;(standard)=5;a\tb=0;\"q\"=99;", u"€=2;");
    const Text tables = Tables();
    CHECK(Run(u"/Export") == Success);
    Tables(u"old=1;", u"old=2;");
    CHECK(Run(u"/IMPORT") == Success);
    CHECK(Tables() == tables);
    CHECK_FALSE(RawValue(platform::KeyLocalMachine, MainKey.substr(0, MainKey.rfind('\\')), "_vtv4v-reg_"));
    for (const RawData& unreadable : {RawNumber(0x80000000U), RawText("drei"), RawText(std::string(300, '0'))}) {
        RawValueSet(platform::KeyLocalMachine, MainKey, "unreadable", unreadable);
        RawValueSet(platform::KeyLocalMachine, MainKey, "z", RawNumber(3));
        RawValueSet(platform::KeyCurrentUser, MainKey, "", unreadable);
        CHECK(Run(u"/export") == NeedsReview);
        // Unlike an export, the products look up entries by name and read strings of up to 1023 bytes.
        CHECK(RunRollout({u"/wer", u"hugo"}) == (unreadable.bytes[0] == '0' ? Success : NeedsReview));
        CHECK(ReadStoredTables().tables[0].NumberOf(u"z") == 3);
    }
    Tables(u"", u"");
    RawValueSet(platform::KeyLocalMachine, MainKey, " a", RawNumber(1));  // an import reads the name as "a"
    CHECK(Run(u"/export") == NeedsReview);
    // A table whose key has a subkey can't be cleared.
    Tables(u"old=1;", u"");
    FileContent(ControlFile(), BothSections + "d=4\n");
    CHECK(Run(u"/import") == Success);
    CHECK(Tables() == u" | d=4;");
    RawValueSet(platform::KeyLocalMachine, MainKey, "old", RawNumber(1));
    RawValueSet(platform::KeyLocalMachine, MainKey + "\\sub", "", RawNumber(1));
    CHECK(Run(u"/import") == NeedsReview);
    FileContent(ControlFile(), "");
    CHECK(Run(u"/import") == Failed);
    CHECK(Tables() == u"old=1; | d=4;");
    platform::RegDeleteKeyA(platform::KeyLocalMachine, MainKey + "\\sub");
}

TEST_CASE_FIXTURE(RolloutFixture, "/wer explains each step and skips default entries that belong to another user") {
    Tables(u"(Standard)=3;hugo=7;WERK.hugo=1;", u"");
    MainVersions->ForcedVersionAll(false, u"(Standard)=0;");
    const auto lines = [](const std::vector<Text>& arguments) {
        const ResolutionReport report = DescribeResolution(ParseArguments(arguments).user);
        return Lines({report.lines.begin(), report.lines.begin() + 7}) + Lines(report.findings);
    };
    CHECK(lines({u"/WER", u"hugo"}) ==
          u"Tallora für hugo, Domäne »OFFICE«, DNS-Domäne »office.example«\n"
          u"  (Standard)            3  Browser       gilt\n"
          u"  hugo                  7  (unbekannt)   gilt\n"
          u"  office.example.hugo   -\n"
          u"  OFFICE.hugo           -\n"
          u"  Benutzer: (Standard)  0  Full          gilt nicht: Full zählt nur in der Tabelle des Rechners\n"
          u"  Version: 7 (unbekannt)\n"
          u"Warnung: 7 ist keine Version der Versionsliste.\n");
    MainVersions->ForcedVersionAll(false, u"(Standard)=4;");
    CHECK(lines({u"/wer", u"Hugo"}).find(u"  4  Classic       gilt\n  Version: 4 Classic\n") != Text::npos);
    CHECK(lines({u"/wer", u"WERK.hugo", u"/Dns", u""})
              .find(u"  .hugo                 -\n"
                    u"  WERK.hugo             1  Demo          gilt\n"
                    u"  Benutzer: (Standard)  nicht geprüft: Dazu muss der Benutzer den Befehl selbst ausführen\n"
                    u"  Version: 1 Demo\n") != Text::npos);
    const std::pair<std::vector<Text>, Text> names[] = {
        {{u"/wer", u"office.EXAMPLE.anna"}, u"office.example.anna OFFICE.anna"},
        {{u"anna.b", u"/domaene", u"X", u"/wer"}, u"office.example.anna.b X.anna.b"},
        {{u"/wer", u"h.b"}, u"office.example.h.b OFFICE.h.b"},
        {{u"/wer", u".anna"}, u".anna OFFICE.anna"},
        {{u"x.y.anna", u"/wer", u"/dns", u"x.y"}, u"x.y.anna OFFICE.anna"}};
    Environment("USERNAME", "H.b");
    for (const auto& [arguments, expected] : names) {
        const UserNames user = ParseArguments(arguments).user;
        CHECK(user.InDnsDomain() + u" " + user.InDomain() == expected);
    }
}

TEST_CASE("NameGuid computes version 5 (name-based) GUIDs") {
    // Results of Python's uuid.uuid5(uuid.NAMESPACE_URL, name), for names of one SHA-1 block and of several.
    CHECK(NameGuid(std::string(39, 'x')) == u"{F4EAEE1E-E483-528B-88BD-6B8932AB6E2B}");
    CHECK(NameGuid(std::string(40, 'x')) == u"{F562C38A-A8FE-5CDD-B523-6F30CFB54847}");
    CHECK(NameGuid(std::string(200, 'x')) == u"{CD3580B9-D244-586A-8077-74317319B48D}");
}
