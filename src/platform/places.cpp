#include "platform/places.h"

#include <optional>
#include <string>

namespace platform {
namespace {

std::optional<Places>& PlacesInForce() {
    static std::optional<Places> places;
    return places;
}

}  // namespace

const Places& CurrentPlaces() {
    std::optional<Places>& places = PlacesInForce();
    if (!places) places = DesktopPlaces();
    return *places;
}

void SetPlaces(const Places& places) { PlacesInForce() = places; }

void SetPlaces() { PlacesInForce().reset(); }

std::filesystem::path PathOfUtf8(std::string_view text) { return std::u8string(text.begin(), text.end()); }

std::string Utf8OfPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace platform
