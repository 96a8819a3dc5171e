#include "alignment/modIni.h"

#include <string>

#include "platform/places.h"
#include "platform/profile_fixture.h"

namespace orvane {
namespace {

constexpr std::string_view kName = "a.ini";

class ModIniTest : public FolderTest {
 protected:
    ModIniTest() { platform::SetPlaces({User, Shipped, Folder}); }
    ~ModIniTest() override { platform::SetPlaces(); }

    const Path User = Folder / "data" / "orvane";
    const Path Shipped = Folder / "program";
    const Path File = User / kName;
};

TEST_F(ModIniTest, WritesGoByThemselvesAndSayNothing) {
    EXPECT_EQ(IniRead("HEAD", "items", kName), "");
    EXPECT_EQ(IniWrite("HEAD", "items", "2", kName), kTrue);
    IniWrite("Q", "text", "a\r\nb=c", kName);
    IniWrite("Q", "none", {}, kName);
    IniWrite("head", "ITEMS", "3", kName);
    EXPECT_EQ(BytesOf(File), "[HEAD]\r\nitems=3\r\n[Q]\r\ntext=a\r\nb=c\r\n");
    EXPECT_EQ(IniRead("q", "b", kName), "c");

    const Path missing = Folder / "missing" / "a.ini";
    EXPECT_EQ(IniWrite("s", "k", "1", platform::Utf8OfPath(missing)), kTrue);
    EXPECT_FALSE(std::filesystem::exists(missing.parent_path())) << "a folder outside the user's own";
    IniWrite("s", "a=b", "1", "b.ini");
    EXPECT_EQ(CountIn(User), 1);
}

TEST_F(ModIniTest, TheShippedFileStandsInUntilTheFirstWrite) {
    const std::string shipped = "; by us\r\n[s]\r\nk=1\r\nj=2\r\n";
    Put(Shipped / kName, shipped);
    EXPECT_EQ(IniRead("s", "k", kName), "1");
    IniWrite("s", "k", "1", kName);  // the user's own from now on, equal or not
    EXPECT_EQ(BytesOf(File), shipped);
    IniWrite("s", "k", "5", kName);
    EXPECT_EQ(BytesOf(File), "; by us\r\n[s]\r\nk=5\r\nj=2\r\n");

    std::filesystem::remove(File);
    std::filesystem::create_directory(File);
    EXPECT_EQ(IniRead("s", "k", kName), "") << "the user has one, though none that can be read";
    IniFile file(File);
    file.Write("s", "k", "7");
    std::filesystem::remove(File);
    Put(File, "meanwhile a file");
    file.Save();
    EXPECT_EQ(BytesOf(File), "meanwhile a file") << "what could not be read is not replaced";

    platform::SetPlaces({Folder / std::string(5000, 'x'), Shipped, Folder});
    EXPECT_EQ(IniRead("s", "k", kName), "1") << "nobody can tell whether the user has one";
    EXPECT_EQ(BytesOf(Shipped / kName), shipped);
}

TEST_F(ModIniTest, AnOpenFileIsOneStateAndSavesAllOrNothing) {
    Put(File, "[s]\nk=1\n");
    IniFile file(File);
    file.Write("s", "k", "2");
    file.Write("t", "k", "3");
    EXPECT_EQ(file.Read("T", "K"), "3");
    EXPECT_EQ(BytesOf(File), "[s]\nk=1\n");
    Put(File, "[s]\nk=9\n");
    EXPECT_EQ(file.Read("s", "k"), "2");
    EXPECT_EQ(IniRead("s", "k", kName), "9") << "nothing is kept between calls";
    file.Save();
    EXPECT_EQ(BytesOf(File), "[s]\nk=2\n[t]\nk=3\n");
}

}  // namespace
}  // namespace orvane
