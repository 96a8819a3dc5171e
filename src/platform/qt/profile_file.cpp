#include <fcntl.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): of POSIX
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QByteArray>
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/places.h"
#include "platform/profile.h"

namespace platform {
namespace {

using Path = std::filesystem::path;

class Descriptor {
 public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    operator int() const { return number_; }  // NOLINT(google-explicit-constructor)

 private:
    const int number_;
};

// Beyond a limit on file sizes a write sends a signal that would end the program; ignored, the write fails.
class NoSizeSignal {
 public:
    NoSizeSignal() {
        struct sigaction ignore = {};
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGXFSZ, &ignore, &before_);
    }
    ~NoSizeSignal() { sigaction(SIGXFSZ, &before_, nullptr); }
    NoSizeSignal(const NoSizeSignal&) = delete;
    NoSizeSignal& operator=(const NoSizeSignal&) = delete;

 private:
    struct sigaction before_ = {};
};

// The name of a file beside the one that it is to replace. Its second half is the first one's complement, so
// that nobody else's file can have such a name. Fixed in length, so that it fits nearly everywhere.
constexpr std::string_view kNewFilePrefix = ".orvane-save-";
std::string NewFileName(std::uint64_t number) {
    const auto digits = [](std::uint64_t half) {
        return QByteArray::number(half, 16).rightJustified(16, '0');
    };
    return std::string(kNewFilePrefix) + (digits(number) + digits(~number)).constData();
}

bool IsNewFileName(const std::string& name) {
    std::uint64_t number = 0;
    if (!name.starts_with(kNewFilePrefix)) return false;
    const char* digits = name.data() + kNewFilePrefix.size();
    std::from_chars(digits, std::min(digits + 16, name.data() + name.size()), number, 16);
    return name == NewFileName(number);
}

// Takes away what killed saves have left. A file whose maker lives is locked by it.
void RemoveLeftOvers(const Path& folder) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; entry != end;
         entry.increment(error)) {
        if (!IsNewFileName(entry->path().filename())) continue;
        const char* path = entry->path().c_str();
        const Descriptor left(::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY));
        if (left >= 0 && ::flock(left, LOCK_EX | LOCK_NB) == 0) ::unlink(path);
    }
}

