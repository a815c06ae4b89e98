#pragma once

#include <string>

#include "platform/Handle.h"

namespace platform::host {

// The unnamed text value of a key below HKEY_CLASSES_ROOT, variables expanded where its type says so: "%NAME%" gives
// way to the variable's value, and stays as it is written when the variable is empty or unset.
class ClassText {
public:
    explicit ClassText(const std::string& key);

    // StatusSuccess with the empty text for a key without that value; 2 for a missing key, 87 for a value of a type
    // that is no text.
    [[nodiscard]] Status Result() const { return status_; }
    [[nodiscard]] const std::string& Text() const { return text_; }

private:
    Status Read(Handle key);

    Status status_;
    std::string text_;
};

}  // namespace platform::host
