#include "platform/host/registry/RegistryKey.h"

#include <algorithm>
#include <iterator>

namespace platform::host {

std::vector<std::u16string_view> PathLevels(std::u16string_view path) {
    std::vector<std::u16string_view> levels;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find(u'\\'), path.size());
        if (end > 0) {
            levels.push_back(path.substr(0, end));
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return levels;
}

std::u16string RegistryKey::Path() const {
    if (parent_ == nullptr) {
        return {};
    }
    std::u16string path = parent_->Path();
    if (!path.empty()) {
        path += u'\\';
    }
    return path + name_;
}

RegistryKey::Pointer RegistryKey::SubKey(std::u16string_view name) const {
    const auto found = subKeys_.find(name);
    return found == subKeys_.end() ? nullptr : *found;
}

RegistryKey::Pointer RegistryKey::SubKeyMade(std::u16string_view name) {
    if (Pointer there = SubKey(name)) {
        return there;
    }
    const auto made = subKeys_.insert(std::make_shared<RegistryKey>(this, name)).first;
    if (subKeyReached_ == subKeys_.end() || ByName()(*made, *subKeyReached_)) {
        ++subKeysBefore_;
    }
    return *made;
}

bool RegistryKey::DeleteSubKey(std::u16string_view name) {
    const auto found = subKeys_.find(name);
    if (found == subKeys_.end()) {
        return false;
    }
    if (found == subKeyReached_) {
        ++subKeyReached_;
    } else if (subKeyReached_ == subKeys_.end() || ByName()(*found, *subKeyReached_)) {
        --subKeysBefore_;
    }
    subKeys_.erase(found);
    return true;
}

RegistryKey::Pointer RegistryKey::SubKeyAt(std::size_t index) const {
    if (index >= subKeys_.size()) {
        return nullptr;
    }
    if (index < subKeysBefore_ / 2) {
        subKeyReached_ = subKeys_.begin();
        subKeysBefore_ = 0;
    }
    for (; subKeysBefore_ < index; ++subKeysBefore_) {
        ++subKeyReached_;
    }
    for (; subKeysBefore_ > index; --subKeysBefore_) {
        --subKeyReached_;
    }
    return *subKeyReached_;
}

const RegistryValue* RegistryKey::Value(std::u16string_view name) const {
    const auto found = values_.find(name);
    return found == values_.end() ? nullptr : &found->second;
}

void RegistryKey::Value(std::u16string_view name, RegistryValue value) {
    if (const auto found = values_.find(name); found != values_.end()) {
        static_cast<RegistryValue&>(found->second) = std::move(value);
        return;
    }
    const auto made = values_.emplace(name, OrderedValue{std::move(value), order_.size()}).first;
    order_.push_back(&*made);
}

bool RegistryKey::DeleteValue(std::u16string_view name) {
    const auto found = values_.find(name);
    if (found == values_.end()) {
        return false;
    }
    const std::size_t place = found->second.place;
    order_[place] = nullptr;
    if (place < placeReached_) {
        --valuesBefore_;
    }
    values_.erase(found);
    CloseGaps();
    return true;
}

// Once most places are empty, so that going through them costs no more than the values do.
void RegistryKey::CloseGaps() {
    constexpr std::size_t fewPlaces = 16;
    if (order_.size() < fewPlaces || order_.size() < 2 * values_.size()) {
        return;
    }
    std::erase(order_, nullptr);
    for (std::size_t place = 0; place < order_.size(); ++place) {
        values_.find(order_[place]->first)->second.place = place;
    }
    placeReached_ = valuesBefore_;
}

const RegistryKey::NamedValue* RegistryKey::ValueAt(std::size_t index) const {
    if (index >= values_.size()) {
        return nullptr;
    }
    if (index < valuesBefore_ / 2) {
        placeReached_ = 0;
        valuesBefore_ = 0;
    }
    while (valuesBefore_ > index) {
        --placeReached_;
        valuesBefore_ -= order_[placeReached_] == nullptr ? 0 : 1;
    }
    while (valuesBefore_ < index || order_[placeReached_] == nullptr) {
        valuesBefore_ += order_[placeReached_] == nullptr ? 0 : 1;
        ++placeReached_;
    }
    return order_[placeReached_];
}

void RegistryKey::Become(RegistryKey& other) {
    values_.swap(other.values_);
    order_.swap(other.order_);
    placeReached_ = 0;
    valuesBefore_ = 0;

    SubKeys become;
    for (const Pointer& theirs : other.subKeys_) {
        const Pointer ours = SubKey(theirs->name_);
        if (ours != nullptr) {
            ours->Become(*theirs);
        }
        become.insert(become.end(), ours != nullptr ? ours : theirs);
        (*become.rbegin())->parent_ = this;
    }
    subKeys_.swap(become);
    subKeyReached_ = subKeys_.begin();
    subKeysBefore_ = 0;
}

RegistryKey::Pointer KeyAt(RegistryKey::Pointer start, std::u16string_view path) {
    for (const std::u16string_view level : PathLevels(path)) {
        start = start->SubKey(level);
        if (start == nullptr) {
            break;
        }
    }
    return start;
}

RegistryKey::Pointer KeyMade(RegistryKey::Pointer start, std::u16string_view path) {
    for (const std::u16string_view level : PathLevels(path)) {
        start = start->SubKeyMade(level);
    }
    return start;
}

}  // namespace platform::host
