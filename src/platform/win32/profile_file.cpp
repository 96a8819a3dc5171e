#include "platform/profile.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cinttypes>
#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <initializer_list>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "platform/places.h"
#include "platform/win32/patience.h"

namespace platform {
namespace {

using Path = std::filesystem::path;

class File {
 public:
    explicit File(HANDLE handle) : handle_(handle) {}
    ~File() { Close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    void Close() {
        if (IsOpen()) CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
    }
    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE && handle_ != nullptr; }
    operator HANDLE() const { return handle_; }  // NOLINT(google-explicit-constructor)

 private:
    HANDLE handle_;
};

// The form of a path that the system takes as it stands: of any length, and without devices in it.
std::wstring Plain(const Path& file) {
    if (!file.is_absolute() || file.native().starts_with(L"\\\\?\\")) return file.native();
    const std::wstring name = file.lexically_normal().make_preferred().native();
    return name.starts_with(L"\\\\") ? L"\\\\?\\UNC" + name.substr(1) : L"\\\\?\\" + name;
}

// Another program may hold a file for a moment, a virus scanner for instance; what the system then says.
template <class Action>
bool Patiently(std::initializer_list<DWORD> heldErrors, const Action& act) {
    constexpr DWORD kStep = 20, kPatience = 500;  // in milliseconds
    for (DWORD waited = 0;; waited += kStep) {
        if (act()) return true;
        if (std::ranges::find(heldErrors, GetLastError()) == heldErrors.end() || waited >= kPatience)
            return false;
        Sleep(kStep);
    }
}

// A save that is killed leaves its file. The name tells that it is one of these, and whose: the number of a
// process, one of chance, and both with all bits turned round.
constexpr wchar_t kNewFilePrefix[] = L".orvane-save-";
std::wstring NewFileName(std::uint64_t number) {
    std::array<wchar_t, 33> digits{};
    std::swprintf(digits.data(), digits.size(), L"%016" PRIx64 L"%016" PRIx64, number, ~number);
    return std::wstring(kNewFilePrefix).append(digits.data());
}

bool Lives(DWORD process) {
    const File opened(OpenProcess(SYNCHRONIZE, FALSE, process));
    if (opened == nullptr) return GetLastError() == ERROR_ACCESS_DENIED;
    return WaitForSingleObject(opened, 0) == WAIT_TIMEOUT;
}

// Takes away what killed saves have left.
void RemoveLeftOvers(const Path& folder) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((Plain(folder / kNewFilePrefix) + L'*').c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring name = found.cFileName;
        const std::wstring digits = name.substr(std::size(kNewFilePrefix) - 1, 16);
        const std::uint64_t number = std::wcstoull(digits.c_str(), nullptr, 16);
        if (name == NewFileName(number) && !Lives(static_cast<DWORD>(number >> 32)))
            DeleteFileW(Plain(folder / name).c_str());
    } while (FindNextFileW(search, &found) != FALSE);
    FindClose(search);
}

constexpr SECURITY_INFORMATION kOwners = OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION;

std::vector<std::byte> RightsOf(const std::wstring& name) {
    DWORD size = 0;
    GetFileSecurityW(name.c_str(), kOwners | DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> rights(size);
    const bool told = GetFileSecurityW(name.c_str(), kOwners | DACL_SECURITY_INFORMATION, rights.data(), size,
                                       &size) != FALSE;
    return told ? rights : std::vector<std::byte>();
}

// A file that is to replace another one in its folder. It is gone again unless it has taken that one's place.
class NewFile {
 public:
    NewFile(const Path& folder, DWORD attributes)
        : name_(Plain(folder /
                      NewFileName(std::uint64_t{GetCurrentProcessId()} << 32 | std::random_device()()))),
          file_(CreateFileW(name_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                            FILE_ATTRIBUTE_HIDDEN | (attributes & FILE_ATTRIBUTE_ENCRYPTED), nullptr)),
          made_(file_.IsOpen()) {}
    ~NewFile() {
        file_.Close();
        if (made_) DeleteFileW(name_.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool IsOpen() const { return made_; }

    bool Write(std::string_view bytes, const FILETIME* created) {
        DWORD written = 0;
        if (created != nullptr) SetFileTime(file_, created, nullptr, nullptr);
        const bool whole =
            WriteFile(file_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != FALSE &&
            written == bytes.size() && FlushFileBuffers(file_) != FALSE;
        file_.Close();
        return whole;
    }

    // What the old file grants. Only few may give files away, so the owner may become the one who saves.
    bool TakeRights(const std::wstring& old) const {
        std::vector<std::byte> rights = RightsOf(old);
        if (rights.empty() || rights == RightsOf(name_)) return !rights.empty();
        SetFileSecurityW(name_.c_str(), kOwners, rights.data());
        return SetFileSecurityW(name_.c_str(), DACL_SECURITY_INFORMATION, rights.data()) != FALSE;
    }

    // In one step, unlike the system's own replacement of files, which has moments without either.
    bool Become(const std::wstring& target, DWORD attributes) {
        if (SetFileAttributesW(name_.c_str(), attributes) == FALSE) return false;
        const bool moved = Patiently({ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED}, [&] {
            return MoveFileExW(name_.c_str(), target.c_str(),
                               MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
        });
        if (moved) made_ = false;
        return moved;
    }

 private:
    std::wstring name_;
    File file_;
    bool made_;
};

struct Opened {
    ProfileState State = ProfileState::Missing;
    std::wstring Name{};  // behind all links
    DWORD Attributes = 0;
    FILETIME Created{};
    std::string Bytes{};
};

Opened Open(const Path& file) {
    Opened opened{.Name = Plain(file)};
    WIN32_FILE_ATTRIBUTE_DATA found{};
    if (GetFileAttributesExW(opened.Name.c_str(), GetFileExInfoStandard, &found) == FALSE) {
        const DWORD error = GetLastError();
        const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
        opened.State = missing ? ProfileState::Missing : ProfileState::Untold;
        return opened;
    }
    opened.Attributes = found.dwFileAttributes;
    opened.State = ProfileState::Unusable;
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return opened;
    HANDLE handle = INVALID_HANDLE_VALUE;
    Patiently({ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION}, [&] {
        handle = CreateFileW(opened.Name.c_str(), GENERIC_READ,
                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
        return handle != INVALID_HANDLE_VALUE;
    });
    const File source(handle);
    LARGE_INTEGER size{};
    if (!source.IsOpen() || GetFileType(source) != FILE_TYPE_DISK || GetFileSizeEx(source, &size) == FALSE)
        return opened;
    if (size.QuadPart > static_cast<LONGLONG>(kMaxProfileBytes)) {
        opened.State = ProfileState::TooLarge;
        return opened;
    }
    std::wstring behind(GetFinalPathNameByHandleW(source, nullptr, 0, 0), L'\0');
    behind.resize(GetFinalPathNameByHandleW(source, behind.data(), static_cast<DWORD>(behind.size()), 0));
    if (!behind.empty()) opened.Name = behind;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD length = 0;
    if (ReadFile(source, bytes.data(), static_cast<DWORD>(bytes.size()), &length, nullptr) == FALSE)
        return opened;
    bytes.resize(length);
    GetFileTime(source, &opened.Created, nullptr, nullptr);
    opened.Bytes = std::move(bytes);
    opened.State = ProfileState::Readable;
    return opened;
}

// Whether the rights of a file that is there let it be written and go. The new file gets the same, and what
// may not go would stay behind after a save that fails.
bool MayReplace(const std::wstring& name) {
    return Patiently({ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION}, [&] {
        return File(CreateFileW(name.c_str(), GENERIC_WRITE | DELETE,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
            .IsOpen();
    });
}

// With those above it. The library's own way does not take every path that the system takes.
void MakeFolder(const Path& folder) {
    const std::wstring name = Plain(folder);
    if (CreateDirectoryW(name.c_str(), nullptr) != FALSE || GetLastError() != ERROR_PATH_NOT_FOUND ||
        !folder.has_relative_path())
        return;
    MakeFolder(folder.parent_path());
    CreateDirectoryW(name.c_str(), nullptr);
}

// Given up or done is decided once: what hung so long that nobody waits for it must not come over a later
// save.
bool Replace(const Path& file, bool ofUser, std::string_view bytes, std::atomic<bool>& decided) {
    const Opened old = Open(file);
    const bool exists = old.State == ProfileState::Readable;
    if (!exists && old.State != ProfileState::Missing) return false;
    if (exists && old.Bytes == bytes) return true;
    if (exists && ((old.Attributes & FILE_ATTRIBUTE_READONLY) != 0 || !MayReplace(old.Name))) return false;

    if (!exists && ofUser) MakeFolder(file.parent_path());
    const Path folder = Path(old.Name).parent_path();
    RemoveLeftOvers(folder);
    NewFile made(folder, old.Attributes);
    if (!made.IsOpen() || (exists && !made.TakeRights(old.Name)) ||
        !made.Write(bytes, exists ? &old.Created : nullptr))
        return false;
    if (decided.exchange(true)) return false;
    return made.Become(old.Name, exists ? old.Attributes : FILE_ATTRIBUTE_NORMAL);
}

// A computer of the network that does not answer must not hold up the windows.
constexpr DWORD kLongest = 3000;  // in milliseconds

}  // namespace

ProfileFile ReadProfileFile(const Path& file) {
    auto opened = Within(kLongest, [file] { return Open(file); });
    if (!opened) return {ProfileState::Untold};
    return {opened->State, std::move(opened->Bytes)};
}

bool ReplaceProfileFile(const Path& file, std::string_view bytes) {
    if (file.filename().empty() || bytes.size() > kMaxProfileBytes) return false;
    const bool ofUser = !PathInUserData(file, CurrentPlaces()).empty();
    const auto decided = std::make_shared<std::atomic<bool>>(false);
    const auto replaced = Within(kLongest, [file, ofUser, bytes = std::string(bytes), decided] {
        return Replace(file, ofUser, bytes, *decided);
    });
    decided->store(true);
    return replaced.value_or(false);
}

}  // namespace platform
