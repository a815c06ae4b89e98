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

// Runs `steps`. If they raise an error, raises it with `subject` before and `consequence` after its description.
template <typename Steps>
void Explain(const Text& subject, const Steps& steps, const Text& consequence = {}) {
    if (const std::optional<Error> error = TrapError(steps)) {
        Raise(error->number, subject + u": " + error->description + u"." + consequence);
    }
}

// Checks a control file and adds the findings to the report.
CheckedTables CheckedFile(const Text& path, Report& report) {
    ControlFileCheck check;
    const std::optional<Error> error = TrapError([&] { check.Read(path); });
    report.AddFindings(check.Findings(), check.SkippedCount());
    if (error) {
        Raise(error->number, path + u": " + error->description + u".");
    }
    return check.Tables();
}

// Returns the time of the file's last change as "2017-12-16 10:16:40", so that the same control file gives the same
// target.
Text LastChange(const Text& path) {
    double date = 0;
    RaiseFileStatus(platform::DateLastModified(platform::AnsiFromText(path), date));
    const Text stamp = DateTimeStamp(date);  // "20171216 101640"
    return stamp.substr(0, 4) + u"-" + stamp.substr(4, 2) + u"-" + stamp.substr(6, 5) + u":" + stamp.substr(11, 2) +
           u":" + stamp.substr(13);
}

// Returns the entries that only the control file of the last roll-out contains, or none if it wasn't given.
CheckedTables RemovedEntries(const Text& earlierFile, const CheckedTables& tables) {
    ControlFileCheck earlier;
    if (!earlierFile.empty()) {
        Explain(earlierFile, [&] { earlier.Read(earlierFile); });
    }
    return EntriesOnlyIn(earlier.Tables(), tables);
}

void WriteTarget(const Arguments& arguments, const CheckedTables& tables, const CheckedTables& removed) {
    for (const Text& source : {arguments.controlFile, arguments.earlierFile}) {
        if (platform::IsSameFile(platform::AnsiFromText(source), platform::AnsiFromText(arguments.target))) {
            Raise(RuntimeError::InvalidArgument, arguments.target + u": Das Ziel ist eine der Steuerungs-Dateien.");
        }
    }
    const std::string bytes = IsXmlPath(arguments.target)
                                  ? PreferencesFileBytes(tables, removed, LastChange(arguments.controlFile))
                                  : RegFileBytes(tables);
    Explain(
        arguments.target, [&] { WriteBytes(arguments.target, bytes, true); },
        u" Nichts oder nicht alles wurde geschrieben.");
}

RolloutResult Check(const Arguments& arguments, Report& report) {
    const CheckedTables tables = CheckedFile(arguments.controlFile, report);
    const CheckedTables removed = RemovedEntries(arguments.earlierFile, tables);
    if (!arguments.target.empty()) {
        WriteTarget(arguments, tables, removed);
    }
    return report.Finish(tables, arguments.earlierFile.empty() ? u"" : u" Zu löschen: " + EntryCounts(removed) + u".");
}

// Warns of the stored entries that the file doesn't contain.
void CompareWithFile(const StoredTables& stored, const CheckedTables& tables, Report& report) {
    report.AddFindings(stored.findings);
    for (const CheckedTable& missing : EntriesOnlyIn(stored.tables, tables)) {
        for (const ForcedVersionItem& entry : missing.Entries()) {
            report.AddFindings({u"Warnung: Der Eintrag »" + ItemNameOf(entry.valueName) + u"« steht in der Tabelle [" +
                                missing.Section() + u"], aber nicht in der Datei."});
        }
    }
}

// Returns the products' tables, without resolving the version in force. Raises 5 (invalid argument) if they must be
// writable but aren't.
VersionTables MachineTables(bool mustBeWritable) {
    VersionTables tables;
    for (std::size_t product = 0; product < Products.size(); ++product) {
        const ProductProfile profile = ProfileOf(Products[product]);
        if (mustBeWritable && !profile.ProgOption->LocalMachineCanWrite(VersionSection)) {
            Raise(RuntimeError::InvalidArgument,
                  u"HKEY_LOCAL_MACHINE\\" + profile.RegistryPath +
                      u": Schreiben ist nicht möglich; dazu sind Administratorrechte nötig.");
        }
        tables[product] = profile.Table;
    }
    return tables;
}

// Reads the written file again: an import of it must restore every stored entry.
RolloutResult Export(const Arguments& arguments, Report& report) {
    const Text& path = arguments.controlFile;
    const StoredTables stored = ReadStoredTables();
    Explain(
        path, [&] { ExportTables(path, MachineTables(false)); }, u" Nichts oder nicht alles wurde geschrieben.");
    ControlFileCheck check;
    if (const std::optional<Error> error = TrapError([&] { check.Read(path); })) {
        report.AddFindings({u"Warnung: Die Datei kann nicht importiert werden: " + error->description + u"."});
    }
    CompareWithFile(stored, check.Tables(), report);
    return report.Finish(check.Tables());
}

// Reads the tables afterwards: an import ignores it if a table can't be cleared.
RolloutResult Import(const Arguments& arguments, Report& report) {
    const Text& path = arguments.controlFile;
    const CheckedTables tables = CheckedFile(path, report);
    const VersionTables machineTables = MachineTables(true);
    if (const std::optional<Error> error = TrapError([&] { ImportTables(path, machineTables); })) {
        Raise(error->number,
              path + u": " + FailureText(*error) + u". Der Import wurde abgebrochen; die Tabellen sind unvollständig.");
    }
    CompareWithFile(ReadStoredTables(), tables, report);
    return report.Finish(tables);
}

RolloutResult Who(const Arguments& arguments, Report& report) {
    CheckedTables tables;
    if (arguments.controlFile.empty()) {
        const StoredTables stored = ReadStoredTables();
        report.AddFindings(stored.findings);
        tables = stored.tables;
    } else {
        tables = CheckedFile(arguments.controlFile, report);
    }
    ResolutionReport resolution;
    Explain(u"HKEY_CURRENT_USER", [&] { resolution = DescribeResolution(arguments.user, tables); });
    for (const Text& line : resolution.lines) {
        PrintLine(platform::StdOutputHandle, line);
    }
    if (arguments.controlFile.empty()) {
        report.AddFindings(resolution.findings);
    }
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
