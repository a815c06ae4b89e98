#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include "platform/Handle.h"

// Installs the suite's components on the machine (platform::host::MachineFolder) so that the installation check passes:
// their files, with version 1.2.3.4 and date 16.12.2017 10:16:40; their registrations; the core package's uninstall
// entry; environment variables for their folders; and the result of the function that the check calls. Leaves existing
// files, variables and results unchanged.
//
// Skips the components in `without`, and removes them if they are installed. Components are identified by their row in
// the check's report or by their file name (case-insensitive). "VCUTIL1.DebugLog" identifies only that object's
// registration. Throws a std::exception if the machine can't be written.
void InstalledSuiteAdd(const std::set<std::string>& without);

// True if `name` identifies a component, as in InstalledSuiteAdd.
bool InstalledSuiteKnows(const std::string& name);

// Creates the folders in a path on the machine's drives, up to its last "\". Throws on failure.
void CreateFolders(const std::string& path);

// Creates a file and its parent folders on the machine's drives. Returns false and changes nothing if the file exists.
// Throws if the file can't be written, and leaves no partial file.
bool AddFile(const std::string& path, std::string_view content);

// Appends a line to a text file of the machine. Throws if the file can't be written.
void AppendLine(const std::filesystem::path& path, const std::string& line);

// Adds a value to the key `path` below `root` and creates the key if it is missing. Leaves an existing value unchanged.
// Throws if the registry returns an error.
void AddValue(platform::Handle root, const std::string& path, const std::string& name, std::uint32_t type,
              std::string_view data);
