#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <system_error>

#include "platform/places.h"

namespace platform {
namespace {

// The folder that a variable names; a relative one would change with the current directory and counts for
// none.
std::filesystem::path FolderOfVariable(const char* variable) {
    const char* value = std::getenv(variable);
    const std::filesystem::path folder = value == nullptr ? "" : value;
    return folder.is_absolute() ? folder : std::filesystem::path();
}

std::filesystem::path HomeFolder() {
    std::filesystem::path home = FolderOfVariable("HOME");
    if (!home.empty()) return home;
    const passwd* entry = getpwuid(getuid());
    if (entry != nullptr && entry->pw_dir != nullptr) home = entry->pw_dir;
    return home.is_absolute() ? home : std::filesystem::path();
}

bool BeginsWithDrive(std::string_view name) {
    return name.size() >= 2 && name[1] == ':' &&
           ((name[0] >= 'a' && name[0] <= 'z') || (name[0] >= 'A' && name[0] <= 'Z'));
}

}  // namespace

Places DesktopPlaces() {
    Places places;
    places.Home = HomeFolder();
    if (const std::filesystem::path data = FolderOfVariable("XDG_DATA_HOME"); !data.empty()) {
        places.UserData = data / "orvane";
    } else if (!places.Home.empty()) {
        places.UserData = places.Home / ".local/share/orvane";
    }
    std::error_code error;
    places.Program = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    return places;
}

std::filesystem::path PathOfName(std::string_view name, const Places& places) {
    // The system would take a NUL for the end of the name and open another file.
    if (name.find('\0') != std::string_view::npos) return {};
    if (name.starts_with('/')) return PathOfUtf8(name);
    if (name.starts_with("~/")) {
        return places.Home.empty() ? places.Home
                                   : std::filesystem::path(places.Home) += PathOfUtf8(name.substr(1));
    }
    if (places.UserData.empty()) return {};

    std::filesystem::path folder = places.UserData;
    if (BeginsWithDrive(name)) {
        const char drive = static_cast<char>(name.front() | 0x20);
        if (drive != 'c') folder /= std::string(1, drive);
        name.remove_prefix(2);
    }
    // Nothing lies above the top of a drive.
    std::string fromTop = "/" + std::string(name);
    std::ranges::replace(fromTop, '\\', '/');
    const auto way = PathOfUtf8(fromTop).lexically_normal().relative_path();
    return way.has_filename() ? folder / way : std::filesystem::path();
}

std::filesystem::path PathInUserData(const std::filesystem::path& file, const Places& places) {
    if (places.UserData.empty()) return {};
    auto way = file.lexically_normal().lexically_relative(places.UserData.lexically_normal());
    if (way.empty() || way == "." || *way.begin() == "..") return {};
    return way;
}

std::filesystem::path ShippedFile(const std::filesystem::path& file, const Places& places) {
    const std::filesystem::path way = PathInUserData(file, places);
    if (way.empty() || places.Program.empty()) return {};
    return places.Program / way;
}

}  // namespace platform
