#include <functional>
#include <tuple>

#include "Check.h"
#include "RawRegistry.h"
#include "TestMachine.h"
#include "settings/Registry.h"

namespace {

const Text Key = u"Software\\Vandrel\\Tallora\\Test";
const std::string RawKey = "Software\\Vandrel\\Tallora\\Test";
const platform::Handle User = platform::KeyCurrentUser;

// A machine with the key below HKEY_CURRENT_USER, and a Registry that is closed on destruction.
struct RegistryKeyFixture : TestMachine {
    RegistryKeyFixture() { RawValueSet(User, RawKey, "", RawNumber(1)); }
    ~RegistryKeyFixture() { registry.KeyClose(); }

    Registry registry;
};

}  // namespace

TEST_CASE_FIXTURE(RegistryKeyFixture, "KeyOpen keeps a key that is already open; each KeyOpen function uses its root") {
    CHECK_FALSE((registry.EOF_SubKey() || registry.EOF_ValueName()));
    registry.KeyOpenCurrentUser(Key);
    const platform::Handle open = registry.hCurrentKey();
    registry.AccessMode(15);
    registry.KeyOpenCurrentUser(Key + u"\\missing");
    CHECK(registry.hCurrentKey() == open);
    CHECK(registry.Value({}) == Variant(std::int32_t{1}));
    registry.KeyClose();
    CHECK(registry.AccessMode() == 1);
    CHECK(registry.hCurrentKey() == 0);
    CHECK(RaisedBy([&] { registry.SubKeyFirst(); }).description == u"Key not opened: ");
    for (const auto& [root, openRoot] : {std::pair(platform::KeyClassesRoot, &Registry::KeyOpenClassesRoot),
                                         {platform::KeyCurrentUser, &Registry::KeyOpenCurrentUser},
                                         {platform::KeyLocalMachine, &Registry::KeyOpenLocalMachine},
                                         {platform::KeyUsers, &Registry::KeyOpenUsers}}) {
        (registry.*openRoot)({}, false);
        CHECK(registry.hKey() == root);
        registry.KeyClose();
    }
}

TEST_CASE_FIXTURE(RegistryKeyFixture, "Operations add the rights they need, but don't recreate a deleted key") {
    struct {
        std::int32_t rights;
        std::function<void()> operation;
    } const operations[] = {{5, [&] { registry.SubKeyCreate(u"a"); }},  {9, [&] { registry.SubKeyFirst(); }},
                            {5, [&] { registry.SubKeyDelete(u"a"); }},  {9, [&] { registry.ValueNameFirst(); }},
                            {3, [&] { registry.ValueNameDelete({}); }}, {3, [&] { registry.Value(u"v", Null{}); }}};
    for (const auto& each : operations) {
        RawValueSet(User, RawKey, "", RawNumber(1));
        registry.KeyOpenCurrentUser(Key);
        each.operation();
        CHECK(registry.AccessMode() == each.rights);
        registry.KeyClose();
        CHECK(registry.SubKey().empty());
    }
    for (const auto& each : operations) {
        RawValueSet(User, RawKey, "", RawNumber(1));
        registry.KeyOpenCurrentUser(Key);
        CHECK(platform::RegDeleteKeyA(User, RawKey) == platform::StatusSuccess);
        CHECK(RaisedBy(each.operation).description == u"Key not opened: " + Key);
        CHECK_FALSE(RawKeyExists(User, RawKey));
    }
}

TEST_CASE_FIXTURE(RegistryKeyFixture, "Opening a missing key fails, or creates the key if force is true") {
    const Text missing = Key + u"\\a\\b";
    const Error raised = RaisedBy([&] { registry.KeyOpenCurrentUser(missing); });
    CHECK(raised.number == 2);
    CHECK(raised.description == u"Key not opened: " + missing);
    CHECK(registry.hKey() == 0);
    CHECK(RaisedBy([&] { registry.KeyOpenLocalMachine(missing); }).number == 2);
    registry.KeyOpenCurrentUser(Key, true);
    CHECK(registry.AccessMode() == 1);
    registry.KeyClose();
    registry.KeyOpenCurrentUser(missing, true);
    CHECK(registry.AccessMode() == 5);
    registry.Value(u"n", std::int32_t{7});
    CHECK(RawValue(User, RawKey + "\\a\\b", "n") == RawNumber(7));
    RawValueSet(User, RawKey + "\\a\\b\\c", "", RawNumber(1));  // fails if the key is volatile
}

