#include <algorithm>
#include <random>
#include <set>

#include "Check.h"
#include "platform/host/RegistryKey.h"

using namespace platform::host;

TEST_CASE("Names are compared by their capital letters") {
    const std::vector<std::pair<std::u16string_view, std::u16string_view>> same = {
        {u"hugo", u"HUGO"},
        {u"\u00E4\u00F6\u00FC\u00FF", u"\u00C4\u00D6\u00DC\u0178"},
        {u"\u0161\u017E\u0153\u0142", u"\u0160\u017D\u0152\u0141"},
        {u"\u03B1\u03C9\u03CC", u"\u0391\u03A9\u038C"},
        {u"\u0436\u0451", u"\u0416\u0401"}};
    for (const auto& [one, other] : same) {
        CHECK(NameEqual()(one, other));
        CHECK(NameHash()(one) == NameHash()(other));
        CHECK_FALSE((NameLess()(one, other) || NameLess()(other, one)));
    }
    CHECK_FALSE(NameEqual()(u"\u00F7", u"\u00D7"));  // the signs that stand in the letters' places
    CHECK_FALSE(NameEqual()(u"\u00DF", u"ss"));
    CHECK(NameLess()(u"a", u"_"));
}

// Against lists that are searched from end to end, with the numbers asked for as a caller's loop would.
TEST_CASE("Subkeys and values by number stay right through any row of changes") {
    std::mt19937 random(3);
    RegistryKey key;
    std::set<std::u16string> names;      // of the subkeys
    std::vector<std::u16string> values;  // in order of first writing
    for (std::size_t step = 0; step < 6000; ++step) {
        const std::u16string name = {static_cast<char16_t>(u'A' + random() % 26),
                                     static_cast<char16_t>(u'A' + random() % 8)};
        const auto value = std::find(values.begin(), values.end(), name);
        if (random() % 4 < (step / 1000 % 2 == 0 ? 3 : 1)) {
            key.Value(name, {4, {}});
            key.SubKeyMade(name);
            values.insert(values.end(), value == values.end() ? 1 : 0, name);
            names.insert(name);
        } else {
            CHECK(key.DeleteValue(name) == (value != values.end()));
            CHECK(key.DeleteSubKey(name) == (names.erase(name) == 1));
            std::erase(values, name);
        }
        const std::size_t index = (random() % 3 == 0 ? random() : step) % (values.size() + 1);
        const RegistryKey::NamedValue* const found = key.ValueAt(index);
        const RegistryKey::Pointer subKey = key.SubKeyAt(index);
        const bool beyond = index == values.size();
        REQUIRE((found == nullptr ? beyond : found->first == values[index]));
        REQUIRE((subKey == nullptr ? beyond : subKey->Name() == *std::next(names.begin(), static_cast<int>(index))));
    }
}
