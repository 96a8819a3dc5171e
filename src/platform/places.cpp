#include "platform/places.h"

#include <string>

namespace platform {
namespace {

Places& PlacesInForce() {
    static Places places = DesktopPlaces();
    return places;
}

}  // namespace

const Places& CurrentPlaces() { return PlacesInForce(); }

void SetPlaces(const Places& places) { PlacesInForce() = places; }

void SetPlaces() { PlacesInForce() = DesktopPlaces(); }

std::filesystem::path PathOfUtf8(std::string_view text) { return std::u8string(text.begin(), text.end()); }

std::string Utf8OfPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace platform