TEST_CASE_FIXTURE(RegistryKeyFixture,
                  "Enumeration visits every entry, and an oversized value fails only its own step") {
    RawValueSet(User, RawKey, "a", RawText(std::string(255, 'x')));
    RawValueSet(User, RawKey, "b", RawNumber(1));
    RawValueSet(User, RawKey, "B", RawText(std::string(254, 'x')));
    for (const std::string key : {"beta", "\xE4", "Alpha", "BETA", "\xC4"}) {
        RawValueSet(User, RawKey + "\\" + key, "x", RawNumber(1));
    }
    registry.KeyOpenCurrentUser(Key);
    // A new object starts with the first name. An unfinished enumeration doesn't affect the next one.
    registry.SubKeyNext();
    registry.ValueNameNext();
    CHECK(registry.SubKey() == u"Alpha");
    std::vector<Text> keys;
    for (registry.SubKeyFirst(); !registry.EOF_SubKey(); registry.SubKeyNext()) {
        keys.push_back(registry.SubKey());
    }
    CHECK(keys == std::vector<Text>{u"Alpha", u"beta", u"ä"});
    CHECK(registry.SubKey().empty());
    registry.ValueNameFirst();
    CHECK(registry.ValueName().empty());
    CHECK_FALSE(registry.EOF_ValueName());
    CHECK(RaisedBy([&] { registry.ValueNameNext(); }).number == 234);
    CHECK(registry.EOF_ValueName());
    registry.ValueNameNext();
    CHECK(registry.ValueName() == u"b");
    registry.ValueNameNext();
    CHECK(registry.EOF_ValueName());
}

TEST_CASE_FIXTURE(RegistryKeyFixture, "A failed deletion raises an error with the description of the pending error") {
    RawValueSet(User, RawKey + "\\a\\b", "x", RawNumber(1));
    registry.KeyOpenCurrentUser(Key);
    CHECK(RaisedBy([&] { registry.SubKeyDelete(u"missing"); }).description == u"Error ");
    CHECK(RaisedBy([&] { registry.SubKeyDelete(u"a"); }).number == 5);
    IgnoreErrors([] { Raise(1, u"früher"); }, [&] { registry.ValueNameDelete(u"missing"); },
                 [] { CHECK(LastError().Description() == u"Error früher"); },
                 [&] { std::ignore = registry.Value(u"missing"); },
                 [] { CHECK((LastError().Number() == 2 && LastError().Description() == u"Error früher")); });
}

TEST_CASE_FIXTURE(RegistryKeyFixture, "A stored value reads back as a string, a number or Null") {
    const std::pair<RawData, Variant> cases[] = {{RawText(std::string(1023, 'x')), Text(1023, u'x')},
                                                 {{platform::RegSz, ""}, Text()},
                                                 {{platform::RegExpandSz, std::string("%PATH%\0", 7)}, Text(u"%PATH%")},
                                                 {RawNumber(0x7FFFFFFF), std::int32_t{0x7FFFFFFF}},
                                                 {{platform::RegBinary, "abcd"}, Null{}}};
    registry.KeyOpenCurrentUser(Key);
    for (const auto& [stored, read] : cases) {
        RawValueSet(User, RawKey, "v", stored);
        CHECK(registry.Value(u"v") == read);
    }
    RawValueSet(User, RawKey, "v", RawText(std::string(1024, 'x')));
    CHECK(RaisedBy([&] { std::ignore = registry.Value(u"v"); }).number == 234);
    RawValueSet(User, RawKey, "v", RawNumber(0x80000000U));
    CHECK(RaisedBy([&] { std::ignore = registry.Value(u"v"); }).number == 6);
}

TEST_CASE_FIXTURE(RegistryKeyFixture, "Strings and numbers are stored; other variant types aren't") {
    const std::pair<Variant, RawData> cases[] = {{std::uint8_t{255}, RawNumber(255)},
                                                 {std::int16_t{5}, RawNumber(5)},
                                                 {std::int32_t{0x12345678}, RawNumber(0x12345678)},
                                                 {Text(u"Löschen"), RawText("L\xF6schen")}};
    registry.KeyOpenCurrentUser(Key);
    for (const auto& [value, stored] : cases) {
        registry.Value(u"v", value);
        CHECK(RawValue(User, RawKey, "v") == stored);
    }
    for (const Variant& other :
         {Variant(NotGiven{}), Variant(Empty{}), Variant(Null{}), Variant(true), Variant(1.5), Variant(Date{1})}) {
        registry.Value(u"v", other);
    }
    CHECK(RaisedBy([&] { registry.Value(u"v", std::int32_t{-256}); }).number == 5);
    CHECK(RawValue(User, RawKey, "v") == RawText("L\xF6schen"));
}
