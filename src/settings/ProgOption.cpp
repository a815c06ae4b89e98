#include "settings/ProgOption.h"

#include <optional>

#include "common/Error.h"
#include "common/modStringLibrary.h"
#include "platform/RegistryCalls.h"
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

// A section's name that, put behind the root's path, is the section's path: no blank or backslash in it counts for
// nothing.
bool ProgOption::IsBelowRoot(const Text& section) const {
    const Text root = SectionKey({});
    return !root.ends_with(u'\\') && !section.starts_with(u'\\') && SectionKey(section) == root + u'\\' + section;
}

// Opens a section to write in it, and creates what is missing of it. A section that is there is entered from the root,
// with all rights that creating it, opening it and writing would have asked for one by one. Where that is not to be had
// each of them asks for its own, so that the one that fails tells why.
void ProgOption::SectionOpen(Store open, const Text& section) {
    if (!section.empty()) {
        optionKey_.AccessExpected(platform::KeyCreateSubKey);
        (optionKey_.*open)(SectionKey({}), true);
        if (IsBelowRoot(section) && optionKey_.SubKeyEnter(section, platform::KeySetValue)) {
            return;
        }
        optionKey_.SubKeyCreate(section);
        optionKey_.KeyClose();
    }
    optionKey_.AccessExpected(platform::KeySetValue);
    (optionKey_.*open)(SectionKey(section), true);
}

void ProgOption::Set(Store open, const Text& section, const Text& name, const Variant& value) {
    {
        const KeyCloser closer(optionKey_);
        SectionOpen(open, section);
        optionKey_.Value(name, value);
    }
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
