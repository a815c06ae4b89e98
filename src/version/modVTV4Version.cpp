#include "version/modVTV4Version.h"

#include <optional>

#include "common/Environment.h"
#include "common/Error.h"
#include "common/TextFile.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "platform/WindowSystem.h"
#include "products/modShellExec.h"
#include "version/ControlFileReader.h"

Text ControlFilePath;
std::shared_ptr<ForcedVersionTable> MainVersions;
std::shared_ptr<ForcedVersionTable> ReportingVersions;

namespace {

Text SectionHead(TextView section) {
    return u"[" + Text(section) + u"]";
}

void AppendLine(Text& file, const Text& line) {
    file += line;
    file += u"\r\n";
}

// A line for each piece. The empty piece behind an item string's last ";" is the empty line behind each list.
void AppendPieces(Text& file, const Text& items) {
    for (const Text& piece : Split(items, u';')) {
        AppendLine(file, piece);
    }
}

struct ControlFileItems {
    Text main;
    Text reporting;
};

ControlFileItems ReadControlFile() {
    ControlFileItems items;
    ControlFileReader file(ControlFilePath);
    while (file.NextLine()) {
        if (file.IsHead()) {
            continue;
        }
        if (file.Section() == MainSection) {
            items.main += file.Line() + u";";
        } else if (file.Section() == ReportingSection) {
            items.reporting += file.Line() + u";";
        }
    }
    return items;
}

// The table is cleared by itself first: it is gone whatever becomes of its items.
void TableReplace(ForcedVersionTable& table, const Text& items) {
    table.ForcedVersionClear(true);
    table.ForcedVersionAll(true, items);
}

}  // namespace

Text ControlFilePathGet() {
    return Trim(EnvironmentVariable(u"HOMEDRIVE") + EnvironmentVariable(u"HOMEPATH") + u"\\Eigene Dateien") +
           u"\\vtv4v.txt";
}

void WriteControlFile(const Text& mainItems, const Text& reportingItems) {
    Text file;
    AppendLine(file, u"[Info]");
    AppendLine(file, u"File=" + ControlFilePath);
    AppendLine(file, u"User=" + EnvironmentVariable(u"USERNAME"));
    AppendLine(file, u"TimeStamp=" + platform::VarBstrFromDate(platform::Now()));
    AppendLine(file, {});
    AppendLine(file, u"[Versions]");
    AppendPieces(file, ForcedVersionTable::Versions());
    AppendLine(file, SectionHead(MainSection));
    AppendPieces(file, mainItems);
    AppendLine(file, SectionHead(ReportingSection));
    AppendPieces(file, reportingItems);
    AppendLine(file, {});
    AppendLine(file, u"[End]");
    WriteTextFile(ControlFilePath, file, true);
}

void WriteDemoFile() {
    WriteControlFile(u"(Standard)=3;hugo=0;ruedi=1;", u"(Standard)=3;hugo=1;ruedi=99;");
}

void ExportVersions() {
    const Text mainItems = MainVersions->ForcedVersionAll(true);
    const Text reportingItems = ReportingVersions->ForcedVersionAll(true);
    WriteControlFile(mainItems, reportingItems);
}

void ImportVersions() {
    const ControlFileItems items = ReadControlFile();
    TableReplace(*MainVersions, items.main);
    TableReplace(*ReportingVersions, items.reporting);
}

void ClearVersions() {
    MainVersions->ForcedVersionClear(true);
    ReportingVersions->ForcedVersionClear(true);
}

void EditControlFile() {
    LastError().Clear();
    if (const std::optional<Error> error = TrapError([] { ShellOpen(ControlFilePath); })) {
        FailureShow(u"Kann Version File nicht öffnen:", ControlFilePath, error->description);
    }
}

void FailureShow(const Text& failure, const Text& path, const Text& description) {
    platform::MessageBoxW(failure + u"\r\n" + path + u"\r\n" + description,
                          platform::ProgramVersionGet().fileDescription,
                          platform::ButtonsOk + platform::IconExclamation);
}
