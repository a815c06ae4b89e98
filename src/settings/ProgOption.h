#pragma once

#include "common/Text.h"
#include "common/Variant.h"
#include "platform/RegistryCalls.h"
#include "settings/Registry.h"

// A program's options: named values in sections below one root path, stored for the current user or for the local
// machine. Reading returns a default for a missing value, writing creates missing keys, deleting never fails. A section
// can have several levels separated by backslashes; an empty section is the root path itself.
//
// Every operation closes its key. Unless it raises an error, it then processes pending window messages.
class ProgOption {
public:
    // The path under HKEY_CURRENT_USER or HKEY_LOCAL_MACHINE that contains all sections. Stored as is.
    [[nodiscard]] const Text& SectionRoot() const { return sectionRoot_; }
    void SectionRoot(const Text& path) { sectionRoot_ = path; }

    // Returns the stored value. If it can't be read, returns `defaultValue`, or Empty if no default was passed. If the
    // value is neither a string nor a number, returns Null rather than the default.
    [[nodiscard]] Variant CurrentUser(const Text& section, const Text& name, const Variant& defaultValue = NotGiven{}) {
        return Get(platform::KeyCurrentUser, section, name, defaultValue);
    }
    [[nodiscard]] Variant LocalMachine(const Text& section, const Text& name,
                                       const Variant& defaultValue = NotGiven{}) {
        return Get(platform::KeyLocalMachine, section, name, defaultValue);
    }

    // Stores the value and propagates registry errors. Ignores the default value; that parameter only mirrors the
    // getter's signature.
    void CurrentUser(const Text& section, const Text& name, const Variant& /*defaultValue*/, const Variant& value) {
        Set(platform::KeyCurrentUser, section, name, value);
    }
    void LocalMachine(const Text& section, const Text& name, const Variant& /*defaultValue*/, const Variant& value) {
        Set(platform::KeyLocalMachine, section, name, value);
    }

    // Deletes the value if it exists and access rights permit.
    void CurrentUserDelete(const Text& section, const Text& name) { Delete(platform::KeyCurrentUser, section, name); }
    void LocalMachineDelete(const Text& section, const Text& name) { Delete(platform::KeyLocalMachine, section, name); }

    // True if a string can be stored in the section. Finds out by storing and deleting a probe value; keys created for
    // the probe remain.
    [[nodiscard]] bool CurrentUserCanWrite(const Text& section) { return CanWrite(platform::KeyCurrentUser, section); }
    [[nodiscard]] bool LocalMachineCanWrite(const Text& section = {}) {
        return CanWrite(platform::KeyLocalMachine, section);
    }

private:
    [[nodiscard]] Text SectionKey(const Text& section) const;
    Variant Get(platform::Handle root, const Text& section, const Text& name, const Variant& defaultValue);
    void Set(platform::Handle root, const Text& section, const Text& name, const Variant& value);
    void Delete(platform::Handle root, const Text& section, const Text& name);
    bool CanWrite(platform::Handle root, const Text& section);

    Text sectionRoot_;
    Registry optionKey_;
};
