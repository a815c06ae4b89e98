#include "settings/ProgOption.h"

#include <optional>

#include "common/Error.h"
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

Variant ProgOption::Get(platform::Handle root, const Text& section, const Text& name, const Variant& defaultValue) {
    Variant result = std::holds_alternative<NotGiven>(defaultValue) ? Variant(Empty{}) : defaultValue;
    TrapError([&] {
        optionKey_.KeyOpen(root, SectionKey(section));
        result = optionKey_.Value(name);
    });
    optionKey_.KeyClose();
    platform::DoEvents();
    return result;
}

// Opens the root and the section for reading; each step then adds the access right it needs. Requesting all rights at
// once would save calls, but a denied right must fail the step that needs it, with that step's error description.
void ProgOption::Set(platform::Handle root, const Text& section, const Text& name, const Variant& value) {
    {
        const platform::ScopeExit close([&] { optionKey_.KeyClose(); });
        if (!section.empty()) {
            optionKey_.KeyOpen(root, SectionKey({}), true);
            optionKey_.SubKeyCreate(section);
            optionKey_.KeyClose();
        }
        optionKey_.KeyOpen(root, SectionKey(section), true);
        optionKey_.Value(name, value);
    }
    platform::DoEvents();
}

void ProgOption::Delete(platform::Handle root, const Text& section, const Text& name) {
    TrapError([&] {
        optionKey_.KeyOpen(root, SectionKey(section));
        optionKey_.ValueNameDelete(name);
    });
    optionKey_.KeyClose();
    platform::DoEvents();
}

bool ProgOption::CanWrite(platform::Handle root, const Text& section) {
    const std::optional<Error> error = TrapError([&] {
        Set(root, section, ProbeName, Text(ProbeText));
        Delete(root, section, ProbeName);
    });
    return !error;
}
