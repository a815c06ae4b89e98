#include <algorithm>
#include <cstring>

#include "Check.h"
#include "TestMachine.h"
#include "platform/Regional.h"
#include "rollout/ControlFileCheck.h"
#include "rollout/NameGuid.h"
#include "rollout/PreferencesFile.h"
#include "rollout/RegistryFile.h"
#include "rollout/Rollout.h"

namespace {

constexpr const char* BothSections = "[Tallora]\n[Reporting]\n";

// A machine with a control file that is checked.
struct CheckedMachine : TestMachine {
    Error Check(const std::string& content) {
        FileContent(ControlFile(), content);
        check = {};
        return RaisedBy([&] { check.Read(platform::TextFromAnsi(ControlFile())); });
    }
    // What was found, without the warnings of missing sections.
    [[nodiscard]] Text Findings() const {
        Text all;
        for (const Text& finding : check.Findings()) {
            all += finding + u"\n";
        }
        return all;
    }
    ControlFileCheck check;
};

}  // namespace

TEST_CASE_FIXTURE(CheckedMachine, "What an import passes over or takes in silence is found, and nothing else") {
    struct {
        std::string file;  // behind both sections: its lines begin with number 3, in [Reporting]
        Text findings;
        bool hasPassedOver;
    } const cases[] = {
        {"(Standard)=3\r\nhugo=0;\r\n\r\n[Info]\r\nUser=x\r\nplain\r\n", u"", false},
        {"hugo=Demo\n", u"Zeile 3: »hugo=Demo« wird übersprungen: keine Zahl\n", true},
        {"\n  a  \n;\n", u"Zeile 4: »a« wird übersprungen: kein »=«\nZeile 5: »;« wird übersprungen: kein »=«\n", true},
        {"a=1=2;b=-1;c=1\n",
         u"Zeile 3: »a=1=2« wird übersprungen: mehr als ein »=«\nZeile 3: »b=-1« wird übersprungen: negative Zahl\n",
         true},
        {"a =1\n", u"Warnung: Zeile 3: Die Leerzeichen an den Enden gehören zum Namen »a «.\n", false},
        {"(Standard)=1\n=2\nA=3\na=4\n",
         u"Warnung: Zeile 4: »(Standard)« steht schon in Zeile 3; die letzte Zahl gilt.\n"
         u"Warnung: Zeile 6: »a« steht schon in Zeile 5; die letzte Zahl gilt.\n",
         false},
        {"a=6\nb=99\n", u"Warnung: Zeile 3: 6 ist keine Version der Versionsliste.\n", false},
        {"[ tallora ] x\n[Reporting\n[Other]\n\t[Tallora]\n",
         u"Warnung: Zeile 3: »[ tallora ] x« beginnt nicht den Abschnitt [Tallora].\n"
         u"Warnung: Zeile 4: »[Reporting« beginnt nicht den Abschnitt [Reporting].\n"
         u"Warnung: Zeile 6: »\t[Tallora]« beginnt nicht den Abschnitt [Tallora].\n",
         false},
        {"j\xC3\xB6rg=1\n", u"Warnung: Die Datei ist in UTF-8 gespeichert; ein Import verfälscht ihre Umlaute.\n",
         false},
        {"j\xC3\xB6rg=1\nj\xF6rg=1\n", u"", false},
    };
    for (const auto& each : cases) {
        INFO(each.file);
        CHECK(Check(BothSections + each.file).number == 0);
        CHECK(Findings() == each.findings);
        CHECK(check.HasPassedOver() == each.hasPassedOver);
    }
    CHECK(Check("[Info]\n").number == 0);
    CHECK(Findings() ==
          u"Warnung: Der Abschnitt [Tallora] fehlt; ein Import leert seine Tabelle.\n"
          u"Warnung: Der Abschnitt [Reporting] fehlt; ein Import leert seine Tabelle.\n");
}

TEST_CASE_FIXTURE(CheckedMachine, "A line that would break off an import is told by its number") {
    CHECK(Check("[Tallora]\na=2147483648\n").description == u"Zeile 2: Überlauf");
    CHECK(Check("[Info]\n" + std::string(40000, 'x')).description == u"Zeile 2: Überlauf");
    for (const std::string& content : {std::string("[\0T\0\n\0", 6), std::string("\xFF\xFE[\n")}) {
        CHECK(Check(content).description == u"Zeile 1: kein Text in der 8-Bit-Codepage, vielleicht UTF-16");
    }
}

