#include <tuple>

#include "Check.h"
#include "RawRegistry.h"
#include "TestMachine.h"
#include "settings/Registry.h"

namespace {

const Text Key = u"Software\\Vandrel\\Tallora\\Test";
const std::string RawKey = "Software\\Vandrel\\Tallora\\Test";
const platform::Handle User = platform::KeyCurrentUser;

}  // namespace

TEST_CASE("A key opens for reading, widens its rights as operations need them, and does not move") {
    const TestMachine machine;
    RawValueSet(User, RawKey, "a", RawNumber(1));
    Registry registry;
    registry.KeyOpenCurrentUser(Key);
    CHECK(registry.hKey() == User);
    CHECK(registry.AccessMode() == 1);
    registry.SubKeyFirst();
    CHECK(registry.AccessMode() == 9);
    registry.Value(u"b", std::int32_t{1});
    CHECK(registry.AccessMode() == 11);
    registry.SubKeyCreate(u"c");
    CHECK(registry.AccessMode() == 15);
    const platform::Handle open = registry.hCurrentKey();
    registry.KeyOpenCurrentUser(Key + u"\\missing");
    CHECK(registry.hCurrentKey() == open);
    CHECK(registry.Value(u"a") == Variant(std::int32_t{1}));
    registry.KeyClose();
    CHECK(registry.hKey() == 0);
    CHECK(registry.hCurrentKey() == 0);
    CHECK(registry.Key().empty());
    CHECK(registry.AccessMode() == 1);
    CHECK(RaisedBy([&] { registry.SubKeyFirst(); }).description == u"Key not opened: ");
}

TEST_CASE("Rights that are expected are asked for with the next open alone, and change nothing about its failure") {
    const TestMachine machine;
    RawValueSet(User, RawKey, "a", RawText("x"));
    Registry registry;
    registry.AccessExpected(platform::KeySetValue);
    registry.KeyOpenCurrentUser(Key);
    CHECK(registry.AccessMode() == 3);
    const platform::Handle opened = registry.hCurrentKey();
    registry.Value(u"b", std::int32_t{1});
    CHECK(registry.hCurrentKey() == opened);
    registry.KeyClose();
    registry.AccessExpected(platform::KeySetValue);
    const Error raised = RaisedBy([&] { registry.KeyOpenCurrentUser(u"Missing"); });
    CHECK(raised.number == 2);
    CHECK(raised.description == u"Key not opened: Missing");
    registry.KeyOpenCurrentUser(Key);
    CHECK(registry.AccessMode() == 1);
    registry.KeyClose();
}

TEST_CASE("A missing key is refused, or forced into being with all its levels") {
    const TestMachine machine;
    Registry registry;
    const Error missing = RaisedBy([&] { registry.KeyOpenCurrentUser(Key + u"\\a\\b"); });
    CHECK(missing.number == 2);
    CHECK(missing.description == u"Key not opened: " + Key + u"\\a\\b");
    CHECK(registry.hKey() == 0);

    registry.KeyOpenCurrentUser(Key + u"\\a\\b", true);
    CHECK(registry.Key() == Key + u"\\a\\b");
    registry.Value(u"n", std::int32_t{7});
    registry.KeyClose();
    CHECK(RawValue(User, RawKey + "\\a\\b", "n") == RawNumber(7));
    registry.KeyOpenCurrentUser(Key, true);
    CHECK(registry.AccessMode() == 1);
    registry.KeyClose();
    registry.KeyOpenCurrentUser({});
    CHECK(registry.hCurrentKey() != 0);
    registry.KeyClose();
}

