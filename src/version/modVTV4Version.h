#pragma once

#include <array>
#include <memory>

#include "common/Error.h"
#include "common/Text.h"
#include "version/ForcedVersionTable.h"
#include "version/Product.h"

// Operations on the control file, in which the administrator edits the local machine's forced version tables.

// The path of "vtv4v.txt" in the user's folder "Eigene Dateien"; set when the window loads.
extern Text ControlFilePath;

// The products' tables, shared with the profiles while the window is loaded.
extern std::shared_ptr<ForcedVersionTable> MainVersions;
extern std::shared_ptr<ForcedVersionTable> ReportingVersions;

// The products' tables, in the order of Products.
using VersionTables = std::array<std::shared_ptr<ForcedVersionTable>, Products.size()>;

// Returns the control file's path, built from environment variables. Its folder may not exist.
Text ControlFilePathGet();

// Writes the control file with these two item strings. Raises a file error if it can't be written.
void WriteControlFile(const Text& mainItems, const Text& reportingItems);

// Writes the control file with demonstration data. Doesn't access the registry.
void WriteDemoFile();

// Writes the tables to a control file. Raises a file error if it can't be written.
void ExportTables(const Text& path, const VersionTables& tables);

// Reads the whole control file, then replaces the tables with its items. If reading fails, raises the error and leaves
// the tables unchanged. Replacing the tables raises the same errors as ForcedVersionTable::ForcedVersionAll.
void ImportTables(const Text& path, const VersionTables& tables);

// The operations behind the window's buttons. They use ControlFilePath and the loaded tables. ClearVersions raises no
// errors.
void ExportVersions();
void ImportVersions();
void ClearVersions();

// Opens the control file in the associated editor, without waiting for the editor. Shows a message box on failure.
void EditControlFile();

// Shows a message box with the exclamation icon and three lines: `failure`, `path` and `description`. Its title is the
// program's file description.
void FailureShow(const Text& failure, const Text& path, const Text& description);

// Returns an error's description and number. For a registry status, adds the system's message, because such an error's
// own description is often empty.
Text FailureText(const Error& error);
