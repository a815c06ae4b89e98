#pragma once

#include <cstdint>

namespace platform::host {

// What a handle of a registry key stands for.
struct OpenKey {
    // A value that was enumerated by number; the next one is found from it without counting from the first.
    struct ReachedValue {
        std::int32_t index = -1;
        std::int64_t position = 0;
        std::int64_t changes = 0;  // the file's count then: any change through this process may shift the numbers
    };

    bool isUsers;      // in the user's file, not in the machine's
    std::int64_t key;  // its number there; that of a deleted key is not used again
    std::int32_t rights;
    ReachedValue reached = {};
};

}  // namespace platform::host
