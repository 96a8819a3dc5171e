#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

// A larger file is no profile file: it is neither read nor written.
inline constexpr std::size_t kMaxProfileBytes = std::size_t{64} << 20;

// What lies at a path.
enum class ProfileState : std::uint8_t {
    Missing,
    Untold,    // nobody can tell, for instance in a folder that is another user's
    Readable,  // a regular file
    TooLarge,  // one above kMaxProfileBytes
    Unusable,  // what must be left alone: a folder, a pipe, a device, a file without permission
};

struct ProfileFile {
    ProfileState State = ProfileState::Missing;
    std::string Bytes{};  // empty unless Readable
};

// The contents of a file. Returns at once, whatever lies at the path.
ProfileFile ReadProfileFile(const std::filesystem::path& file);

// Puts the bytes in place of the file's contents, or makes the file: afterwards the path holds the old
// contents or the new ones, whole, whenever the power goes. Owner, permissions and attributes are kept as far
// as the system lets them be, and nobody gets a right that he did not have; a link stays a link. Folders that
// are missing are made for files of the user's folder, and for no others. False, and nothing changed, if that
// cannot be done, if what is there is neither Missing nor Readable or if nobody may write to it. A file that
// holds these bytes already is not touched.
//
// A save that is killed may leave a hidden file beside the one it was to replace. The next save in that
// folder takes it away, and nothing that anybody else can have put there.
bool ReplaceProfileFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace platform
