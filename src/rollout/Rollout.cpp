#include "rollout/Rollout.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "common/Error.h"
#include "common/TextFile.h"
#include "common/modDateTime.h"
#include "platform/FileCalls.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "rollout/Arguments.h"
#include "rollout/ControlFileCheck.h"
#include "rollout/PreferencesFile.h"
#include "rollout/RegFile.h"
#include "rollout/StoredTables.h"
#include "rollout/WhoReport.h"
#include "version/ProductProfile.h"
#include "version/modVTV4Version.h"

namespace {

constexpr char16_t HelpText[] =
    u"Prüft, exportiert, importiert und erklärt die Versions-Einstellungen von Vandrel Tallora V4.\r\n\r\n"
    u"vtv4v-reg DATEI                 prüft eine Steuerungs-Datei\r\n"
    u"vtv4v-reg DATEI ZIEL.reg        prüft sie und schreibt eine Datei für »reg import«\r\n"
    u"vtv4v-reg DATEI ZIEL.xml [ALT]  prüft sie und schreibt eine Datei für Gruppenrichtlinien. Diese löscht\r\n"
    u"                                auch, was nur in ALT steht, der Steuerungs-Datei der letzten Verteilung\r\n"
    u"vtv4v-reg /export DATEI         schreibt die Tabellen dieses Rechners in eine Steuerungs-Datei\r\n"
    u"vtv4v-reg /import DATEI         prüft eine Steuerungs-Datei und importiert sie ohne Rückfrage\r\n"
    u"vtv4v-reg /wer NAME [/domaene DOMÄNE] [/dns DNS-DOMÄNE] [DATEI]\r\n"
    u"                                zeigt, welche Version ein Benutzer auf diesem Rechner erhält; mit DATEI,\r\n"
    u"                                welche er nach deren Import erhielte. NAME kann auch DOMÄNE.NAME sein;\r\n"
    u"                                enthält der Benutzername selbst einen Punkt, so ist /domaene nötig\r\n\r\n"
    u"Exit-Code 0: erledigt. 1: erledigt, aber sehen Sie die Meldungen an. 2: nicht erledigt.\r\n";

// Checks a control file and adds the findings to the report, each preceded by `subject`.
CheckedTables CheckedFile(const Text& path, Report& report, const Text& subject = {}) {
    ControlFileCheck check;
    const std::optional<Error> error = TrapError([&] { check.Read(path); });
    report.AddFindings(check.Findings(), check.SkippedCount(), subject);
    if (error) {
        Raise(error->number, path + u": " + error->description + u".");
    }
    return check.Tables();
}

// Returns the file's last modification time as "2017-12-16 10:16:40". With this timestamp, the same control file always
// yields the same target.
Text LastChange(const Text& path) {
    double date = 0;
    RaiseFileStatus(platform::DateLastModified(platform::AnsiFromText(path), date));
    const Text stamp = DateTimeStamp(date);  // "20171216 101640"
    return stamp.substr(0, 4) + u"-" + stamp.substr(4, 2) + u"-" + stamp.substr(6, 5) + u":" + stamp.substr(11, 2) +
           u":" + stamp.substr(13);
}

// Runs `write`, which writes a file. If it raises an error, adds the path and, if the disk was full or failed, a note
// that the file may be incomplete. After any other error, nothing has been written.
template <typename Steps>
void WriteFile(const Text& path, const Steps& write) {
    if (const std::optional<Error> error = TrapError(write)) {
        const auto kind = static_cast<RuntimeError>(error->number);
        const bool hasBegun = kind == RuntimeError::DiskFull || kind == RuntimeError::DeviceIo;
        Raise(error->number,
              path + u": " + error->description + (hasBegun ? u". Die Datei kann unvollständig sein." : u"."));
    }
}

void WriteTarget(const Arguments& arguments, const CheckedTables& tables, const CheckedTables& removed) {
    for (const Text& source : {arguments.controlFile, arguments.earlierFile}) {
        if (platform::IsSameFile(platform::AnsiFromText(source), platform::AnsiFromText(arguments.target))) {
            Raise(RuntimeError::InvalidArgument, arguments.target + u": Das Ziel ist eine der Steuerungs-Dateien.");
        }
    }
    WriteFile(arguments.target, [&] {
        const std::string bytes = IsXmlPath(arguments.target)
                                      ? PreferencesFileBytes(tables, removed, LastChange(arguments.controlFile))
                                      : RegFileBytes(tables);
        WriteBytes(arguments.target, bytes, true);
    });
}

RolloutResult Check(const Arguments& arguments, Report& report) {
    const CheckedTables tables = CheckedFile(arguments.controlFile, report);
    const Text& earlier = arguments.earlierFile;
    const CheckedTables removed =
        earlier.empty() ? EmptyTables() : EntriesOnlyIn(CheckedFile(earlier, report, earlier + u": "), tables);
    if (!arguments.target.empty()) {
        WriteTarget(arguments, tables, removed);
    }
    return report.Finish(tables, earlier.empty() ? u"" : u" Zu löschen: " + EntryCounts(removed) + u".");
}

// Warns about stored entries that aren't in the file.
void CompareWithFile(const StoredTables& stored, const CheckedTables& tables, Report& report) {
    report.AddFindings(stored.findings);
    for (const CheckedTable& missing : EntriesOnlyIn(stored.tables, tables)) {
        for (const ForcedVersionItem& entry : missing.Entries()) {
            report.AddFindings({u"Warnung: Der Eintrag »" + ItemNameOf(entry.valueName) + u"« steht in der Tabelle [" +
                                missing.Section() + u"], aber nicht in der Datei."});
        }
    }
}

VersionTables MachineTables() {
    return {ProfileOf(MainProduct).Table, ProfileOf(ReportingProduct).Table};
}

// Raises a registry error if a table can't be written. Finds out by storing and deleting a value.
void RequireWriteAccess() {
    for (const Product& product : Products) {
        const std::shared_ptr<ProgOption> options = ProfileOf(product).ProgOption;
        const Text name = u"_vtv4v-reg_";
        const std::optional<Error> error =
            TrapError([&] { options->LocalMachine(VersionSection, name, NotGiven{}, Text()); });
        options->LocalMachineDelete(VersionSection, name);
        if (error) {
            Raise(error->number,
                  u"HKEY_LOCAL_MACHINE\\" + options->SectionRoot() + u": Schreiben ist nicht möglich" +
                      (error->number == platform::StatusAccessDenied ? u"; dazu sind Administratorrechte nötig."
                                                                     : u": " + FailureText({error->number, {}})));
        }
    }
}

// Checks the written file, because importing it must restore every stored entry.
RolloutResult Export(const Arguments& arguments, Report& report) {
    const Text& path = arguments.controlFile;
    const StoredTables stored = ReadStoredTables();
    WriteFile(path, [&] { ExportTables(path, MachineTables()); });
    CheckedTables tables = stored.tables;
    if (const std::optional<Error> error = TrapError([&] { tables = CheckedFile(path, report); })) {
        report.AddFindings({u"Warnung: Die Datei kann nicht importiert werden: " + error->description});
    }
    CompareWithFile(stored, tables, report);
    return report.Finish(tables);
}

// Reads the tables afterwards, because an import ignores a failure to clear a table.
RolloutResult Import(const Arguments& arguments, Report& report) {
    const Text& path = arguments.controlFile;
    const CheckedTables tables = CheckedFile(path, report);
    RequireWriteAccess();
    if (const std::optional<Error> error = TrapError([&] { ImportTables(path, MachineTables()); })) {
        Raise(error->number,
              path + u": " + FailureText(*error) + u". Der Import wurde abgebrochen; die Tabellen sind unvollständig.");
    }
    CompareWithFile(ReadStoredTables(), tables, report);
    return report.Finish(tables);
}

RolloutResult Who(const Arguments& arguments, Report& report) {
    const bool isTrial = !arguments.controlFile.empty();
    const CheckedTables tables = isTrial ? CheckedFile(arguments.controlFile, report) : ReadStoredTables().tables;
    const ResolutionReport resolution = DescribeResolution(arguments.user, isTrial ? &tables : nullptr);
    for (const Text& line : resolution.lines) {
        PrintLine(platform::StdOutputHandle, line);
    }
    report.AddFindings(resolution.findings);
    return report.Finish(tables);
}

RolloutResult Help(const Arguments& /*arguments*/, Report& /*report*/) {
    platform::WriteConsoleW(platform::StdOutputHandle, HelpText);
    return RolloutResult::Success;
}

// Indexed by Command.
constexpr std::array<RolloutResult (*)(const Arguments&, Report&), 5> CommandFunctions = {Help, Check, Export, Import,
                                                                                          Who};

}  // namespace

RolloutResult RunRollout(const std::vector<Text>& arguments) {
    RolloutResult result = RolloutResult::Failed;
    const std::optional<Error> error = TrapError([&] {
        const Arguments parsed = ParseArguments(arguments);
        Report report;
        result = CommandFunctions[static_cast<std::size_t>(parsed.command)](parsed, report);
    });
    if (error) {
        PrintLine(platform::StdErrorHandle, error->description);
    }
    return result;
}
