#pragma once

#include <filesystem>
#include <map>
#include <string>

// The stand-in machine: one folder that holds its registry, environment, drive and clipboard.
namespace platform::host {

// $VTV4V_MACHINE, or else vtv4v/machine below the user's data folder ($XDG_DATA_HOME, by default $HOME/.local/share).
// The folder may be missing: that is an empty machine. Asked anew at each call, so that a process can change machines.
std::filesystem::path MachineFolder();

// A variable of the process; empty for one that is missing.
std::string ProcessVariable(const char* name);

// The lines "name=value" of a file in the machine's folder, in UTF-8, read at each call. Names are in capital letters,
// in which they are found without regard to case; a later line wins, and a line without a name or without "=" is passed
// over.
std::map<std::u16string, std::u16string> NamedValues(const char* file);

}  // namespace platform::host
