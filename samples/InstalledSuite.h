#pragma once

#include <set>
#include <string>

// The suite's run-time components on this process's machine (platform::host::MachineFolder), so that the check of the
// installation passes there: 26 files of version 1.2.3.4 changed on 16.12.2017 10:16:40, the core package's uninstall
// entry, the registrations of two components, the environment's folders, and what the called function returns.
//
// `without` names what is left out, in any case: a component by the row it has in the check's report or by its file's
// name, or "VCUTIL1.DebugLog" for the registration of that object alone. The machine's registry is written with the
// registry's own calls; the files below drives/c are replaced. Throws a std::exception when the machine cannot be
// written.
void InstalledSuiteAdd(const std::set<std::string>& without);

// True for a name that InstalledSuiteAdd can leave out.
bool InstalledSuiteKnows(const std::string& name);
