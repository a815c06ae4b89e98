#pragma once

#include <cstddef>
#include <string_view>

// How names are compared on the machine: without regard to case, and for order by their capital letters, as Windows
// does.
namespace platform::host {

char16_t Capital(char16_t character);

// The three below serve as the ordering and hashing of containers; all of them take views without a copy.
struct NameLess {
    using is_transparent = void;
    bool operator()(std::u16string_view left, std::u16string_view right) const;
};
struct NameEqual {
    using is_transparent = void;
    bool operator()(std::u16string_view left, std::u16string_view right) const;
};
struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view name) const;
};

}  // namespace platform::host
