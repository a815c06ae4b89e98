
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

TEST_CASE("Root and section are joined into a path") {
    const TestMachine machine;
    struct {
        Text root, section;
        std::string key;
    } const cases[] = {{Root, u"S", RawRoot + "\\S"}, {Root + u"\\", u"S", RawRoot + "\\S"},
                       {Root + u"\\", u" ", RawRoot}, {u" " + Root + u" ", u"S\\", RawRoot + "\\S"},
                       {Root, u"", RawRoot},          {u"", Root + u"\\T", RawRoot + "\\T"}};
    for (const auto& each : cases) {
        RawValueSet(User, each.key, "here", RawNumber(1));
        ProgOption option;
        option.SectionRoot(each.root);
        CHECK(option.CurrentUser(each.section, u"here") == Variant(std::int32_t{1}));
        option.CurrentUserDelete(each.section, u"here");
        CHECK_FALSE(RawValue(User, each.key, "here"));
    }
    // A path that begins with a backslash is invalid.
    for (const auto& [root, section] : {std::pair(Text(), u"\\" + Root), {Text(u"\\"), Root}}) {
        ProgOption option;
        option.SectionRoot(root);
        CHECK_FALSE(option.CurrentUserCanWrite(section));
        CHECK(RawValueNames(User, RawRoot) == std::vector<std::string>{});
    }
}

TEST_CASE("Get returns the stored value, else the default, else Empty") {
    const TestMachine machine;
    RawValueSet(Machine, RawRoot + "\\S", "number", RawNumber(5));
    RawValueSet(Machine, RawRoot + "\\S", "big", RawNumber(0x80000000U));
    ProgOption option;
    option.SectionRoot(Root);
    CHECK(option.LocalMachine(u"S", u"number", Text(u"default")) == Variant(std::int32_t{5}));
    CHECK(option.LocalMachine(u"S", u"big", Text(u"default")) == Variant(Text(u"default")));
    CHECK(option.LocalMachine(u"missing", u"number", Null{}) == Variant(Null{}));
    CHECK(option.CurrentUser(u"S", u"number") == Variant(Empty{}));
}

TEST_CASE("Set creates the root and the section; a probe or a delete leaves no value behind") {
    const TestMachine machine;
    ProgOption option;
    option.SectionRoot(Root);
    option.CurrentUser(u"S\\T", u"name", NotGiven{}, Text(u"value"));
    CHECK(RawValue(User, RawRoot + "\\S\\T", "name") == RawText("value"));
    CHECK_FALSE(RawKeyExists(Machine, RawRoot));
    CHECK(option.LocalMachineCanWrite());
    CHECK(RawKeyExists(Machine, RawRoot));
    CHECK(option.CurrentUserCanWrite(u"S\\T"));
    option.CurrentUserDelete(u"S\\T", u"name");
    CHECK(RawValueNames(User, RawRoot + "\\S\\T").empty());
    // The section is created under its untrimmed name, but the value is stored under the trimmed name.
    for (std::int32_t number : {1, 2}) {
        option.CurrentUser(u" U", u"name", NotGiven{}, number);
        CHECK(RawKeyExists(User, RawRoot + "\\ U"));
        CHECK(RawValue(User, RawRoot + "\\U", "name") == RawNumber(static_cast<std::uint32_t>(number)));
    }
    // After a failed set, the next operation starts with a closed key.
    CHECK(RaisedBy([&] { option.CurrentUser(u"S", u"name", NotGiven{}, std::int32_t{-1}); }).number == 5);
    CHECK(option.CurrentUserCanWrite({}));
}
