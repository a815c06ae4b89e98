#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include "platform/Handle.h"

// The suite's run-time components on this process's machine (platform::host::MachineFolder), so that the check of the
// installation passes there: 26 files of version 1.2.3.4 changed on 16.12.2017 10:16:40, the core package's uninstall
// entry, the registrations of two components, the environment's folders where they are unset, and what the called
// function returns. Files, variables and function results that are there stay as they are.
//
// Leaves out the components in `without`, and removes them if they are installed. A component is named, in any letter
// case, by its row in the check's report or by its file name; "VCUTIL1.DebugLog" names only the registration of that
// object. Throws a std::exception if the machine can't be written.
void InstalledSuiteAdd(const std::set<std::string>& without);

// True for a name that InstalledSuiteAdd can leave out.
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