TEST_CASE("Subkeys and values are enumerated to their end, and a value too long stops it once") {
    const TestMachine machine;
    RawValueSet(User, RawKey, "", RawNumber(3));
    RawValueSet(User, RawKey, "a", RawText(std::string(300, 'x')));
    RawValueSet(User, RawKey, "b", RawNumber(1));
    RawValueSet(User, RawKey + "\\b", "x", RawNumber(1));
    RawValueSet(User, RawKey + "\\A", "x", RawNumber(1));
    Registry registry;
    registry.KeyOpenCurrentUser(Key);
    std::vector<Text> keys;
    for (registry.SubKeyFirst(); !registry.EOF_SubKey(); registry.SubKeyNext()) {
        keys.push_back(registry.SubKey());
    }
    CHECK(keys == std::vector<Text>{u"A", u"b"});
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
    registry.KeyClose();
}

TEST_CASE("A refused deletion raises with the pending description") {
    const TestMachine machine;
    RawValueSet(User, RawKey + "\\a\\b", "x", RawNumber(1));
    Registry registry;
    registry.KeyOpenCurrentUser(Key);
    CHECK(RaisedBy([&] { registry.SubKeyDelete(u"missing"); }).description == u"Error ");
    CHECK(RaisedBy([&] { registry.SubKeyDelete(u"a"); }).number == 5);
    {
        ResumeTrap trap;
        trap([] { Raise(1, u"früher"); });
        trap([&] { registry.ValueNameDelete(u"missing"); });
        CHECK(LastError().Description() == u"Error früher");
        trap([&] { std::ignore = registry.Value(u"missing"); });
        CHECK(LastError().Number() == 2);
        CHECK(LastError().Description() == u"Error früher");
    }
    registry.KeyClose();
}

TEST_CASE("Stored values read as text, number or null") {
    const TestMachine machine;
    struct {
        RawData stored;
        Variant read;
    } const cases[] = {{RawText(std::string(1023, 'x')), Text(1023, u'x')},
                       {{platform::RegSz, ""}, Text()},
                       {{platform::RegExpandSz, std::string("%PATH%\0", 7)}, Text(u"%PATH%")},
                       {RawNumber(0x7FFFFFFF), std::int32_t{0x7FFFFFFF}},
                       {{platform::RegBinary, "abcd"}, Null{}},
                       {{platform::RegMultiSz, std::string("a\0\0", 3)}, Null{}}};
    RawValueSet(User, RawKey, "long", RawText(std::string(1024, 'x')));
    RawValueSet(User, RawKey, "big", RawNumber(0x80000000U));
    Registry registry;
    registry.KeyOpenCurrentUser(Key);
    for (const auto& each : cases) {
        RawValueSet(User, RawKey, "v", each.stored);
        CHECK(registry.Value(u"v") == each.read);
    }
    CHECK(RaisedBy([&] { std::ignore = registry.Value(u"long"); }).number == 234);
    CHECK(RaisedBy([&] { std::ignore = registry.Value(u"big"); }).number == 6);
    registry.KeyClose();
}

TEST_CASE("Texts and numbers are stored, other kinds are not") {
    const TestMachine machine;
    Registry registry;
    registry.KeyOpenCurrentUser(Key, true);
    registry.Value(u"text", Text(u"Löschen"));
    registry.Value(u"byte", std::uint8_t{255});
    registry.Value(u"integer", std::int16_t{5});
    registry.Value(u"long", std::int32_t{0x12345678});
    for (const Variant& other :
         {Variant(NotGiven{}), Variant(Empty{}), Variant(Null{}), Variant(true), Variant(1.5), Variant(Date{1})}) {
        registry.Value(u"text", other);
    }
    CHECK(RaisedBy([&] { registry.Value(u"text", std::int32_t{-256}); }).number == 5);
    registry.KeyClose();
    CHECK(RawValue(User, RawKey, "text") == RawText("L\xF6schen"));
    CHECK(RawValue(User, RawKey, "byte") == RawNumber(255));
    CHECK(RawValue(User, RawKey, "integer") == RawNumber(5));
    CHECK(RawValue(User, RawKey, "long") == RawNumber(0x12345678));
}
