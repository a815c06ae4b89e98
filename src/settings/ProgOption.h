#pragma once

#include "common/Text.h"
#include "common/Variant.h"
#include "settings/Registry.h"

// A program's options: named values in sections below one root path, stored for the current user or for the local
// machine. Reading returns a default for a missing value, writing creates missing keys, deleting never fails. A section
// can have several levels separated by backslashes; an empty section is the root path itself.
//
// Every operation closes its key and, unless it raises an error, then processes pending window messages.
class ProgOption {
public:
    // The path of all sections below HKEY_CURRENT_USER or HKEY_LOCAL_MACHINE. Stored unchanged.
    [[nodiscard]] const Text& SectionRoot() const { return sectionRoot_; }
    void SectionRoot(const Text& path) { sectionRoot_ = path; }

    // Return the stored value, or `defaultValue` if it can't be read, or Empty if no default is passed. Return Null,
    // not the default, for a stored type that is neither a string nor a number.
    [[nodiscard]] Variant CurrentUser(const Text& section, const Text& name, const Variant& defaultValue = NotGiven{});
    [[nodiscard]] Variant LocalMachine(const Text& section, const Text& name, const Variant& defaultValue = NotGiven{});

    // Store the value. Ignore `defaultValue`, which only mirrors the get. Propagate registry errors.
    void CurrentUser(const Text& section, const Text& name, const Variant& defaultValue, const Variant& value);
    void LocalMachine(const Text& section, const Text& name, const Variant& defaultValue, const Variant& value);

    // Delete the value, if it exists and the rights suffice.
    void CurrentUserDelete(const Text& section, const Text& name);
    void LocalMachineDelete(const Text& section, const Text& name);

    // True if a string can be stored in the section. Store and delete a probe value to find out; keys created for it
    // remain.
    [[nodiscard]] bool CurrentUserCanWrite(const Text& section);
    [[nodiscard]] bool LocalMachineCanWrite(const Text& section = {});

private:
    // The operation that opens a key of the current user or of the local machine.
    using Store = void (Registry::*)(const Text& path, bool force);

    [[nodiscard]] Text SectionKey(const Text& section) const;
    Variant Get(Store open, const Text& section, const Text& name, const Variant& defaultValue);
    void StoreValue(Store open, const Text& section, const Text& name, const Variant& value);
    void Set(Store open, const Text& section, const Text& name, const Variant& value);
    void Delete(Store open, const Text& section, const Text& name);
    bool CanWrite(Store open, const Text& section);

    Text sectionRoot_;
    Registry optionKey_;
};
