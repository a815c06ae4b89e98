#pragma once

#include <filesystem>

// The stand-in machine: one folder that holds its registry, environment, drive and clipboard.
namespace platform::host {

// $VTV4V_MACHINE, or else vtv4v/machine below the user's data folder ($XDG_DATA_HOME, by default $HOME/.local/share).
// The folder may be missing: that is an empty machine. Asked anew at each call, so that a process can change machines.
std::filesystem::path MachineFolder();

}  // namespace platform::host
