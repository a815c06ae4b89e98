#pragma once

namespace platform::windows {

// Initialises COM, which the shell functions need too, on the calling thread. COM stays initialised until the process
// ends.
void ApartmentEnter();

}  // namespace platform::windows
