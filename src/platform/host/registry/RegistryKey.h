#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/host/NameOrder.h"

namespace platform::host {

// Windows' own limits, in characters and in levels below a root.
inline constexpr std::size_t LongestKeyName = 255;
inline constexpr std::size_t LongestValueName = 16383;
inline constexpr std::size_t DeepestKey = 512;

// A value's type and data. The data of the text types are 16-bit characters, low byte first, terminator included.
struct RegistryValue {
    std::uint32_t type;
    std::string data;
    bool operator==(const RegistryValue&) const = default;
};

// The levels of a path, without the empty ones before, between and behind its "\".
std::vector<std::u16string_view> PathLevels(std::u16string_view path);

// A key of the registry in memory, with its values and everything below it; a root is a key without a name. A parent
// shares its subkeys with whoever holds them open; of a deleted key an expired weak pointer is left. Finding, setting
// and deleting cost the same however much a key holds, and so does going through its subkeys or values by number, with
// changes on the way.
class RegistryKey {
public:
    using Pointer = std::shared_ptr<RegistryKey>;
    struct OrderedValue : RegistryValue {
        std::size_t place;
    };
    using NamedValue = std::pair<const std::u16string, OrderedValue>;

    RegistryKey() = default;
    RegistryKey(RegistryKey* parent, std::u16string_view name) : parent_(parent), name_(name) {}
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    [[nodiscard]] const std::u16string& Name() const { return name_; }
    // The key that holds this one, null for a root.
    [[nodiscard]] RegistryKey* Parent() const { return parent_; }
    // The names from below the root to this key with "\" between them, empty for a root.
    [[nodiscard]] std::u16string Path() const;

    // The subkey, null when it is missing.
    [[nodiscard]] Pointer SubKey(std::u16string_view name) const;
    // The subkey, made when it is missing.
    Pointer SubKeyMade(std::u16string_view name);
    // Deletes the subkey with everything below it; false when it is missing.
    bool DeleteSubKey(std::u16string_view name);
    [[nodiscard]] std::size_t SubKeyCount() const { return subKeys_.size(); }
    // The subkey by number in the order of names, null behind the last.
    [[nodiscard]] Pointer SubKeyAt(std::size_t index) const;

    // The value, null when it is missing. It stays where it is until it is deleted.
    [[nodiscard]] const RegistryValue* Value(std::u16string_view name) const;
    void Value(std::u16string_view name, RegistryValue value);
    // False when it is missing.
    bool DeleteValue(std::u16string_view name);
    [[nodiscard]] std::size_t ValueCount() const { return values_.size(); }
    // The value by number in the order of first writing, null behind the last.
    [[nodiscard]] const NamedValue* ValueAt(std::size_t index) const;

    // Takes over everything that `other` holds. Keys that both have stay the same objects here, and so stay open.
    void Become(RegistryKey& other);

private:
    struct ByName {
        using is_transparent = void;
        bool operator()(const Pointer& left, const Pointer& right) const { return less(left->name_, right->name_); }
        bool operator()(const Pointer& left, std::u16string_view right) const { return less(left->name_, right); }
        bool operator()(std::u16string_view left, const Pointer& right) const { return less(left, right->name_); }
        NameLess less;
    };
    using SubKeys = std::set<Pointer, ByName>;

    void CloseGaps();

    RegistryKey* parent_ = nullptr;
    std::u16string name_;

    SubKeys subKeys_;
    // The subkey last asked for by number and its number: the next one is looked for from here.
    mutable SubKeys::const_iterator subKeyReached_ = subKeys_.end();
    mutable std::size_t subKeysBefore_ = 0;

    std::unordered_map<std::u16string, OrderedValue, NameHash, NameEqual> values_;
    // The values by place, a null where a deleted one stood.
    std::vector<const NamedValue*> order_;
    // The place last asked for by number and the number of values before it.
    mutable std::size_t placeReached_ = 0;
    mutable std::size_t valuesBefore_ = 0;
};

// The key at `path` below `start`, null when it is missing; the empty path is `start` itself.
RegistryKey::Pointer KeyAt(RegistryKey::Pointer start, std::u16string_view path);
// The same, with every missing level made.
RegistryKey::Pointer KeyMade(RegistryKey::Pointer start, std::u16string_view path);

}  // namespace platform::host
