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
        {"c:questions.ini", "/u/orvane/questions.ini"},
        {"D:\\a\\b.ini", "/u/orvane/d/a/b.ini"},
        {"name.ini", "/u/orvane/name.ini"},
        {"\\name.ini", "/u/orvane/name.ini"},
        {"a\\.\\\\b/c.ini", "/u/orvane/a/b/c.ini"},
        {"\\\\server\\share\\c.ini", "/u/orvane/server/share/c.ini"},
        {"1:\\x.ini", "/u/orvane/1:/x.ini"},
        {"/abs/a\\b.ini", "/abs/a\\b.ini"},
        {"~/a\\b.ini", "/home/me/a\\b.ini"},
        {"~//b.ini", "/home/me/b.ini"},
        // The top of a drive has nothing above it.
        {"c:\\..\\..\\x.ini", "/u/orvane/x.ini"},
        {"d:\\a\\..\\..\\..\\x.ini", "/u/orvane/d/x.ini"},
        {"..\\x.ini", "/u/orvane/x.ini"},
        // What can only be a folder, or no name at all.
        {"", ""},
        {"c:", ""},
        {"d:\\", ""},
        {"a\\", ""},
        {"a\\.", ""},
        {"c:\\a\\..", ""},
        {"x.ini\0y"sv, ""},
    };
    for (const auto& [name, file] : cases) EXPECT_EQ(PathOfName(name, kPlaces), file) << name;

    const Places nowhere{"", "", ""};
    EXPECT_EQ(PathOfName("c:\\x.ini", nowhere), "") << "must not become a file of the current directory";
    EXPECT_EQ(PathOfName("~/x.ini", nowhere), "");
    EXPECT_EQ(PathOfName("/x.ini", nowhere), "/x.ini");
}

TEST(PlacesTest, OnlyTheUsersFolderHasShippedFiles) {
    EXPECT_EQ(ShippedFile("/u/orvane/questions.ini", kPlaces), "/opt/orvane/questions.ini");
    EXPECT_EQ(ShippedFile("/u/orvane/d/questions.ini", kPlaces), "/opt/orvane/d/questions.ini");
    for (const char* outside :
         {"/u/questions.ini", "/u/orvane2/x.ini", "/u/orvane/../x.ini", "/u/orvane", ""}) {
        EXPECT_EQ(ShippedFile(outside, kPlaces), "") << outside;
    }
    EXPECT_EQ(ShippedFile("/u/orvane/x.ini", {"/u/orvane", "", ""}), "");
}

class Variable {
 public:
    explicit Variable(const char* name) : name_(name) {
        if (const char* value = std::getenv(name)) before_ = value;
    }
    ~Variable() { setenv(name_, before_.c_str(), 1); }
    void Set(const char* value) const { setenv(name_, value, 1); }
    void Unset() const { unsetenv(name_); }

 private:
    const char* name_;
    std::string before_;
};

TEST(PlacesTest, DesktopPlacesFollowTheEnvironment) {
    const Variable data("XDG_DATA_HOME");
    const Variable home("HOME");
    home.Set("/home/me");
    data.Set("/data");
    EXPECT_EQ(DesktopPlaces().UserData, "/data/orvane");
    EXPECT_EQ(DesktopPlaces().Home, "/home/me");
    for (const char* useless : {"", "data", "./data"}) {
        data.Set(useless);
        EXPECT_EQ(DesktopPlaces().UserData, "/home/me/.local/share/orvane") << useless;
    }
    home.Unset();  // the password database knows one
    EXPECT_TRUE(DesktopPlaces().Home.is_absolute());
    EXPECT_EQ(DesktopPlaces().UserData, DesktopPlaces().Home / ".local/share/orvane");
    EXPECT_EQ(DesktopPlaces().Program, std::filesystem::canonical("/proc/self/exe").parent_path());

    SetPlaces(kPlaces);
    EXPECT_EQ(CurrentPlaces().UserData, kPlaces.UserData);
    SetPlaces();
    EXPECT_EQ(CurrentPlaces().UserData, DesktopPlaces().UserData);
}

}  // namespace
}  // namespace platform
