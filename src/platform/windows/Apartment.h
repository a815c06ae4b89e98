#pragma once

namespace platform::windows {

// Initialises COM on the calling thread; the shell functions need it too. COM stays initialised until the process
// exits.
void EnterApartment();

}  // namespace platform::windows
