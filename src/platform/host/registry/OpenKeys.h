#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>

#include "platform/Handle.h"
#include "platform/host/registry/RegistryJournal.h"
#include "platform/host/registry/RegistryKey.h"

namespace platform::host {

// A key and the journal that it stands in; HKEY_USERS itself stands in none and takes no changes.
struct PlacedKey {
    RegistryJournal* journal = nullptr;
    RegistryKey::Pointer key;

    [[nodiscard]] bool IsWritable() const { return journal != nullptr && journal->Writable(); }
};

// The registry of one machine folder and the keys that are open in it.
class OpenKeys {
public:
    // That of the folder that is the machine at this moment. When it is another one than at the last call, all keys are
    // closed. Handles are not soon used again, so that a closed one is found out.
    static OpenKeys& OfMachine();

    // Finds the key of a handle as it is now: 6 for no handle, 1018 for a deleted key, 5 when the handle has not all of
    // `rights`, or the status of a file that cannot be read.
    Status Find(Handle handle, std::int32_t rights, PlacedKey& found);

    // Finds where a call that goes from `handle` along `path` starts, and leaves in `path` what is still to go. That
    // needs no rights. 161 for a path that begins with "\", else as Find.
    Status FindStart(Handle handle, std::u16string& path, PlacedKey& start);

    Handle Open(const PlacedKey& key, std::int32_t rights);
    // 6 for no handle; a root stays open.
    Status Close(Handle handle);

private:
    struct OpenKey {
        RegistryJournal* journal;
        std::weak_ptr<RegistryKey> key;
        std::int32_t rights;
    };

    OpenKeys();
    void MoveTo(const std::filesystem::path& folder);
    Status FindRoot(Handle handle, PlacedKey& found);

    std::filesystem::path folder_;
    std::unique_ptr<RegistryJournal> machine_;
    std::unique_ptr<RegistryJournal> user_;
    RegistryKey::Pointer users_ = std::make_shared<RegistryKey>();
    std::unordered_map<Handle, OpenKey> open_;
    Handle last_ = 0;
};

}  // namespace platform::host
