#include "version/modVTV4Version.h"

#include <cstddef>
#include <optional>

#include "common/Environment.h"
#include "common/Error.h"
#include "platform/ComponentCalls.h"
#include "platform/Process.h"
#include "platform/WindowSystem.h"
#include "products/modShellExec.h"
#include "version/ControlFile.h"

Text ControlFilePath;
std::shared_ptr<ForcedVersionTable> MainVersions;
std::shared_ptr<ForcedVersionTable> ReportingVersions;

namespace {

VersionTables LoadedTables() {
    return {MainVersions, ReportingVersions};
}

}  // namespace

Text ControlFilePathGet() {
    return Trim(EnvironmentVariable(u"HOMEDRIVE") + EnvironmentVariable(u"HOMEPATH") + u"\\Eigene Dateien") +
           u"\\vtv4v.txt";
}

void WriteControlFile(const Text& mainItems, const Text& reportingItems) {
    WriteControlFile(ControlFilePath, {mainItems, reportingItems});
}

void WriteDemoFile() {
    WriteControlFile(u"(Standard)=3;hugo=0;ruedi=1;", u"(Standard)=3;hugo=1;ruedi=99;");
}

void ExportTables(const Text& path, const VersionTables& tables) {
    TableItems items;
    for (std::size_t product = 0; product < tables.size(); ++product) {
        items[product] = tables[product]->ForcedVersionAll(true);
    }
    WriteControlFile(path, items);
}

void ImportTables(const Text& path, const VersionTables& tables) {
    const TableItems items = ReadControlFile(path);
    for (std::size_t product = 0; product < tables.size(); ++product) {
        tables[product]->ForcedVersionClear(true);
        tables[product]->ForcedVersionAll(true, items[product]);
    }
}

void ExportVersions() {
    ExportTables(ControlFilePath, LoadedTables());
}

void ImportVersions() {
    ImportTables(ControlFilePath, LoadedTables());
}

void ClearVersions() {
    for (const std::shared_ptr<ForcedVersionTable>& table : LoadedTables()) {
        table->ForcedVersionClear(true);
    }
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

// For a run-time error, the system's message would describe an unrelated status with the same number.
Text FailureText(const Error& error) {
    const Text runtimeText = RuntimeErrorOf(static_cast<RuntimeError>(error.number)).description;
    const bool isRuntimeError = !runtimeText.empty() && error.description == runtimeText;
    const Text systemText = isRuntimeError ? Text() : platform::StatusText(error.number);
    return Trim(Trim(Trim(error.description) + u" " + systemText) + u" (Fehler " + DecimalText(error.number) + u")");
}
