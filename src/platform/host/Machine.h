#pragma once

#include <filesystem>
#include <map>
#include <string>

// The machine is a folder that contains its registry, environment, drives and clipboard.
namespace platform::host {

// Returns $VTV4V_MACHINE, or by default vtv4v/machine in the user's data folder ($XDG_DATA_HOME or $HOME/.local/share).
// A missing folder is an empty machine. The result isn't cached, so that a process can change machines.
std::filesystem::path MachineFolder();

// Returns an environment variable of the process, or an empty string if it is unset.
std::string ProcessVariable(const char* name);

// Reads a UTF-8 file of "name=value" lines from the machine's folder. Names are case-insensitive and converted to
// uppercase. If a name occurs twice, the last line wins. Ignores lines without a name or "=".
std::map<std::u16string, std::u16string> NamedValues(const char* file);

}  // namespace platform::host
