#include "settings/ProgOption.h"

#include <optional>

#include "common/Error.h"
#include "common/modStringLibrary.h"
#include "platform/ScopeExit.h"
#include "platform/WindowSystem.h"

namespace {

constexpr char16_t ProbeName[] = u"_ProgOption_";
constexpr char16_t ProbeText[] = u"_Test1234_";

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

Variant ProgOption::Get(Store open, const Text& section, const Text& name, const Variant& defaultValue) {
    Variant result = std::holds_alternative<NotGiven>(defaultValue) ? Variant(Empty{}) : defaultValue;
    TrapError([&] {
        (optionKey_.*open)(SectionKey(section), false);
        result = optionKey_.Value(name);
    });
    optionKey_.KeyClose();
    platform::DoEvents();
    return result;
}

// Opens the root and the section for reading; each step then adds the access right it needs. Requesting all rights at
// once would save calls, but a denied right must fail the step that needs it, with that step's error description.
void ProgOption::StoreValue(Store open, const Text& section, const Text& name, const Variant& value) {
    const platform::ScopeExit close([&] { optionKey_.KeyClose(); });
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
    const std::optional<Error> error = TrapError([&] {
        Set(open, section, ProbeName, Text(ProbeText));
        Delete(open, section, ProbeName);
    });
    return !error;
}

Variant ProgOption::CurrentUser(const Text& section, const Text& name, const Variant& defaultValue) {
    return Get(&Registry::KeyOpenCurrentUser, section, name, defaultValue);
}

Variant ProgOption::LocalMachine(const Text& section, const Text& name, const Variant& defaultValue) {
    return Get(&Registry::KeyOpenLocalMachine, section, name, defaultValue);
}

void ProgOption::CurrentUser(const Text& section, const Text& name, const Variant& /*defaultValue*/,
                             const Variant& value) {
    Set(&Registry::KeyOpenCurrentUser, section, name, value);
}

void ProgOption::LocalMachine(const Text& section, const Text& name, const Variant& /*defaultValue*/,
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
