#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Handle.h"
#include "platform/host/FileDescriptor.h"
#include "platform/host/registry/RegFile.h"
#include "platform/host/registry/RegistryKey.h"

namespace platform::host {

// One .reg file of the machine and what it says, in memory. A change is appended to the file, in one write under the
// file's lock, and reaches memory by being read like what other processes append. A file that has grown to several
// times its content is rewritten. A missing file is an empty registry; it is made, with its folder, by the first
// change.
//
// An unfinished last fragment is what a killed process leaves: it does not count, and the next change takes its place.
// Everything else that cannot be read stays in the file; a rewriting keeps that file beside the new one, under the name
// with ".damaged" (then ".damaged2" and so on) behind it.
class RegistryJournal {
public:
    // `roots` are the heads' roots, the file's own first. The key `lasting` below it is there whatever the file says;
    // the empty path asks for none.
    RegistryJournal(std::filesystem::path file, std::vector<RegFileRoot> roots, std::u16string lasting);

    // Reads what the file says since the last call. Keys that are still there stay the same objects. A status when the
    // file is there and cannot be read.
    Status CatchUp();

    // The registry as of the last CatchUp or Append.
    [[nodiscard]] const RegistryKey::Pointer& Root() const { return root_; }

    // True for a root and for the lasting key: these two are not deleted.
    [[nodiscard]] bool IsLasting(const RegistryKey& key) const;

    // False when changes are refused: the owner's write bit of the file is off (or that of the folder it would be made
    // in), or the process may not write there.
    [[nodiscard]] bool Writable() const;

    // Writes the fragment that `change` makes. It is called under the file's lock and with all earlier changes read; it
    // gives a status that refuses the change, or an empty fragment when there is nothing to do. 5 when the file cannot
    // be written, 112 when the disk is full, 1117 for any other failure: then file and memory are as before.
    using Change = std::function<Status(std::string& fragment)>;
    Status Append(const Change& change);

    // Parts of fragments: the head for a value's line, empty where the file's end belongs to the key already; a new or
    // deleted key.
    [[nodiscard]] std::string HeadFor(const RegistryKey::Pointer& key) const;
    [[nodiscard]] std::string MadeKey(std::u16string_view path) const;
    [[nodiscard]] std::string DeletedKey(const RegistryKey& key) const;

private:
    Status OpenLocked(FileDescriptor& file) const;
    Status ReadNew(const FileDescriptor& file);
    Status ReadAll(const FileDescriptor& file, const struct stat& now);
    void TakeIn(std::string_view text);
    void Know(const struct stat& now);
    void BecomeEmpty();
    void Hold(FileDescriptor&& file);

    Status AppendLocked(const FileDescriptor& file, const Change& change);
    Status Write(const FileDescriptor& file, const std::string& fragment);
    void RewriteIfGrown();
    Status Rewrite();
    Status KeepDamaged() const;
    [[nodiscard]] std::size_t LiveSize() const;

    std::filesystem::path file_;
    std::vector<RegFileRoot> roots_;
    std::u16string lasting_;
    RegistryKey::Pointer root_ = std::make_shared<RegistryKey>();
    RegFileReader reader_;

    // The file as last seen.
    bool exists_ = false;
    bool writable_ = false;
    bool isUtf16_ = false;
    struct stat known_ = {};
    FileDescriptor held_;
    // How far it is read, the last bytes before that place, and what follows it: an unfinished entry.
    std::size_t consumed_ = 0;
    std::string lastConsumed_;
    std::string unfinished_;
    // The size from which on the file is compared with its live content.
    std::size_t compareAt_;
};

}  // namespace platform::host
