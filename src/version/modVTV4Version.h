#pragma once

#include <memory>

#include "common/Text.h"
#include "version/ForcedVersionTable.h"

// The control file, a plain text through which the administrator edits the forced version tables, and the operations
// that move the tables of the local machine to and from it.

// "vtv4v.txt" in the user's folder "Eigene Dateien"; set when the window loads.
extern Text ControlFilePath;

// The tables of the two products, shared with their profiles while the window is loaded.
extern std::shared_ptr<ForcedVersionTable> MainVersions;
extern std::shared_ptr<ForcedVersionTable> ReportingVersions;

// The control file's place by the environment of this process. The folder need not exist.
Text ControlFilePathGet();

// Writes the control file with these two tables, as item strings. Raises a file's error; the earlier file then stays.
void WriteControlFile(const Text& mainItems, const Text& reportingItems);

// Writes the control file with demonstration data, without a look at the registry.
void WriteDemoFile();

// Writes the control file with the tables as they are.
void ExportVersions();

// Replaces both tables by what the control file holds, once it is read whole and closed. Raises a file's error, the
// overflow error for a line of more than 32767 characters, and what ForcedVersionTable::ForcedVersionAll raises.
void ImportVersions();

// Clears both tables. Raises nothing.
void ClearVersions();

// Opens the control file in the editor of its type, and does not wait for it. A failure is shown in a message box.
void EditControlFile();

// Shows a message box with the exclamation icon, titled with the program's file description: what failed, the path it
// failed on, and the error's description, a line each.
void FailureShow(const Text& failure, const Text& path, const Text& description);
