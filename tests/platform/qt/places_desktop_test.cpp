#include <gtest/gtest.h>

#include <cstdlib>

#include "frame/number_text.h"
#include "platform/places.h"

using namespace platform;

TEST(Desktop, NamesOfAllKindsLeadToOnePlace) {
    using namespace std::string_view_literals;
    const Places places{"/u/orvane", "/opt/orvane", "/home/me"};
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"c:\\questions.ini", "/u/orvane/questions.ini"},
        {"D:/a\\\\b/.\\c.ini", "/u/orvane/d/a/b/c.ini"},
        {"\\\\server\\share\\c.ini", "/u/orvane/server/share/c.ini"},
        {"1:\\x.ini", "/u/orvane/1:/x.ini"},
        {"d:\\a\\..\\..\\..\\x.ini", "/u/orvane/d/x.ini"},
        {"../x.ini", "/u/orvane/x.ini"},
        {"/abs/a\\b.ini", "/abs/a\\b.ini"},
        {"~/a\\b.ini", "/home/me/a\\b.ini"},
        {"c:", ""},
        {"a\\", ""},
        {"c:\\a\\..", ""},
        {"x.ini\0y"sv, ""},
    };
    for (const auto& [name, file] : cases) EXPECT_EQ(PathOfName(name, places), file) << name;
    for (const char* name : {"c:\\x.ini", "~/x.ini"}) {
        EXPECT_EQ(PathOfName(name, {}), "") << "must not become a file of the current directory";
    }
    EXPECT_EQ(ShippedFile("/u/orvane/d/x.ini", places), "/opt/orvane/d/x.ini");
    for (const char* outside : {"/u/x.ini", "/u/orvane2/x.ini", "/u/orvane/../x.ini", "/u/orvane"}) {
        EXPECT_EQ(ShippedFile(outside, places), "") << outside;
    }
}

TEST(Desktop, FollowsTheEnvironment) {
    setenv("HOME", "/home/me", 1);
    setenv("XDG_DATA_HOME", "/data", 1);
    EXPECT_EQ(DesktopPlaces().UserData, "/data/orvane");
    setenv("XDG_DATA_HOME", "./data", 1);
    EXPECT_EQ(DesktopPlaces().UserData, "/home/me/.local/share/orvane");
    unsetenv("HOME");  // the password database knows one
    EXPECT_TRUE(DesktopPlaces().Home.is_absolute());
    EXPECT_EQ(DesktopPlaces().Program, std::filesystem::canonical("/proc/self/exe").parent_path());
    // In a process that has not asked for it yet.
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(setenv("LC_ALL", "de_DE", 1); std::exit(orvane::NumberText(2.5) == "2,5" ? 0 : 1);
                , testing::ExitedWithCode(0), "");
}
