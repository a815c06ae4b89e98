#pragma once

namespace platform::windows {

// Initialises COM, which the shell functions need too, on the calling thread. COM stays initialised until the process
// ends.
void EnterApartment();

}  // namespace platform::windows
