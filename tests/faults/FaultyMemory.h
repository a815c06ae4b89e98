#pragma once

#include <optional>

// From now on this many allocations succeed, one fails, and those behind it succeed again; all, where it is not given.
// Those within the platform's calls, or while no seam is started, do not count.
void MemoryFails(std::optional<int> allocationsBefore);
