#include "platform/places.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace platform {
namespace {

std::optional<Places>& PlacesInForce() {
    static std::optional<Places> places;
    return places;
}

bool IsDrive(std::string_view name) {
    return name.size() >= 2 && name[1] == ':' &&
           ((name[0] >= 'a' && name[0] <= 'z') || (name[0] >= 'A' && name[0] <= 'Z'));
}

}  // namespace

const Places& CurrentPlaces() {
    std::optional<Places>& places = PlacesInForce();
    if (!places) places = DesktopPlaces();
    return *places;
}

void SetPlaces(const Places& places) { PlacesInForce() = places; }

void SetPlaces() { PlacesInForce().reset(); }

std::filesystem::path PathOfName(std::string_view name, const Places& places) {
    // The system would take a NUL for the end of the name and open another file.
    if (name.empty() || name.find('\0') != std::string_view::npos) return {};
    if (name.front() == '/') return name;
    if (name.starts_with("~/")) {
        if (places.Home.empty()) return {};
        return places.Home.string().append(name.substr(1));
    }
    if (places.UserData.empty()) return {};

    std::filesystem::path path = places.UserData;
    if (IsDrive(name)) {
        const char drive = static_cast<char>(name.front() | 0x20);
        if (drive != 'c') path /= std::string(1, drive);
        name.remove_prefix(2);
    }
    std::vector<std::string_view> steps;
    std::string_view step;
    for (bool last = false; !last;) {
        const std::size_t end = std::min(name.find_first_of("/\\"), name.size());
        step = name.substr(0, end);
        last = end == name.size();
        if (!last) name.remove_prefix(end + 1);
        if (step == "..") {
            if (!steps.empty()) steps.pop_back();
        } else if (!step.empty() && step != ".") {
            steps.push_back(step);
        }
    }
    if (step.empty() || step == "." || step == "..") return {};  // a folder
    for (const std::string_view folder : steps) path /= folder;
    return path;
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