// A file that is to replace another one in its folder. It is gone again unless it has taken that one's place.
class NewFile {
 public:
    NewFile(const Path& folder, mode_t mode) {
        constexpr int kTries = 20;  // many may save at once, and each looks for left-overs
        for (int i = 0; i < kTries && file_ < 0; ++i) {
            std::uint64_t number = 0;
            if (::getentropy(&number, sizeof number) != 0) return;
            path_ = folder / NewFileName(number);
            file_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
            if (file_ < 0) return;
            // Another save may have come before the lock and taken the file for a left-over.
            struct stat status = {};
            const bool taken = ::flock(file_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
            const bool gone = ::fstat(file_, &status) == 0 && status.st_nlink == 0;
            if (taken || gone) ::close(std::exchange(file_, -1));
        }
    }
    ~NewFile() {
        if (file_ < 0) return;
        ::unlink(path_.c_str());
        ::close(file_);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool IsOpen() const { return file_ >= 0; }

    bool Write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t count = TEMP_FAILURE_RETRY(::write(file_, bytes.data(), bytes.size()));
            if (count <= 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

    // What the old file grants. What cannot be kept is given to nobody.
    bool TakeRights(const Path& old, const struct stat& status) {
        // The owner first, since its change clears bits of the mode. Only root gives files away; others keep
        // at least the group, if it is one of theirs.
        [[maybe_unused]] const bool kept = ::fchown(file_, status.st_uid, status.st_gid) == 0 ||
                                           ::fchown(file_, static_cast<uid_t>(-1), status.st_gid) == 0;
        struct stat made = {};
        if (::fstat(file_, &made) != 0) return false;
        const bool sameGroup = made.st_gid == status.st_gid;
        mode_t mode = status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
        // Who was in the group is one of the others now, and may have been shut out.
        if (!sameGroup) mode &= S_IRWXU | ((mode & S_IRWXG) >> 3);
        if (!TakeAttributes(old, sameGroup)) mode &= S_IRWXU;
        // Where all files have the same rights nobody can change them.
        return (::fstat(file_, &made) == 0 && (made.st_mode & 07777) == mode) || ::fchmod(file_, mode) == 0;
    }

    bool Replace(const Path& target) {
        // A file system may report what it could not write as late as here.
        if (::fsync(file_) != 0) return false;
        if (::rename(path_.c_str(), target.c_str()) != 0) return false;
        ::close(std::exchange(file_, -1));
        return true;
    }

 private:
    // Copies the extended attributes, of which the access list is one. False if that is not the old file's.
    bool TakeAttributes(const Path& old, bool sameGroup) const {
        constexpr const char* kAccessList = "system.posix_acl_access";
        const auto none = [] { return errno == ENODATA || errno == EOPNOTSUPP; };
        // A folder may have a list for what is made in it.
        bool same = ::fremovexattr(file_, kAccessList) == 0 || none();
        std::vector<char> names(XATTR_LIST_MAX);
        std::vector<char> value(XATTR_SIZE_MAX);
        const ssize_t length = ::listxattr(old.c_str(), names.data(), names.size());
        if (length < 0 && !none()) same = false;
        for (const char* name = names.data(); name < names.data() + length; name += std::strlen(name) + 1) {
            const bool grants = std::string_view(name).starts_with("system.");
            const ssize_t size = ::getxattr(old.c_str(), name, value.data(), value.size());
            const bool kept = size >= 0 && (sameGroup || !grants) &&
                              ::fsetxattr(file_, name, value.data(), static_cast<std::size_t>(size), 0) == 0;
            if (grants && !kept) same = false;
        }
        return same;
    }

    Path path_;
    int file_ = -1;
};

// What a link stands for in the end, whether that exists or not.
Path BehindLinks(Path file) {
    constexpr int kMostLinks = 40;  // as many as the system itself follows
    std::error_code error;
    for (int i = 0; i < kMostLinks; ++i) {
        const Path link = std::filesystem::read_symlink(file, error);
        if (error) return file;
        file = file.parent_path() / link;
    }
    return {};
}

// Makes a folder and those above it that are missing, for the user alone.
void MakeFolder(const Path& folder) {
    if (::mkdir(folder.c_str(), 0700) == 0 || errno != ENOENT || !folder.has_relative_path()) return;
    MakeFolder(folder.parent_path());
    ::mkdir(folder.c_str(), 0700);
}

}  // namespace

ProfileFile ReadProfileFile(const Path& file) {
    struct stat status = {};
    if (::stat(file.c_str(), &status) != 0) {
        return {errno == ENOENT || errno == ENOTDIR ? ProfileState::Missing : ProfileState::Untold};
    }
    // Asked before the opening, since that alone can act on a device or on the far end of a pipe, and again
    // behind it, since the file may have changed places.
    if (!S_ISREG(status.st_mode)) return {ProfileState::Unusable};
    const Descriptor opened(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (opened < 0 || ::fstat(opened, &status) != 0 || !S_ISREG(status.st_mode)) {
        return {ProfileState::Unusable};
    }
    if (status.st_size > static_cast<off_t>(kMaxProfileBytes)) return {ProfileState::TooLarge};

    ProfileFile read{ProfileState::Readable, std::string(static_cast<std::size_t>(status.st_size), '\0')};
    std::size_t length = 0;
    while (length < read.Bytes.size()) {
        const ssize_t count =
            TEMP_FAILURE_RETRY(::read(opened, read.Bytes.data() + length, read.Bytes.size() - length));
        if (count < 0) return {ProfileState::Unusable};
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
    }
    read.Bytes.resize(length);
    return read;
}

bool ReplaceProfileFile(const Path& file, std::string_view bytes) {
    const Path target = BehindLinks(file);
    if (target.filename().empty() || bytes.size() > kMaxProfileBytes) return false;
    const ProfileFile old = ReadProfileFile(target);
    const bool exists = old.State == ProfileState::Readable;
    if (!exists && old.State != ProfileState::Missing) return false;
    if (exists && old.Bytes == bytes) return true;

    const Path folder = target.parent_path();
    struct stat status = {};
    if (exists) {
        // To root every file is writable; one that nobody may write to was meant to stay.
        constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
        if (::stat(target.c_str(), &status) != 0 || (status.st_mode & kAnyWrite) == 0) return false;
        if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return false;
    } else if (!PathInUserData(target).empty()) {
        MakeFolder(folder);
    }

    const NoSizeSignal noSizeSignal;
    RemoveLeftOvers(folder);
    NewFile made(folder, exists ? 0600 : 0666);
    if (!made.IsOpen() || !made.Write(bytes)) return false;
    if (exists && !made.TakeRights(target, status)) return false;
    if (!made.Replace(target)) return false;
    // The new name must outlive a power cut as well. If not, the old file does.
    if (const Descriptor entries(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)); entries >= 0) {
        ::fsync(entries);
    }
    return true;
}

}  // namespace platform
