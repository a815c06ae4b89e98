#pragma once

namespace platform::windows {

// Initialises COM on this thread, if that hasn't been done yet. COM stays initialised until the process ends. The shell
// functions need it too.
void ApartmentEnter();

}  // namespace platform::windows
