#include <fcntl.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): of POSIX
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <utility>

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
        struct sigaction ignore {};
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGXFSZ, &ignore, &before_);
    }
    ~NoSizeSignal() { sigaction(SIGXFSZ, &before_, nullptr); }
    NoSizeSignal(const NoSizeSignal&) = delete;
    NoSizeSignal& operator=(const NoSizeSignal&) = delete;

 private:
    struct sigaction before_ {};
};

// A file beside the one that it is to replace. It is gone again unless it has taken that one's place.
class NewFile {
 public:
    NewFile(const Path& target, mode_t mode) {
        // Under the usual name the next save finds what a killed one has left. Where another process is
        // saving, or something else lies at that name, any other name does.
        const std::string usual = ".orvane-save";
        for (const std::string& name : {usual, usual, UnusedName()}) {
            path_ = target.parent_path() / name;
            if (path_ == target) continue;
            RemoveLeftOver();
            file_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
            if (file_ < 0) continue;
            // The lock tells others that the file is no left-over. One of them may have been quicker.
            const bool taken = ::flock(file_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
            if (!taken && IsAtPath(file_)) return;
            ::close(std::exchange(file_, -1));
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

    bool TakeRights(const struct stat& old) {
        // The owner first, since its change clears bits of the mode. Only root gives files away; others keep
        // at least the group, if it is one of theirs.
        [[maybe_unused]] const bool kept = ::fchown(file_, old.st_uid, old.st_gid) == 0 ||
                                           ::fchown(file_, static_cast<uid_t>(-1), old.st_gid) == 0;
        return ::fchmod(file_, old.st_mode & 07777) == 0;
    }

    bool Replace(const Path& target) {
        // A file system may report what it could not write as late as here.
        if (::fsync(file_) != 0) return false;
        if (::rename(path_.c_str(), target.c_str()) != 0) return false;
        ::close(std::exchange(file_, -1));
        return true;
    }

 private:
    bool IsAtPath(int file) const {
        struct stat opened {};
        struct stat found {};
        return ::fstat(file, &opened) == 0 && ::lstat(path_.c_str(), &found) == 0 &&
               opened.st_dev == found.st_dev && opened.st_ino == found.st_ino;
    }

    // A file whose maker lives is locked by it.
    void RemoveLeftOver() const {
        struct stat found {};
        if (::lstat(path_.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) return;
        const Descriptor left(
            ::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY));
        if (left >= 0 && ::flock(left, LOCK_EX | LOCK_NB) == 0 && IsAtPath(left)) ::unlink(path_.c_str());
    }

    // Fixed in length, so that it fits wherever the name of the old file does.
    static std::string UnusedName() {
        std::uint64_t number = 0;
        if (::getentropy(&number, sizeof number) != 0) return {};  // the folder itself, which fails to open
        std::array<char, 16> digits{};
        const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16);
        return ".orvane-" + std::string(digits.data(), end);
    }

    Path path_;
    int file_ = -1;
};

bool IsProfile(const struct stat& status) {
    return S_ISREG(status.st_mode) && status.st_size <= static_cast<off_t>(kMaxProfileBytes);
}

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
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        return {errno == ENOENT || errno == ENOTDIR ? ProfileState::Missing : ProfileState::Unusable};
    }
    // Asked before the opening, since that alone can act on a device or on the far end of a pipe, and again
    // behind it, since the file may have changed places.
    if (!IsProfile(status)) return {ProfileState::Unusable};
    const Descriptor opened(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (opened < 0 || ::fstat(opened, &status) != 0 || !IsProfile(status)) return {ProfileState::Unusable};

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
    if (old.State == ProfileState::Unusable) return false;
    if (old.State == ProfileState::Readable && old.Bytes == bytes) return true;

    const Path folder = target.parent_path();
    struct stat status {};
    const bool exists = old.State == ProfileState::Readable;
    if (exists) {
        // To root every file is writable; one that nobody may write to was meant to stay.
        constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
        if (::stat(target.c_str(), &status) != 0 || (status.st_mode & kAnyWrite) == 0) return false;
        if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return false;
    } else if (!PathInUserData(target, CurrentPlaces()).empty()) {
        MakeFolder(folder);
    }

    const NoSizeSignal noSizeSignal;
    NewFile made(target, exists ? 0600 : 0666);
    if (!made.IsOpen() || !made.Write(bytes)) return false;
    if (exists && !made.TakeRights(status)) return false;
    if (!made.Replace(target)) return false;
    // The new name must outlive a power cut as well. If not, the old file does.
    if (const Descriptor entries(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)); entries >= 0) {
        ::fsync(entries);
    }
    return true;
}

}  // namespace platform