TEST_CASE_FIXTURE(CheckedMachine, "The tables are told to the registry editor and to the group policy") {
    Check("[Tallora]\na\\\"&<=1\nB=2\nb=10\n=3\n[Reporting]\n");
    const std::string bytes = RegistryFileOf(check.Main(), check.Reporting());
    Text text(bytes.size() / 2, u' ');
    std::memcpy(text.data(), bytes.data(), bytes.size());
    const Text key = u"HKEY_LOCAL_MACHINE\\Software\\Vandrel\\Tallora\\V4\\";
    CHECK(text == u"\uFEFFWindows Registry Editor Version 5.00\r\n\r\n[-" + key + u"Version\\ForcedVersion]\r\n\r\n[" +
                      key +
                      u"Version\\ForcedVersion]\r\n\"a\\\\\\\"&<\"=dword:00000001\r\n\"B\"=dword:00000002\r\n"
                      u"\"b\"=dword:0000000A\r\n@=dword:00000003\r\n\r\n[-" +
                      key + u"Reporting\\Version\\ForcedVersion]\r\n\r\n");
    const std::string xml = PreferencesFileOf(check.Main(), check.Reporting(), u"2026-01-02 03:04:05");
    CHECK(std::ranges::count(xml, '\n') == 16);  // three items of three lines, in two collections in one
    for (const std::string part :
         {"name=\"a\\&quot;&amp;&lt;\" status=\"a\\&quot;&amp;&lt;\" image=\"12\" changed=\"2026-01-02 03:04:05\" uid=",
          "<Properties action=\"U\" displayDecimal=\"1\" default=\"0\" hive=\"HKEY_LOCAL_MACHINE\" "
          "key=\"SOFTWARE\\WOW6432Node\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion\" name=\"B\" "
          "type=\"REG_DWORD\" value=\"0000000A\"/>",
          "name=\"(Default)\" status=\"(Default)\"", "default=\"1\""}) {
        CHECK(xml.find(part) != std::string::npos);
    }
    Check("[Tallora]\na\x01=1\n");
    CHECK(RaisedBy([&] { PreferencesFileOf(check.Main(), check.Reporting(), u""); }).number == 5);
}

TEST_CASE_FIXTURE(TestMachine, "A target is written whole or not at all, and never over the control file") {
    const Text file = platform::TextFromAnsi(OnDisk(ControlFile()).string());
    const Text folder = file.substr(0, file.size() - 9);
    const Text target = file + u".reg";
    const std::string good = std::string(BothSections) + "a=1\n";
    struct {
        std::string content;
        std::vector<Text> arguments;
        RolloutResult result;
        std::string targets;  // how the registry file and the preferences file begin
    } const cases[] = {
        {good, {file, target}, RolloutResult::NothingPassedOver, {"\xFF\xFEW\0 earl", 9}},
        {good + "b\n", {file, file + u".XML"}, RolloutResult::SomethingPassedOver, "earl <?xm"},
        {good, {file}, RolloutResult::NothingPassedOver, "earl earl"},
        {good + "b=2147483648\n", {file, target}, RolloutResult::NothingWritten, "earl earl"},
        {good, {file, file}, RolloutResult::NothingWritten, "earl earl"},
        {good, {file, file + u".txt"}, RolloutResult::NothingWritten, "earl earl"},
        {good, {file + u".none", target}, RolloutResult::NothingWritten, "earl earl"},
        {good, {folder, target}, RolloutResult::NothingWritten, "earl earl"},
        {good, {file, folder + u"none/x.reg"}, RolloutResult::NothingWritten, "earl earl"},
        {good, {file, target, u"more"}, RolloutResult::NothingWritten, "earl earl"},
        {good, {}, RolloutResult::NothingWritten, "earl earl"},
    };
    for (const auto& each : cases) {
        CAPTURE(each.arguments.size());
        FileContent(ControlFile(), each.content);
        FileContent(ControlFile() + ".reg", "earlier");
        FileContent(ControlFile() + ".XML", "earlier");
        CHECK(RunRollout(each.arguments) == each.result);
        CHECK(FileContent(ControlFile()) == each.content);
        CHECK(FileContent(ControlFile() + ".reg")->substr(0, 4) + " " +
                  FileContent(ControlFile() + ".XML")->substr(0, 4) ==
              each.targets);
    }
    // The control file by its name on the machine, and by another one.
    FileContent(ControlFile() + ".reg", good);
    const Text name = platform::TextFromAnsi(ControlFile() + ".reg");
    CHECK(RunRollout({name, target}) == RolloutResult::NothingWritten);
    CHECK(RunRollout({target, folder + u"./vtv4v.txt.reg"}) == RolloutResult::NothingWritten);
    CHECK(FileContent(ControlFile() + ".reg") == good);
}

TEST_CASE("A name has the GUID of its standard") {
    // What Python's uuid.uuid5(uuid.NAMESPACE_URL, name) gives, with one block and with several.
    CHECK(NameGuid("http://www.example.com/") == u"{FCDE3C85-2270-590F-9E7C-EE003D65E0E2}");
    CHECK(NameGuid(std::string(39, 'x')) == u"{F4EAEE1E-E483-528B-88BD-6B8932AB6E2B}");
    CHECK(NameGuid(std::string(40, 'x')) == u"{F562C38A-A8FE-5CDD-B523-6F30CFB54847}");
    CHECK(NameGuid(std::string(200, 'x')) == u"{CD3580B9-D244-586A-8077-74317319B48D}");
}
