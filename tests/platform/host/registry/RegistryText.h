#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/MachineFiles.h"
#include "platform/host/registry/RegFile.h"
#include "platform/host/registry/RegistryJournal.h"

// The machine's part of the registry as text, and the journal that writes it.

inline constexpr std::string_view RegFirstLine = "Windows Registry Editor Version 5.00\r\n";
inline const std::vector<platform::host::RegFileRoot> MachineRoots = {{u"HKEY_LOCAL_MACHINE", {}},
                                                                      {u"HKEY_CLASSES_ROOT", u"Software\\Classes"}};

// Everything that a tree holds.
inline std::string Dump(const platform::host::RegistryKey& root) {
    std::string text;
    platform::host::WriteRegFile(root, u"HKEY_LOCAL_MACHINE", [&text](std::string_view piece) { text += piece; });
    return text;
}

inline platform::host::RegistryJournal MachineJournal() {
    return {OnMachine("machine.reg"), MachineRoots, {}};
}
