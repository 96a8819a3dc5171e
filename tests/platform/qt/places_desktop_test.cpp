#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/places.h"

namespace platform {
namespace {

const Places kPlaces{"/u/orvane", "/opt/orvane", "/home/me"};

TEST(PlacesTest, NamesOfAllKindsLeadToOnePlace) {
    using namespace std::string_view_literals;
    const struct {
        std::string_view Name, File;
    } cases[] = {
        {"c:\\questions.ini", "/u/orvane/questions.ini"},
        {"C:/x/y.ini", "/u/orvane/x/y.ini"},
        {"D:\\a\\b.ini", "/u/orvane/d/a/b.ini"},
        {"a\\.\\\\b/c.ini", "/u/orvane/a/b/c.ini"},
        {"\\\\server\\share\\c.ini", "/u/orvane/server/share/c.ini"},
        {"1:\\x.ini", "/u/orvane/1:/x.ini"},
        {"/abs/a\\b.ini", "/abs/a\\b.ini"},
        {"~/a\\b.ini", "/home/me/a\\b.ini"},
        // The top of a drive has nothing above it.
        {"d:\\a\\..\\..\\..\\x.ini", "/u/orvane/d/x.ini"},
        {"../x.ini", "/u/orvane/x.ini"},
        // What can only be a folder, or no name at all.
        {"", ""},
        {"c:", ""},
        {"a\\", ""},
        {"c:\\a\\..", ""},
        {"x.ini\0y"sv, ""},
    };
    for (const auto& [name, file] : cases) EXPECT_EQ(PathOfName(name, kPlaces), file) << name;
    for (const char* name : {"c:\\x.ini", "~/x.ini"}) {
        EXPECT_EQ(PathOfName(name, {}), "") << "must not become a file of the current directory";
    }
    EXPECT_EQ(ShippedFile("/u/orvane/d/x.ini", kPlaces), "/opt/orvane/d/x.ini");
    for (const char* outside : {"/u/x.ini", "/u/orvane2/x.ini", "/u/orvane/../x.ini", "/u/orvane", ""}) {
        EXPECT_EQ(ShippedFile(outside, kPlaces), "") << outside;
    }
}

TEST(PlacesTest, DesktopPlacesFollowTheEnvironment) {
    setenv("HOME", "/home/me", 1);
    setenv("XDG_DATA_HOME", "/data", 1);
    EXPECT_EQ(DesktopPlaces().UserData, "/data/orvane");
    setenv("XDG_DATA_HOME", "./data", 1);
    EXPECT_EQ(DesktopPlaces().UserData, "/home/me/.local/share/orvane");
    unsetenv("HOME");  // the password database knows one
    EXPECT_TRUE(DesktopPlaces().Home.is_absolute());
    EXPECT_EQ(DesktopPlaces().Program, std::filesystem::canonical("/proc/self/exe").parent_path());
}

}  // namespace
}  // namespace platform
