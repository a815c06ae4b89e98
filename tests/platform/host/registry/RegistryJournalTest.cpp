#include "Check.h"
#include "RawRegistry.h"
#include "platform/host/registry/RegistryJournal.h"
#include "platform/host/registry/RegistryText.h"

using namespace platform;
using namespace platform::host;

namespace {

RegistryValue Number(std::uint8_t number) {
    return {RegDword, {static_cast<char>(number), 0, 0, 0}};
}

Status Set(RegistryJournal& journal, std::u16string_view path, std::u16string_view name, const RegistryValue& value) {
    return journal.Append([&](std::string& fragment) {
        const RegistryKey::Pointer key = KeyAt(journal.Root(), path);
        fragment = key == nullptr ? journal.MadeKey(path) : journal.HeadFor(key);
        fragment += RegFileValue(name, value);
        return StatusSuccess;
    });
}

// Changes so much that the file is rewritten meanwhile.
void Grow(RegistryJournal& journal) {
    for (std::uint8_t count = 0; count < 20; ++count) {
        REQUIRE(Set(journal, u"a", u"large", {RegBinary, std::string(5000, 'x')}) == StatusSuccess);
        REQUIRE(Set(journal, u"a", u"large", Number(count)) == StatusSuccess);
    }
    CHECK(MachineFile("machine.reg").size() < 200000);
}

// What a process that starts now reads.
std::string DumpAnew() {
    RegistryJournal journal = MachineJournal();
    REQUIRE(journal.CatchUp() == StatusSuccess);
    return Dump(*journal.Root());
}

}  // namespace

TEST_CASE("A file cut at any byte holds all changes but the one it is cut in, and takes the next one") {
    const TestMachine machine;
    RegistryJournal journal = MachineJournal();
    std::vector<std::pair<std::size_t, std::string>> states = {{0, Dump(*journal.Root())}};  // sizes and contents
    const auto changed = [&](Status status) {
        REQUIRE(status == StatusSuccess);
        states.emplace_back(MachineFile("machine.reg").size(), Dump(*journal.Root()));
    };
    changed(Set(journal, u"other", u"witness", Number(9)));
    changed(Set(journal, u"table", u"hugo", Number(1)));
    changed(Set(journal, u"table", u"", {RegBinary, std::string(40, '\x5A')}));
    changed(Set(journal, u"table", u"text\"\\", {RegSz, std::string("\\\0\"\0\0\0", 6)}));
    changed(journal.Append([&](std::string& fragment) {
        fragment = journal.DeletedKey(*KeyAt(journal.Root(), u"table"));
        return StatusSuccess;
    }));

    const std::string whole = MachineFile("machine.reg");
    states.emplace_back(std::string::npos, "");
    auto state = states.begin();
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        CAPTURE(size);
        state += size >= state[1].first ? 1 : 0;
        const auto& [nextSize, next] = state[1];
        MachineFile("machine.reg", whole.substr(0, size));
        const std::string read = DumpAnew();
        // The key of a new table may be there before its value, and a value before its line end.
        const bool keyAlone = read.starts_with(state->second + "\r\n[HKEY_LOCAL_MACHINE\\") && read.ends_with("]\r\n");
        const bool lineEndMissing = nextSize - size <= 2 && read == next;
        CHECK((read == state->second || keyAlone || lineEndMissing));
        RegistryJournal later = MachineJournal();
        REQUIRE(Set(later, u"zz", u"next", Number(7)) == StatusSuccess);
        CHECK(DumpAnew() == read + "\r\n[HKEY_LOCAL_MACHINE\\zz]\r\n\"next\"=dword:00000007\r\n");
    }
}

TEST_CASE("Each journal sees what another one wrote, whether appended, rewritten, replaced or removed") {
    const TestMachine machine;
    RegistryJournal one = MachineJournal();
    RegistryJournal other = MachineJournal();
    const auto agree = [&] {
        return one.CatchUp() == StatusSuccess && other.CatchUp() == StatusSuccess &&
               Dump(*one.Root()) == Dump(*other.Root()) && Dump(*one.Root()) == DumpAnew();
    };
    REQUIRE(Set(one, u"a", u"n", Number(1)) == StatusSuccess);
    REQUIRE(Set(one, u"b", u"n", Number(3)) == StatusSuccess);
    const std::weak_ptr<RegistryKey> open = KeyAt(one.Root(), u"a");
    Grow(other);
    CHECK(agree());
    CHECK(KeyAt(one.Root(), u"a") == open.lock());
    REQUIRE(Set(one, u"b", u"p", Number(6)) == StatusSuccess);  // the last key of the rewritten file
    CHECK(agree());

    MachineFile("machine.reg", std::string(RegFirstLine) + "[HKEY_LOCAL_MACHINE\\fresh]\n" + std::string(70000, '\n'));
    CHECK(agree());
    CHECK(open.expired());
    std::filesystem::remove(OnMachine("machine.reg"));
    CHECK(agree());
}

TEST_CASE("What could not be read stays: in the file, and beside it when it is rewritten") {
    const TestMachine machine;
    const std::string damaged =
        std::string(RegFirstLine) + "garbage\n[HKEY_LOCAL_MACHINE\\a]\n\"n\"=dword:1\nmore garbage, unfinished";
    MachineFile("machine.reg", damaged);
    RegistryJournal journal = MachineJournal();
    REQUIRE(Set(journal, u"a", u"m", Number(2)) == StatusSuccess);
    CHECK(MachineFile("machine.reg").starts_with(damaged + "\r\n"));

    Grow(journal);
    CHECK(MachineFile("machine.reg").find("garbage") == std::string::npos);
    CHECK(DumpAnew() == Dump(*journal.Root()));
    CHECK(MachineFile("machine.reg.damaged").starts_with(damaged));
}

TEST_CASE("A UTF-16 export becomes UTF-8 with the first change") {
    const TestMachine machine;
    std::string bytes;
    for (const char character : std::string_view("[HKEY_LOCAL_MACHINE\\a]\n\"n\"=dword:1\n")) {
        bytes.append({character, 0});
    }
    MachineFile("machine.reg", "\xFF\xFE" + bytes);
    RegistryJournal journal = MachineJournal();
    REQUIRE(Set(journal, u"a", u"m", Number(2)) == StatusSuccess);
    CHECK(MachineFile("machine.reg").substr(RegFirstLine.size()) ==
          "\r\n[HKEY_LOCAL_MACHINE\\a]\r\n\"n\"=dword:00000001\r\n\"m\"=dword:00000002\r\n");
}

TEST_CASE("Two processes that change one machine at once lose nothing of each other") {
    constexpr int changes = 400;
    const TestMachine machine;
    const auto writing = [&](const std::string& mine) {
        for (int count = 0; count < changes; ++count) {
            const std::string name = mine + std::to_string(count);
            RawValueSet(KeyLocalMachine, "Table", name, RawNumber(1));
            RawValueSet(KeyLocalMachine, "Table", "shared", RawText(name + std::string(2000, 'x')));
        }
        return 0;
    };
    const pid_t other = Started([&] { return writing("b"); });
    writing("a");
    CHECK(ExitCode(other) == 0);
    CHECK(RawValueNames(KeyLocalMachine, "Table").size() == 2 * changes + 1);
    CHECK(MachineFile("machine.reg").size() < changes * 2000U);  // it was rewritten meanwhile
}
