#pragma once

#include <array>
#include <memory>

#include "common/Error.h"
#include "common/Text.h"
#include "version/ForcedVersionTable.h"
#include "version/Product.h"

// The control file, in which the administrator edits the forced version tables, and the operations that transfer the
// local machine's tables to and from it.

// The path of "vtv4v.txt" in the user's folder "Eigene Dateien"; set when the window loads.
extern Text ControlFilePath;

// The products' tables, shared with the profiles while the window is loaded.
extern std::shared_ptr<ForcedVersionTable> MainVersions;
extern std::shared_ptr<ForcedVersionTable> ReportingVersions;

// The products' tables, in the order of Products.
using VersionTables = std::array<std::shared_ptr<ForcedVersionTable>, Products.size()>;

// Returns the path of the control file, from environment variables. The folder may be missing.
Text ControlFilePathGet();

// Writes the control file with these two item strings. Raises a file error if it can't be written.
void WriteControlFile(const Text& mainItems, const Text& reportingItems);

// Writes the control file with demonstration data. Doesn't access the registry.
void WriteDemoFile();

// Writes the tables to a control file. Raises a file error if it can't be written.
void ExportTables(const Text& path, const VersionTables& tables);

// Reads the whole control file, then replaces the tables with its items. Raises the errors of ReadControlFile, without
// changing a table, and those of ForcedVersionTable::ForcedVersionAll.
void ImportTables(const Text& path, const VersionTables& tables);

// The operations of the window's buttons on ControlFilePath and the loaded tables. ClearVersions raises nothing.
void ExportVersions();
void ImportVersions();
void ClearVersions();

// Opens the control file in the associated editor, without waiting for the editor. Shows a message box on failure.
void EditControlFile();

// Shows a message box with the exclamation icon, titled with the program's file description. Its three lines are
// `failure`, `path` and `description`.
void FailureShow(const Text& failure, const Text& path, const Text& description);

// Returns an error's description with its number. The system's words for a registry status are added, because the
// description of such an error is often empty.
Text FailureText(const Error& error);
