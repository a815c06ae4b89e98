#pragma once

#include "common/Text.h"
#include "common/Variant.h"
#include "settings/Registry.h"

// A program's options: named values in sections below one root path, in the store of the current user and in that of
// the local machine. Reading gives a default for what is not there, writing creates what is missing, deleting is
// silent. A section may hold several levels parted by backslashes; an empty one is the root path itself.
//
// Every operation closes its key and, unless it raises, then gives pending window messages a turn.
class ProgOption {
public:
    // The path below a store's root key under which all sections lie, taken as it is.
    [[nodiscard]] const Text& SectionRoot() const { return sectionRoot_; }
    void SectionRoot(const Text& path) { sectionRoot_ = path; }

    // The stored value in its stored kind, else `byDefault`, else empty. Raises nothing. A stored type that is neither
    // text nor number gives null, not the default.
    [[nodiscard]] Variant CurrentUser(const Text& section, const Text& name, const Variant& byDefault = NotGiven{});
    [[nodiscard]] Variant LocalMachine(const Text& section, const Text& name, const Variant& byDefault = NotGiven{});

    // Stores the value. `byDefault` is there to mirror the get and is not looked at. Raises what the registry raises.
    void CurrentUser(const Text& section, const Text& name, const Variant& byDefault, const Variant& value);
    void LocalMachine(const Text& section, const Text& name, const Variant& byDefault, const Variant& value);

    // Deletes the value, if it is there and the rights suffice. Raises nothing.
    void CurrentUserDelete(const Text& section, const Text& name);
    void LocalMachineDelete(const Text& section, const Text& name);

    // True when a text can be stored in the section. What had to be created for that stays.
    [[nodiscard]] bool CurrentUserCanWrite(const Text& section);
    [[nodiscard]] bool LocalMachineCanWrite(const Text& section = {});

private:
    // The two stores differ in the operation that opens them.
    using Store = void (Registry::*)(const Text& path, bool force);

    [[nodiscard]] Text SectionKey(const Text& section) const;
    Variant Get(Store open, const Text& section, const Text& name, const Variant& byDefault);
    void StoreValue(Store open, const Text& section, const Text& name, const Variant& value);
    void Set(Store open, const Text& section, const Text& name, const Variant& value);
    void Delete(Store open, const Text& section, const Text& name);
    bool CanWrite(Store open, const Text& section);

    Text sectionRoot_;
    Registry optionKey_;
};
