#include "platform/places.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

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
        {"name.ini", "/u/orvane/name.ini"},
        {"a\\.\\\\b/c.ini", "/u/orvane/a/b/c.ini"},
        {"\\\\server\\share\\c.ini", "/u/orvane/server/share/c.ini"},
        {"1:\\x.ini", "/u/orvane/1:/x.ini"},
        {"/abs/a\\b.ini", "/abs/a\\b.ini"},
        {"~/a\\b.ini", "/home/me/a\\b.ini"},
        // The top of a drive has nothing above it.
        {"c:\\..\\..\\x.ini", "/u/orvane/x.ini"},
        {"d:\\a\\..\\..\\..\\x.ini", "/u/orvane/d/x.ini"},
        // What can only be a folder, or no name at all.
        {"", ""},
        {"c:", ""},
        {"a\\", ""},
        {"c:\\a\\..", ""},
        {"x.ini\0y"sv, ""},
    };
    for (const auto& [name, file] : cases) EXPECT_EQ(PathOfName(name, kPlaces), file) << name;

    const Places nowhere{"", "", ""};
    EXPECT_EQ(PathOfName("c:\\x.ini", nowhere), "") << "must not become a file of the current directory";
    EXPECT_EQ(PathOfName("~/x.ini", nowhere), "");
}

TEST(PlacesTest, OnlyTheUsersFolderHasShippedFiles) {
    EXPECT_EQ(ShippedFile("/u/orvane/d/questions.ini", kPlaces), "/opt/orvane/d/questions.ini");
    for (const char* outside :
         {"/u/questions.ini", "/u/orvane2/x.ini", "/u/orvane/../x.ini", "/u/orvane", ""}) {
        EXPECT_EQ(ShippedFile(outside, kPlaces), "") << outside;
    }
}

TEST(PlacesTest, DesktopPlacesFollowTheEnvironment) {
    const char* before = std::getenv("HOME");
    const std::string oldHome = before != nullptr ? before : "";
    setenv("HOME", "/home/me", 1);
    setenv("XDG_DATA_HOME", "/data", 1);
    EXPECT_EQ(DesktopPlaces().UserData, "/data/orvane");
    for (const char* useless : {"./data", ""}) {
        setenv("XDG_DATA_HOME", useless, 1);
        EXPECT_EQ(DesktopPlaces().UserData, "/home/me/.local/share/orvane") << useless;
    }
    unsetenv("HOME");  // the password database knows one
    EXPECT_TRUE(DesktopPlaces().Home.is_absolute());
    setenv("HOME", oldHome.c_str(), 1);
    EXPECT_EQ(DesktopPlaces().Program, std::filesystem::canonical("/proc/self/exe").parent_path());
}

}  // namespace
}  // namespace platform
