#pragma once

namespace platform::windows {

// Makes this thread ready for the component object model, which the shell uses too. It stays so to the process' end.
void ApartmentEnter();

}  // namespace platform::windows
