#include "settings/ProgOption.h"

#include <optional>

#include "common/Error.h"
#include "common/modStringLibrary.h"
#include "platform/WindowSystem.h"

namespace {

constexpr TextView ProbeName = u"_ProgOption_";
constexpr TextView ProbeText = u"_Test1234_";

}  // namespace

Text ProgOption::SectionKey(const Text& section) const {
    const Text root = Trim(sectionRoot_);
    const Text below = Trim(section);
    Text path = root;
    if (!root.empty() && !below.empty() && !root.ends_with(u'\\')) {
        path += u'\\';
    }
    path += below;
    if (path.ends_with(u'\\')) {
        path.pop_back();
    }
    return path;
}

Variant ProgOption::Get(Store open, const Text& section, const Text& name, const Variant& byDefault) {
    Variant result = std::holds_alternative<NotGiven>(byDefault) ? Variant(Empty{}) : byDefault;
    TrapError([&] {
        (optionKey_.*open)(SectionKey(section), false);
        result = optionKey_.Value(name);
    });
    optionKey_.KeyClose();
    platform::DoEvents();
    return result;
}

// Root and section are opened to be read, and each step then asks for the one right that it needs besides. To open them
// with all rights at once would be fewer calls; but a right that is refused must fail the step that needs it, in that
// step's words.
void ProgOption::StoreValue(Store open, const Text& section, const Text& name, const Variant& value) {
    const KeyCloser closer(optionKey_);
    if (!section.empty()) {
        (optionKey_.*open)(SectionKey({}), true);
        optionKey_.SubKeyCreate(section);
        optionKey_.KeyClose();
    }
    (optionKey_.*open)(SectionKey(section), true);
    optionKey_.Value(name, value);
}

void ProgOption::Set(Store open, const Text& section, const Text& name, const Variant& value) {
    StoreValue(open, section, name, value);
    platform::DoEvents();
}

void ProgOption::Delete(Store open, const Text& section, const Text& name) {
    TrapError([&] {
        (optionKey_.*open)(SectionKey(section), false);
        optionKey_.ValueNameDelete(name);
    });
    optionKey_.KeyClose();
    platform::DoEvents();
}

bool ProgOption::CanWrite(Store open, const Text& section) {
    const Text probe(ProbeName);
    const std::optional<Error> error = TrapError([&] {
        Set(open, section, probe, Text(ProbeText));
        Delete(open, section, probe);
    });
    return !error;
}

Variant ProgOption::CurrentUser(const Text& section, const Text& name, const Variant& byDefault) {
    return Get(&Registry::KeyOpenCurrentUser, section, name, byDefault);
}

Variant ProgOption::LocalMachine(const Text& section, const Text& name, const Variant& byDefault) {
    return Get(&Registry::KeyOpenLocalMachine, section, name, byDefault);
}

void ProgOption::CurrentUser(const Text& section, const Text& name, const Variant& /*byDefault*/,
                             const Variant& value) {
    Set(&Registry::KeyOpenCurrentUser, section, name, value);
}

void ProgOption::LocalMachine(const Text& section, const Text& name, const Variant& /*byDefault*/,
                              const Variant& value) {
    Set(&Registry::KeyOpenLocalMachine, section, name, value);
}

void ProgOption::CurrentUserDelete(const Text& section, const Text& name) {
    Delete(&Registry::KeyOpenCurrentUser, section, name);
}

void ProgOption::LocalMachineDelete(const Text& section, const Text& name) {
    Delete(&Registry::KeyOpenLocalMachine, section, name);
}

bool ProgOption::CurrentUserCanWrite(const Text& section) {
    return CanWrite(&Registry::KeyOpenCurrentUser, section);
}

bool ProgOption::LocalMachineCanWrite(const Text& section) {
    return CanWrite(&Registry::KeyOpenLocalMachine, section);
}
