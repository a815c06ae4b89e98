#pragma once

#include <string>

// What a test's machine does for the registry, and takes back; the driver, whose program runs in another process and so
// on the system's registry, does nothing.

// Gives this process empty roots: keys of its own below a key of the user's, whoever the user is.
std::string OwnRegistryKey();
void OwnRegistryMake();
// Gives it the system's roots again, and removes those keys.
void OwnRegistryRemove();
