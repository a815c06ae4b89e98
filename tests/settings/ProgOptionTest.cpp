#include <string>

#include "Check.h"
#include "RawRegistry.h"
#include "TestMachine.h"
#include "settings/ProgOption.h"

namespace {

const Text Root = u"Software\\Vandrel\\Tallora\\Test";
const std::string RawRoot = "Software\\Vandrel\\Tallora\\Test";
const platform::Handle User = platform::KeyCurrentUser;
const platform::Handle Machine = platform::KeyLocalMachine;

}  // namespace

TEST_CASE("Root and section make a path") {
    const TestMachine machine;
    struct {
        Text root, section;
        std::string key;
    } const cases[] = {
        {Root, u"S", RawRoot + "\\S"},
        {Root + u"\\", u"S", RawRoot + "\\S"},
        {u" " + Root + u" ", u"S\\", RawRoot + "\\S"},
        {Root, u"", RawRoot},
        {Root + u"\\", u" ", RawRoot},
        {u"", Root + u"\\T", RawRoot + "\\T"},
    };
    for (const auto& each : cases) {
        RawValueSet(User, each.key, "here", RawText(each.key));
        ProgOption option;
        option.SectionRoot(each.root);
        CHECK(option.CurrentUser(each.section, u"here") == Variant(Text(each.key.begin(), each.key.end())));
        option.CurrentUserDelete(each.section, u"here");
        CHECK_FALSE(RawValue(User, each.key, "here"));
    }
}

TEST_CASE("A get gives what is stored, else the default, else empty") {
    const TestMachine machine;
    RawValueSet(Machine, RawRoot + "\\S", "number", RawNumber(5));
    RawValueSet(Machine, RawRoot + "\\S", "binary", {platform::RegBinary, "x"});
    RawValueSet(Machine, RawRoot + "\\S", "big", RawNumber(0x80000000U));
    ProgOption option;
    option.SectionRoot(Root);
    CHECK(option.LocalMachine(u"S", u"number", Text(u"default")) == Variant(std::int32_t{5}));
    CHECK(option.LocalMachine(u"S", u"binary", Text(u"default")) == Variant(Null{}));
    CHECK(option.LocalMachine(u"S", u"big", Text(u"default")) == Variant(Text(u"default")));
    CHECK(option.LocalMachine(u"S", u"missing") == Variant(Empty{}));
    CHECK(option.LocalMachine(u"missing", u"number", Null{}) == Variant(Null{}));
    CHECK(option.CurrentUser(u"S", u"number") == Variant(Empty{}));
    CHECK(LastError().Number() == 0);
}

TEST_CASE("A set creates root and section, in its own store alone") {
    const TestMachine machine;
    ProgOption option;
    option.SectionRoot(Root);
    option.CurrentUser(u"S\\T", u"name", NotGiven{}, Text(u"value"));
    CHECK(RawValue(User, RawRoot + "\\S\\T", "name") == RawText("value"));
    CHECK_FALSE(RawKeyExists(Machine, RawRoot));
    option.LocalMachine({}, u"name", NotGiven{}, std::int32_t{0});
    CHECK(RawValue(Machine, RawRoot, "name") == RawNumber(0));
    option.LocalMachine(u"U", u"name", NotGiven{}, Null{});
    CHECK(RawKeyExists(Machine, RawRoot + "\\U"));
    CHECK_FALSE(RawValue(Machine, RawRoot + "\\U", "name"));
}

TEST_CASE("After a failed set the next operation starts from a closed key") {
    const TestMachine machine;
    RawValueSet(User, RawRoot + "\\T", "name", RawNumber(2));
    ProgOption option;
    option.SectionRoot(Root);
    CHECK(RaisedBy([&] { option.CurrentUser(u"S", u"name", NotGiven{}, std::int32_t{-1}); }).number == 5);
    CHECK(option.CurrentUser(u"T", u"name") == Variant(std::int32_t{2}));
}

TEST_CASE("Deleting is silent, and probing leaves no value behind") {
    const TestMachine machine;
    ProgOption option;
    option.SectionRoot(Root);
    option.CurrentUser(u"S", u"name", NotGiven{}, Text(u"value"));
    option.CurrentUserDelete(u"S", u"name");
    option.CurrentUserDelete(u"S", u"name");
    option.LocalMachineDelete(u"missing", u"name");
    CHECK(option.CurrentUserCanWrite(u"S"));
    CHECK(option.LocalMachineCanWrite());
    CHECK(RawValueNames(User, RawRoot + "\\S").empty());
    CHECK(RawKeyExists(Machine, RawRoot));
}
