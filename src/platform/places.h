#pragma once

#include <filesystem>
#include <string_view>

namespace platform {

// The folders that everything lies in. Absolute, or empty where the desktop has none.
struct Places {
    std::filesystem::path UserData;  // the user's own files; made when something is first saved
    std::filesystem::path Program;   // the executable's folder, links followed: sounds, shipped profile files
    std::filesystem::path Home{};    // what "~" stands for
};

// The places in force: those of the desktop, or those that a test has set.
const Places& CurrentPlaces();

// Puts other folders in force; without an argument, those of the desktop again.
void SetPlaces(const Places& places);
void SetPlaces();

// The places of the desktop as they are at this moment.
Places DesktopPlaces();

// The path of the file that a name means. "/..." and "~/..." are what they say. Every other name lies in the
// user's folder, whichever slash it uses: "c:" is that folder, any other drive a folder in it named by the
// small letter, and ".." leads no further up than the drive. Empty if the name cannot be that of a file.
std::filesystem::path PathOfName(std::string_view name, const Places& places);

// The way from the user's folder to a file in it; empty for every path outside. Links are not followed.
std::filesystem::path PathInUserData(const std::filesystem::path& file, const Places& places);

// The file that came with the program and is read for a file of the user's folder that does not exist yet;
// empty for every path outside that folder.
std::filesystem::path ShippedFile(const std::filesystem::path& file, const Places& places);

}  // namespace platform
