#pragma once

#include <filesystem>
#include <string>
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

// A path from UTF-8 and back. No other way leads a name with an umlaut to the same file on every desktop.
std::filesystem::path PathOfUtf8(std::string_view text);
std::string Utf8OfPath(const std::filesystem::path& path);

// The path of the file that a name, in UTF-8, means on this desktop; empty if the name cannot be that of a
// file.
//
// On a desktop without drives "/..." and "~/..." are what they say. Every other name lies in the user's
// folder, whichever slash it uses: "c:" is that folder, any other drive a folder in it named by the small
// letter, and ".." leads no further up than the drive.
//
// On Windows a drive or a share with a folder is what it says. A name without either lies in the user's
// folder, and so does a file right in the root of drive c. Names of devices and of streams are no files.
std::filesystem::path PathOfName(std::string_view name, const Places& places = CurrentPlaces());

// The way from the user's folder to a file in it; empty for every path outside. Links are not followed.
// Folders that are missing on the way are made at a save.
std::filesystem::path PathInUserData(const std::filesystem::path& file,
                                     const Places& places = CurrentPlaces());

// The file that is read for one of the user's folder that does not exist yet: the one of the same name that
// came with the program, on Windows before that the one in the root of drive c, if there is one. Empty for
// every path outside the user's folder.
std::filesystem::path ShippedFile(const std::filesystem::path& file, const Places& places = CurrentPlaces());

}  // namespace platform
