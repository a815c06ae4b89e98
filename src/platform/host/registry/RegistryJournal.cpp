#include "platform/host/registry/RegistryJournal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/host/HostStatus.h"

namespace platform::host {

namespace {

// A file below the first size is never rewritten; above it, one of so many times its live content is.
constexpr std::size_t LeastRewritten = 65536;
constexpr std::size_t RewrittenGrowth = 4;
// So many bytes before the place read up to tell whether the file was changed by more than appending.
constexpr std::size_t RememberedBytes = 64;

Status Lock(const FileDescriptor& file, int kind) {
    return Uninterrupted([&] { return flock(file.Get(), kind); }) == 0 ? StatusSuccess : StatusFromErrno(errno);
}

std::size_t SizeOf(const struct stat& file) {
    return static_cast<std::size_t>(file.st_size);
}

bool SameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool SameContent(const struct stat& one, const struct stat& other) {
    return one.st_size == other.st_size && one.st_mtim.tv_sec == other.st_mtim.tv_sec &&
           one.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
}

bool OwnerMayWrite(const struct stat& file, const std::filesystem::path& path) {
    return (file.st_mode & S_IWUSR) != 0 && faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

// The bytes of the file from `start` to `end`, fewer when the file is shorter.
Status ReadRange(const FileDescriptor& file, std::size_t start, std::size_t end, std::string& bytes) {
    bytes.resize(end - start);
    std::size_t read = 0;
    while (read < bytes.size()) {
        const ssize_t count = Uninterrupted([&] {
            return pread(file.Get(), bytes.data() + read, bytes.size() - read, static_cast<off_t>(start + read));
        });
        if (count < 0) {
            return StatusFromErrno(errno);
        }
        if (count == 0) {
            break;
        }
        read += static_cast<std::size_t>(count);
    }
    bytes.resize(read);
    return StatusSuccess;
}

Status WriteAll(const FileDescriptor& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = Uninterrupted([&] { return write(file.Get(), bytes.data(), bytes.size()); });
        if (count < 0) {
            return StatusFromErrno(errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return StatusSuccess;
}

// True for the beginning of what a change writes, as a process killed in the middle leaves it.
bool LooksTorn(std::string_view unfinished) {
    return std::string_view("\r[\"@W").find(unfinished.front()) != std::string_view::npos;
}

// The file that takes the journal's place once it is whole; it is gone again when it does not.
class NextFile {
public:
    explicit NextFile(std::filesystem::path path) : path_(std::move(path)) {}
    NextFile(const NextFile&) = delete;
    NextFile& operator=(const NextFile&) = delete;
    ~NextFile() {
        if (!placed_) {
            unlink(path_.c_str());
        }
    }

    // With the owner and the rights of `earlier`.
    Status Open(const struct stat& earlier) {
        file_ = FileDescriptor(open(path_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
        if (!file_) {
            return StatusFromErrno(errno);
        }
        if ((geteuid() == 0 && fchown(file_.Get(), earlier.st_uid, earlier.st_gid) != 0) ||
            fchmod(file_.Get(), earlier.st_mode & 07777) != 0) {
            return StatusFromErrno(errno);
        }
        return StatusSuccess;
    }

    void Write(std::string_view bytes) {
        constexpr std::size_t piece = 65536;
        buffer_ += bytes;
        if (buffer_.size() >= piece) {
            Flush();
        }
    }

    // Puts the file in the place of `target`; `placed` is what it then is, and `open` has it.
    Status Place(const std::filesystem::path& target, struct stat& placed, FileDescriptor& open) {
        Flush();
        if (status_ != StatusSuccess) {
            return status_;
        }
        if (fsync(file_.Get()) != 0 || fstat(file_.Get(), &placed) != 0 || rename(path_.c_str(), target.c_str()) != 0) {
            return StatusFromErrno(errno);
        }
        placed_ = true;
        open = std::move(file_);
        return StatusSuccess;
    }

private:
    void Flush() {
        if (status_ == StatusSuccess) {
            status_ = WriteAll(file_, buffer_);
        }
        buffer_.clear();
    }

    std::filesystem::path path_;
    FileDescriptor file_;
    std::string buffer_;
    Status status_ = StatusSuccess;
    bool placed_ = false;
};

}  // namespace

RegistryJournal::RegistryJournal(std::filesystem::path file, std::vector<RegFileRoot> roots, std::u16string lasting)
    : file_(std::move(file)),
      roots_(std::move(roots)),
      lasting_(std::move(lasting)),
      reader_(root_, roots_),
      compareAt_(LeastRewritten) {
    KeyMade(root_, lasting_);
}

Status RegistryJournal::CatchUp() {
    struct stat now = {};
    if (stat(file_.c_str(), &now) != 0) {
        if (errno != ENOENT) {
            return StatusFromErrno(errno);
        }
        BecomeEmpty();
        return StatusSuccess;
    }
    if (exists_ && SameFile(now, known_) && SameContent(now, known_) && now.st_mode == known_.st_mode) {
        return StatusSuccess;
    }
    FileDescriptor file(open(file_.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file) {
        return StatusFromErrno(errno);
    }
    Status status = Lock(file, LOCK_SH);
    if (status == StatusSuccess) {
        status = ReadNew(file);
        Hold(std::move(file));
    }
    return status;
}

bool RegistryJournal::IsLasting(const RegistryKey& key) const {
    return &key == root_.get() || &key == KeyAt(root_, lasting_).get();
}

bool RegistryJournal::Writable() const {
    if (exists_) {
        return writable_;
    }
    struct stat folder = {};
    std::error_code failure;  // a working directory that is gone leaves an empty path, which cannot be written
    std::filesystem::path path = std::filesystem::absolute(file_, failure).parent_path();
    while (stat(path.c_str(), &folder) != 0 && path.has_relative_path()) {
        path = path.parent_path();
    }
    return S_ISDIR(folder.st_mode) && OwnerMayWrite(folder, path);
}

Status RegistryJournal::Append(const Change& change) {
    FileDescriptor file;
    Status status = Writable() ? OpenLocked(file) : StatusAccessDenied;
    if (status == StatusSuccess) {
        status = AppendLocked(file, change);
        Hold(std::move(file));
    }
    return status;
}

Status RegistryJournal::AppendLocked(const FileDescriptor& file, const Change& change) {
    Status status = ReadNew(file);
    if (status == StatusSuccess && !writable_) {
        status = StatusAccessDenied;
    }
    std::string fragment;
    if (status == StatusSuccess) {
        status = change(fragment);
    }
    if (status != StatusSuccess || fragment.empty()) {
        return status;
    }
    if (isUtf16_) {  // we write UTF-8, and the rewritten file is another one, with a lock of its own
        status = Rewrite();
        return status == StatusSuccess ? Append(change) : status;
    }
    status = Write(file, fragment);
    if (status == StatusSuccess) {
        RewriteIfGrown();
    }
    return status;
}

std::string RegistryJournal::HeadFor(const RegistryKey::Pointer& key) const {
    return unfinished_.empty() && reader_.Section() == key ? std::string() : MadeKey(key->Path());
}

std::string RegistryJournal::MadeKey(std::u16string_view path) const {
    return RegFileHead(roots_.front().name, path);
}

std::string RegistryJournal::DeletedKey(const RegistryKey& key) const {
    return RegFileDeletedHead(roots_.front().name, key.Path());
}

// Keeps the file that was read open, unlocked, until another one is read: as long as it is open its number is not given
// to another file, and so tells whether the path still leads to it.
void RegistryJournal::Hold(FileDescriptor&& file) {
    if (!held_ && Lock(file, LOCK_UN) == StatusSuccess) {
        held_ = std::move(file);
    }
}

// A rewriting gives the path another file: the lock counts on the one that the path leads to once it is held.
Status RegistryJournal::OpenLocked(FileDescriptor& file) const {
    const auto opened = [this] {
        return FileDescriptor(open(file_.c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC, 0666));
    };
    for (;;) {
        file = opened();
        if (!file && errno == ENOENT) {
            std::error_code error;
            std::filesystem::create_directories(file_.parent_path(), error);
            file = opened();
        }
        if (!file) {
            return errno == ENOENT ? StatusAccessDenied : StatusFromErrno(errno);
        }
        if (const Status status = Lock(file, LOCK_EX); status != StatusSuccess) {
            return status;
        }
        struct stat held = {};
        struct stat placed = {};
        if (fstat(file.Get(), &held) != 0) {
            return StatusFromErrno(errno);
        }
        if (stat(file_.c_str(), &placed) == 0 && SameFile(held, placed)) {
            return StatusSuccess;
        }
    }
}

Status RegistryJournal::ReadNew(const FileDescriptor& file) {
    struct stat now = {};
    if (fstat(file.Get(), &now) != 0) {
        return StatusFromErrno(errno);
    }
    if (!exists_ || isUtf16_ || !SameFile(now, known_) || SizeOf(now) < consumed_) {
        return ReadAll(file, now);
    }
    if (SameContent(now, known_)) {
        Know(now);
        return StatusSuccess;
    }
    std::string bytes;
    const Status status = ReadRange(file, consumed_ - lastConsumed_.size(), SizeOf(now), bytes);
    if (status != StatusSuccess) {
        return status;
    }
    if (now.st_size == known_.st_size || !bytes.starts_with(lastConsumed_)) {
        return ReadAll(file, now);
    }
    TakeIn(std::string_view(bytes).substr(lastConsumed_.size()));
    KeyMade(root_, lasting_);
    Know(now);
    return StatusSuccess;
}

Status RegistryJournal::ReadAll(const FileDescriptor& file, const struct stat& now) {
    std::string bytes;
    const Status status = ReadRange(file, 0, SizeOf(now), bytes);
    if (status != StatusSuccess) {
        return status;
    }
    const std::optional<std::string> text = TextOfUtf16File(bytes);
    const auto next = std::make_shared<RegistryKey>();
    reader_ = RegFileReader(next, roots_);
    consumed_ = 0;
    lastConsumed_.clear();
    TakeIn(text ? *text : bytes);
    KeyMade(next, lasting_);
    root_->Become(*next);
    reader_.MoveTo(root_);
    held_ = FileDescriptor();
    isUtf16_ = text.has_value();
    compareAt_ = LeastRewritten;
    Know(now);
    return StatusSuccess;
}

// Reads `text`, which follows the place read up to.
void RegistryJournal::TakeIn(std::string_view text) {
    const std::size_t read = reader_.Read(text, true);
    consumed_ += read;
    const std::string_view consumed = text.substr(0, read);
    lastConsumed_ += consumed.substr(read - std::min(read, RememberedBytes));
    lastConsumed_.erase(0, lastConsumed_.size() - std::min(lastConsumed_.size(), RememberedBytes));
    unfinished_ = text.substr(read);
}

void RegistryJournal::Know(const struct stat& now) {
    exists_ = true;
    known_ = now;
    writable_ = OwnerMayWrite(now, file_);
}

void RegistryJournal::BecomeEmpty() {
    if (!exists_) {
        return;
    }
    exists_ = false;
    isUtf16_ = false;
    const auto nothing = std::make_shared<RegistryKey>();
    KeyMade(nothing, lasting_);
    root_->Become(*nothing);
    reader_ = RegFileReader(root_, roots_);
    consumed_ = 0;
    lastConsumed_.clear();
    unfinished_.clear();
    compareAt_ = LeastRewritten;
}

Status RegistryJournal::Write(const FileDescriptor& file, const std::string& fragment) {
    // What stands before the fragment must not run into it.
    const bool torn = !unfinished_.empty() && LooksTorn(unfinished_);
    if (torn && ftruncate(file.Get(), static_cast<off_t>(consumed_)) != 0) {
        return StatusFromErrno(errno);
    }
    const std::string kept = torn ? std::string() : unfinished_;
    const std::size_t size = consumed_ + kept.size();
    std::string piece;
    if (size == 0) {
        piece = RegFileFirstLines();
    } else if (!kept.empty() || !lastConsumed_.ends_with('\n')) {
        piece = "\r\n";
    }
    piece += fragment;

    struct stat now = {};
    Status status = WriteAll(file, piece);
    if (status == StatusSuccess && fstat(file.Get(), &now) != 0) {
        status = StatusFromErrno(errno);
    }
    if (status != StatusSuccess) {
        // Should even this fail, the fragment's part is a torn one that the next change takes off.
        static_cast<void>(ftruncate(file.Get(), static_cast<off_t>(size)) == 0);
        return status;
    }
    TakeIn(kept + piece);
    known_ = now;
    return StatusSuccess;
}

void RegistryJournal::RewriteIfGrown() {
    if (SizeOf(known_) < compareAt_) {
        return;
    }
    const std::size_t live = LiveSize();
    compareAt_ = std::max(LeastRewritten, RewrittenGrowth * live);
    // The change is made whether the rewriting succeeds or not; one that failed is tried again at twice the size.
    if (SizeOf(known_) >= compareAt_ && Rewrite() != StatusSuccess) {
        compareAt_ = 2 * SizeOf(known_);
    }
}

Status RegistryJournal::Rewrite() {
    const bool unread = reader_.PassedOver() || !unfinished_.empty();
    if (const Status status = unread ? KeepDamaged() : StatusSuccess; status != StatusSuccess) {
        return status;
    }
    std::filesystem::path path = file_;
    NextFile next(path += ".new");
    Status status = next.Open(known_);
    if (status != StatusSuccess) {
        return status;
    }
    std::size_t size = 0;
    std::string last;
    std::string lastHead;
    WriteRegFile(*root_, roots_.front().name, [&](std::string_view piece) {
        next.Write(piece);
        if (piece.starts_with("\r\n[")) {
            lastHead = piece;
        }
        size += piece.size();
        last = piece.substr(piece.size() - std::min(piece.size(), RememberedBytes));
    });
    struct stat placed = {};
    status = next.Place(file_, placed, held_);
    if (status != StatusSuccess) {
        return status;
    }
    known_ = placed;
    isUtf16_ = false;
    // What others append to this file may go to its last key without another head.
    reader_ = RegFileReader(root_, roots_);
    reader_.Read(lastHead, true);
    consumed_ = size;
    lastConsumed_ = last;
    unfinished_.clear();
    return StatusSuccess;
}

// Gives the file a second name, which it keeps when the first one goes to the rewritten file.
Status RegistryJournal::KeepDamaged() const {
    for (int number = 1;; ++number) {
        std::filesystem::path kept = file_;
        kept += ".damaged";
        kept += number == 1 ? std::string() : std::to_string(number);
        if (link(file_.c_str(), kept.c_str()) == 0) {
            return StatusSuccess;
        }
        if (errno != EEXIST) {
            return StatusFromErrno(errno);
        }
    }
}

std::size_t RegistryJournal::LiveSize() const {
    std::size_t size = 0;
    WriteRegFile(*root_, roots_.front().name, [&size](std::string_view piece) { size += piece.size(); });
    return size;
}

}  // namespace platform::host
