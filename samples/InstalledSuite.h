#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include "platform/Handle.h"

// Installs the suite's components on the machine (platform::host::MachineFolder), so that the installation check
// passes: their files, with version 1.2.3.4 and date 16.12.2017 10:16:40, their registrations, the core package's
// uninstall entry, the environment variables of their folders, and the result of the function that the check calls.
// Doesn't change files, variables or results that exist.
//
// Leaves out the components in `without`, and removes them if they are installed. A component is named, in any letter
// case, by its row in the check's report or by its file name. "VCUTIL1.DebugLog" names only the registration of that
// object. Throws a std::exception if the machine can't be written.
void InstalledSuiteAdd(const std::set<std::string>& without);

// True if InstalledSuiteAdd can leave out a component of that name.
bool InstalledSuiteKnows(const std::string& name);

// Creates the folders of a path on the machine's drives, up to its last "\". Throws if that fails.
void CreateFolders(const std::string& path);

// Creates a file with its folders on the machine's drives. Returns false and changes nothing if the file exists. Throws
// if the file can't be written; it is then missing, not half written.
bool AddFile(const std::string& path, std::string_view content);

// Appends a line to a text file of the machine. Throws if the file can't be written.
void AppendLine(const std::filesystem::path& path, const std::string& line);

// Adds a value to the key `path` below `root`; creates the key, and keeps an existing value. Throws if the registry
// returns an error.
void AddValue(platform::Handle root, const std::string& path, const std::string& name, std::uint32_t type,
              std::string_view data);
