#include "alignment/modIni.h"

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
    EXPECT_EQ(IniRead("Q", "text", kName), "");
    EXPECT_EQ(IniWrite("Q", "text", "a\r\nb=c", kName), kTrue);
    IniWrite("Q", "none", {}, kName);
    EXPECT_EQ(BytesOf(File), "[Q]\r\ntext=a\r\nb=c\r\n");
    EXPECT_EQ(IniRead("q", "b", kName), "c");
    EXPECT_EQ(IniWrite("s", "k", "1", platform::Utf8OfPath(Folder / "missing/a.ini")), kTrue);
    EXPECT_FALSE(std::filesystem::exists(Folder / "missing")) << "a folder outside the user's own";
    IniWrite("s", "a=b", "1", "b.ini");
    EXPECT_EQ(CountIn(User), 1);
}

TEST_F(ModIniTest, TheShippedFileStandsInUntilTheFirstWrite) {
    Put(Shipped / kName, "[s]\nk=1\n");
    EXPECT_EQ(IniRead("s", "k", kName), "1");
    IniWrite("s", "k", "1", kName);
    EXPECT_EQ(BytesOf(File), "[s]\nk=1\n") << "the user's own from now on, equal or not";
    std::filesystem::remove(File);
    std::filesystem::create_directory(File);
    EXPECT_EQ(IniRead("s", "k", kName), "") << "the user has one, though none that can be read";
    platform::SetPlaces({Folder / std::string(5000, 'x'), Shipped, Folder});
    EXPECT_EQ(IniRead("s", "k", kName), "1") << "nobody can tell whether the user has one";
    IniWrite("s", "k", "2", kName);
    EXPECT_EQ(BytesOf(Shipped / kName), "[s]\nk=1\n");
}

TEST_F(ModIniTest, AnOpenFileIsOneStateAndSavesAllOrNothing) {
    Put(File, "[s]\nk=1\n");
    IniFile file(File);
    file.Write("s", "k", "2");
    file.Write("t", "k", "3");
    Put(File, "[s]\nk=9\n");
    EXPECT_EQ(file.Read("T", "K"), "3");
    EXPECT_EQ(IniRead("s", "k", kName), "9") << "nothing is kept between calls";
    file.Save();
    EXPECT_EQ(BytesOf(File), "[s]\nk=2\n[t]\nk=3\n");

    Put(User / "folder" / "x", "");
    IniFile folder(User / "folder");
    folder.Write("s", "k", "1");
    std::filesystem::remove_all(User / "folder");
    Put(User / "folder", "meanwhile a file");
    folder.Save();
    EXPECT_EQ(BytesOf(User / "folder"), "meanwhile a file") << "what could not be read is not replaced";
}

}  // namespace
}  // namespace orvane
