#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
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

}  // namespace platform
