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
// `without` names what is left out, in any case: a component by the row it has in the check's report or by its file's
// name, or "VCUTIL1.DebugLog" for the registration of that object alone. Throws a std::exception when the machine
// cannot be written.
void InstalledSuiteAdd(const std::set<std::string>& without);

// True for a name that InstalledSuiteAdd can leave out.
bool InstalledSuiteKnows(const std::string& name);

// Adds a line to a text file of the machine, behind a line end. Throws when it cannot be written.
void AppendLine(const std::filesystem::path& path, const std::string& line);

// Adds a value to the key `path` below `root`, both only where they are missing. False when the value was there. Throws
// when the registry refuses it.
bool AddValue(platform::Handle root, const std::string& path, const std::string& name, std::uint32_t type,
              std::string_view data);
