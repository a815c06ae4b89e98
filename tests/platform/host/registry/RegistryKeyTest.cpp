#include <algorithm>
#include <random>

#include "Check.h"
#include "platform/host/registry/RegistryKey.h"

using platform::host::RegistryKey;

// Against lists that are searched from end to end, with the numbers asked for as a caller's loop would.
TEST_CASE("Subkeys and values by number stay right through any row of changes") {
    std::mt19937 random(3);
    RegistryKey key;
    std::vector<std::u16string> values;  // in order of first writing
    for (std::size_t step = 0; step < 6000; ++step) {
        const std::u16string name = {static_cast<char16_t>(u'A' + random() % 26),
                                     static_cast<char16_t>(u'A' + random() % 8)};
        const auto value = std::find(values.begin(), values.end(), name);
        if (random() % 4 < (step / 1000 % 2 == 0 ? 3 : 1)) {
            key.Value(name, {4, {}});
            key.SubKeyMade(name);
            values.insert(values.end(), value == values.end() ? 1 : 0, name);
        } else {
            CHECK(key.DeleteValue(name) == (value != values.end()));
            CHECK(key.DeleteSubKey(name) == (value != values.end()));
            std::erase(values, name);
        }
        const std::size_t index = (random() % 3 == 0 ? random() : step) % (values.size() + 1);
        const bool beyond = index == values.size();
        std::vector<std::u16string> names = values;
        std::sort(names.begin(), names.end());
        REQUIRE((beyond ? key.ValueAt(index) == nullptr : key.ValueAt(index)->first == values[index]));
        REQUIRE((beyond ? key.SubKeyAt(index) == nullptr : key.SubKeyAt(index)->Name() == names[index]));
    }
}
