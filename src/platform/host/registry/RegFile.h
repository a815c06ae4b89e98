#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/host/registry/RegistryKey.h"

// "Windows Registry Editor Version 5.00" text, in UTF-8. Lines end with LF or CR LF; we write CR LF.
namespace platform::host {

// A root that heads may name, as "HKEY_LOCAL_MACHINE", and the path at which it lies in the tree that is read.
struct RegFileRoot {
    std::u16string name;
    std::u16string path;
};

// Reads such text into a tree, in as many pieces as it comes. What cannot be read is passed over line by line, so that
// every sound line counts, whatever stands around it. Values below a head that cannot be read have no key to go to and
// are passed over with it.
class RegFileReader {
public:
    RegFileReader(RegistryKey::Pointer root, std::vector<RegFileRoot> roots)
        : root_(std::move(root)), roots_(std::move(roots)) {}

    // Reads the entries of `text` (a head, or a value with its further lines), which begins where an entry does, and
    // returns how many bytes they were. The rest is an unfinished entry: hand it over again with what follows. `atEnd`
    // says that nothing follows for now: then a last value that misses nothing but its line end counts.
    std::size_t Read(std::string_view text, bool atEnd);

    // The key that a value at this place goes to, null when there is none.
    [[nodiscard]] RegistryKey::Pointer Section() const { return section_.lock(); }

    // True when lines were passed over that are neither entries, blank, comments nor a file's first line.
    [[nodiscard]] bool PassedOver() const { return passedOver_; }

    // Goes on in `root`, which has become what the tree read so far was.
    void MoveTo(RegistryKey::Pointer root);

private:
    void ReadEntry(std::string_view entry);
    bool ReadHead(std::string_view head);
    bool ReadValue(std::string_view entry);

    RegistryKey::Pointer root_;
    std::vector<RegFileRoot> roots_;
    std::weak_ptr<RegistryKey> section_;
    bool passedOver_ = false;
};

// The UTF-8 text of a file in UTF-16, told by its byte order mark; nothing for any other file.
std::optional<std::string> TextOfUtf16File(std::string_view bytes);

// The lines that our own text is made of, with their line ends.
std::string RegFileFirstLines();
std::string RegFileHead(std::u16string_view rootName, std::u16string_view path);
std::string RegFileDeletedHead(std::u16string_view rootName, std::u16string_view path);
std::string RegFileValue(std::u16string_view name, const RegistryValue& value);
std::string RegFileDeletedValue(std::u16string_view name);

// Hands the whole text of a tree to `sink`, in pieces.
void WriteRegFile(const RegistryKey& root, std::u16string_view rootName,
                  const std::function<void(std::string_view)>& sink);

}  // namespace platform::host
