#pragma once

#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>

#include "common/Error.h"
#include "common/Text.h"
#include "platform/Regional.h"

// Items in their order of adding, each found by its key. Keys are compared without regard to letter case; blanks count.
template <typename Item>
class KeyedList {
public:
    // Items by their places, in the order of adding.
    using Places = std::map<std::uint64_t, Item>;

    [[nodiscard]] bool IsEmpty() const { return items_.empty(); }
    [[nodiscard]] typename Places::const_iterator begin() const { return items_.begin(); }
    [[nodiscard]] typename Places::const_iterator end() const { return items_.end(); }

    // The item added first; the subscript error (9) when there is none.
    [[nodiscard]] const Item& First() const {
        if (items_.empty()) {
            Raise(RuntimeError::SubscriptOutOfRange);
        }
        return items_.begin()->second;
    }

    // The item under `key`, null when there is none. It stays where it is until it is removed.
    [[nodiscard]] const Item* Find(const Text& key) const {
        const auto found = places_.find(platform::CharUpperW(key));
        return found == places_.end() ? nullptr : &items_.at(found->second);
    }
    [[nodiscard]] Item* Find(const Text& key) {
        const auto found = places_.find(platform::CharUpperW(key));
        return found == places_.end() ? nullptr : &items_.at(found->second);
    }

    // Adds `item` at the end. A key that is taken raises the invalid argument error (5).
    void Add(const Text& key, Item item) {
        if (Find(key) != nullptr) {
            Raise(RuntimeError::InvalidArgument);
        }
        // Where memory runs out, neither is added: an item without its key could not be found or removed.
        Places added;
        added.emplace(nextPlace_, std::move(item));
        places_.emplace(platform::CharUpperW(key), nextPlace_);
        items_.merge(added);
        ++nextPlace_;
    }

    // Removes the item under `key`, if there is one.
    void Remove(const Text& key) {
        if (const auto found = places_.find(platform::CharUpperW(key)); found != places_.end()) {
            items_.erase(found->second);
            places_.erase(found);
        }
    }

private:
    Places items_;
    std::unordered_map<Text, std::uint64_t> places_;
    std::uint64_t nextPlace_ = 0;
};
