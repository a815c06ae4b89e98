
#include "Check.h"
#include "RawRegistry.h"
#include "TestMachine.h"
#include "settings/ProgOption.h"

namespace {

const Text Root = u"Software\\Vandrel\\Tallora\\Test";
const std::string RawRoot = "Software\\Vandrel\\Tallora\\Test";
const platform::Handle User = platform::KeyCurrentUser;
const platform::Handle Machine = platform::KeyLocalMachine;

struct OptionFixture : TestMachine {
    OptionFixture() { option.SectionRoot(Root); }
    ProgOption option;
};

}  // namespace

TEST_CASE_FIXTURE(OptionFixture, "Root and section are joined into a path; a missing value reads as the default") {
    struct {
        Text root, section;
        std::string key;
    } const cases[] = {{Root, u"S", RawRoot + "\\S"}, {Root + u"\\", u"S", RawRoot + "\\S"},
                       {Root + u"\\", u" ", RawRoot}, {u" " + Root + u" ", u"S\\", RawRoot + "\\S"},
                       {Root, u"", RawRoot},          {u"", Root + u"\\T", RawRoot + "\\T"}};
    for (const auto& each : cases) {
        RawValueSet(User, each.key, "here", RawNumber(1));
        option.SectionRoot(each.root);
        CHECK(option.CurrentUser(each.section, u"here", Null{}) == Variant(std::int32_t{1}));
        option.CurrentUserDelete(each.section, u"here");
        CHECK(option.CurrentUser(each.section, u"here", Null{}) == Variant(Null{}));
        CHECK(option.CurrentUser(each.section, u"here") == Variant(Empty{}));
    }
}

TEST_CASE_FIXTURE(OptionFixture, "Set creates the root and the section; a probe or a delete leaves no value behind") {
    option.CurrentUser(u"S\\T", u"name", NotGiven{}, Text(u"value"));
    CHECK(RawValue(User, RawRoot + "\\S\\T", "name") == RawText("value"));
    CHECK_FALSE(RawKeyExists(Machine, RawRoot));
    CHECK(option.LocalMachineCanWrite());
    CHECK(RawKeyExists(Machine, RawRoot));
    CHECK(option.CurrentUserCanWrite(u"S\\T"));
    option.CurrentUserDelete(u"S\\T", u"name");
    CHECK_FALSE(RawValue(User, RawRoot + "\\S\\T", "name"));
    CHECK_FALSE(RawValue(User, RawRoot + "\\S\\T", "_ProgOption_"));
    // The section is created under its untrimmed name, but the value is stored under the trimmed name.
    for (const std::uint8_t number : {std::uint8_t{1}, std::uint8_t{2}}) {
        option.CurrentUser(u" U", u"name", NotGiven{}, number);
        CHECK(RawKeyExists(User, RawRoot + "\\ U"));
        CHECK(RawValue(User, RawRoot + "\\U", "name") == RawNumber(number));
    }
    // After a failed set, the next operation starts with a closed key.
    CHECK(RaisedBy([&] { option.CurrentUser(u"S", u"name", NotGiven{}, std::int32_t{-1}); }).number == 5);
    CHECK(option.CurrentUserCanWrite({}));
}
