#include "Check.h"
#include "RawRegistry.h"
#include "version/LoadedMachine.h"
#include "version/VersionResolution.h"

namespace {

const platform::Handle User = platform::KeyCurrentUser;
const platform::Handle Machine = platform::KeyLocalMachine;
const std::string Section = "Software\\Vandrel\\Tallora\\V4\\Version";
const std::string Key = Section + "\\ForcedVersion";

// Returns a table whose version in force has just been resolved.
std::shared_ptr<ForcedVersionTable> MainTable() {
    return ProductProfileMain().Profile.Table;
}

}  // namespace

TEST_CASE_FIXTURE(LoadedMachine, "ForcedVersionAll replaces a table with the valid items of a string") {
    MainVersions->ForcedVersionAll(true, u"old=1;");
    MainVersions->ForcedVersionAll(true, u"=3;(standard)=4;a=1;a=2;b=-1;c=x;d;e=;f=1=1;;A=5;hugo = 1;z=7");
    CHECK(MainVersions->ForcedVersionAll(true) == u"(Standard)=3;(standard)=4;a=5;hugo =1;z=7;");
    MainVersions->ForcedVersionAll(true, {});
    CHECK_FALSE(RawKeyExists(Machine, Key));
}

TEST_CASE_FIXTURE(LoadedMachine, "ForcedVersion sets an entry in one root; a negative number deletes the entry") {
    MainVersions->ForcedVersion(true, u"hugo", 99);
    MainVersions->ForcedVersion(false, u"hugo", 1);
    CHECK(RawValue(User, Key, "hugo") == RawNumber(1));
    MainVersions->ForcedVersion(false, u"hugo", -1);
    CHECK_FALSE(RawValue(User, Key, "hugo"));
    CHECK(RawValue(Machine, Key, "hugo") == RawNumber(99));
}

TEST_CASE_FIXTURE(LoadedMachine, "Strings that contain a number read back as that number; others read as -1") {
    struct {
        RawData stored;
        std::int32_t version;
        Text listed;
    } const cases[] = {{RawText(" -7 "), -7, u"n= -7 ;"},
                       {RawText("drei"), -1, u"n=drei;"},
                       {{platform::RegBinary, "x"}, -1, u"n=;"},
                       {RawNumber(0x80000000U), -1, u""}};
    for (const auto& each : cases) {
        RawValueSet(Machine, Key, "n", each.stored);
        CHECK(MainVersions->ForcedVersion(true, u"n") == each.version);
        CHECK(MainVersions->ForcedVersionAll(true) == each.listed);
    }
    // A number that exceeds 32 bits also stops the resolution, before the user's name is recorded.
    RawValueSet(Machine, Key, "hugo", RawText("2147483648"));
    RawValueSet(User, Section, "User", RawText("earlier"));
    CHECK(RaisedBy([] { MainTable(); }).number == 6);
    CHECK(RawValue(User, Section, "User") == RawText("earlier"));
}

TEST_CASE("A starting version other than Full allows only Demo or nothing") {
    for (const std::int32_t start : {1, 2, 3, 4, 5, 99}) {
        CHECK((EffectOf(start, false, 1) == EntryEffect::Applies) == (start == 1 || start == 3));
        CHECK(EffectOf(start, true, 0) == EntryEffect::StartVersionForbids);
        CHECK(EffectOf(start, true, 2) == EntryEffect::StartVersionForbids);
    }
}

TEST_CASE_FIXTURE(LoadedMachine, "The last entry that applies determines the version in force") {
    constexpr std::int16_t levels = 4;
    struct {
        const char* what;
        Text machineItems, userItems;
        std::int32_t level[levels];
    } const cases[] = {
        {"user undoes default", u"(Standard)=3;hugo=0;", u"", {0, 0, 3, 0}},
        {"dns domain over user", u"hugo=1;office.example.hugo=99;", u"", {99, 99, 0, 0}},
        {"domain over dns", u"OFFICE.HUGO=4;office.example.hugo=99;hugo=1;", u"", {4, 4, 0, 0}},
        {"current user's default last", u"OFFICE.hugo=4;", u"(Standard)=3;", {3, 4, 0, 0}},
        {"current user can't set Full, nor by name", u"(Standard)=1;", u"(Standard)=0;hugo=5;", {1, 1, 1, 0}},
        {"current user's default sets Demo over Full", u"hugo=0;", u"(Standard)=1;", {1, 0, 0, 0}},
        {"any number, from a default", u"(Standard)=7;ruedi=1;", u"", {7, 7, 7, 0}}};
    for (const auto& each : cases) {
        INFO(each.what);
        MainVersions->ForcedVersionAll(true, each.machineItems);
        MainVersions->ForcedVersionAll(false, each.userItems);
        CHECK(MainTable()->VersionInForce() == each.level[0]);
        for (std::int16_t level = 0; level < levels; ++level) {
            CHECK(MainTable()->VersionInForce(level) == each.level[level]);
        }
    }
    for (const double level : {2.5, 4.0, -32768.0, 32767.0}) {
        CHECK(MainTable()->VersionInForce(level) == 7);
    }
    CHECK(RaisedBy([] { return MainTable()->VersionInForce(32767.5); }).number == 6);
    RawValueSet(Machine, Key, "hugo", RawText("-1"));
    CHECK(MainTable()->VersionInForce() == 7);
    CHECK(RawValue(User, Section, "User") == RawText("OFFICE.hugo"));

    Environment("USERDNSDOMAIN", {});
    MainTable()->ForcedVersion(true, u".hugo", 1);
    CHECK(MainTable()->VersionInForce() == 1);
    Environment("USERNAME", {});
    Environment("USERDOMAIN", {});
    MainTable();
    CHECK(RawValue(User, Section, "User") == RawText("."));
}
