#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

// A larger file is no profile file: it is neither read nor written.
inline constexpr std::size_t kMaxProfileBytes = std::size_t{64} << 20;

// What lies at a path: nothing; a regular file that can be read; or something that must be left alone, such
// as a folder, a pipe, a device, a file without permission or one above kMaxProfileBytes.
enum class ProfileState { Missing, Readable, Unusable };

struct ProfileFile {
    ProfileState State = ProfileState::Missing;
    std::string Bytes{};  // empty unless Readable
};

// The contents of a file. Returns at once, whatever lies at the path.
ProfileFile ReadProfileFile(const std::filesystem::path& file);

// Puts the bytes in place of the file's contents, or makes the file: afterwards the path holds the old
// contents or the new ones, whole, whenever the power goes. The file keeps its permissions, a link stays a
// link. Folders that are missing are made for files of the user's folder, and for no others. False, and
// nothing changed, if that cannot be done, if the file is Unusable or if nobody may write to it. A file that
// holds these bytes already is not touched.
bool ReplaceProfileFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace platform
