#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "common/Text.h"
#include "platform/Regional.h"

// A map that keeps insertion order. Keys are case-insensitive; spaces are significant. Meant for short lists: lookups
// are linear.
template <typename Item>
class KeyedList {
public:
    struct Entry {
        Text key;  // in uppercase
        Item item;
    };

    [[nodiscard]] bool IsEmpty() const { return entries_.empty(); }
    [[nodiscard]] auto begin() const { return entries_.begin(); }
    [[nodiscard]] auto end() const { return entries_.end(); }

    // Returns the item that was added first. Raises 9 (subscript out of range) if the list is empty.
    [[nodiscard]] const Item& First() const {
        if (entries_.empty()) {
            Raise(RuntimeError::SubscriptOutOfRange);
        }
        return entries_.front().item;
    }

    // Returns the item with this key, or null. The pointer is valid until the list changes.
    [[nodiscard]] Item* Find(const Text& key) {
        const auto found = std::ranges::find(entries_, platform::CharUpperW(key), &Entry::key);
        return found == entries_.end() ? nullptr : &found->item;
    }

    // Adds `item` at the end. Raises 5 (invalid argument) if the key exists.
    void Add(const Text& key, Item item) {
        if (Find(key) != nullptr) {
            Raise(RuntimeError::InvalidArgument);
        }
        entries_.push_back({platform::CharUpperW(key), std::move(item)});
    }

    // Removes the item with this key, if it exists.
    void Remove(const Text& key) {
        std::erase_if(entries_,
                      [folded = platform::CharUpperW(key)](const Entry& entry) { return entry.key == folded; });
    }

private:
    std::vector<Entry> entries_;
};
