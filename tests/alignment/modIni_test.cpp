#include "alignment/modIni.h"

#include <string>

#include "platform/places.h"
#include "platform/profile_fixture.h"

namespace orvane {
namespace {

constexpr std::string_view kName = "c:\\a.ini";

class ModIniTest : public FolderTest {
 protected:
    ModIniTest() { platform::SetPlaces({User, Shipped, Folder}); }
    ~ModIniTest() override { platform::SetPlaces(); }

    Path User = Folder / "data" / "orvane";
    Path Shipped = Folder / "program";
    Path File = User / "a.ini";
};

TEST_F(ModIniTest, AFirstSaveMakesTheFileInTheOrderOfTheCalls) {
    EXPECT_EQ(IniRead("HEAD", "items", kName), "");
    EXPECT_EQ(IniWrite("HEAD", "items", "2", kName), kTrue);
    IniWrite("Q", "text", "a\r\nb=c", kName);
    IniWrite("Q", "value", "", kName);
    IniWrite("Q", "none", {}, kName);
    IniWrite("head", "ITEMS", "3", "C:/a.ini");
    EXPECT_EQ(BytesOf(File), "[HEAD]\r\nitems=3\r\n[Q]\r\ntext=a\r\nb=c\r\nvalue=\r\n");
    EXPECT_EQ(IniRead("q", "b", "\\a.ini"), "c");
    IniWrite("s", "k", "there", "d:\\x\\y.ini");
    EXPECT_EQ(BytesOf(User / "d/x/y.ini"), "[s]\r\nk=there\r\n");
}

TEST_F(ModIniTest, AWriteThatCannotBeDoneIsSilent) {
    Put(User / "folder" / "x", "");
    for (const char* name : {"~/missing/a.ini", "folder", ""}) {
        EXPECT_EQ(IniWrite("s", "k", "1", name), kTrue);
        EXPECT_EQ(IniRead("s", "k", name), "");
    }
    IniWrite("s", "a=b", "1", kName);
    EXPECT_FALSE(std::filesystem::exists(Folder / "missing"));
    EXPECT_FALSE(std::filesystem::exists(File));

    IniFile folder(User / "folder");
    folder.Write("s", "k", "1");
    std::filesystem::remove_all(User / "folder");
    Put(User / "folder", "meanwhile a file");
    folder.Save();
    EXPECT_EQ(BytesOf(User / "folder"), "meanwhile a file") << "what could not be read is not replaced";
}

TEST_F(ModIniTest, TheShippedFileStandsInUntilTheFirstWrite) {
    const std::string shipped = "; by us\r\n[s]\r\nk=1\r\nj=2\r\n";
    Put(Shipped / "a.ini", shipped);
    EXPECT_EQ(IniRead("s", "k", kName), "1");
    EXPECT_EQ(IniRead("s", "k", "d:\\a.ini"), "");
    EXPECT_EQ(IniRead("s", "k", (Folder / "a.ini").string()), "");
    IniWrite("s", "k", "1", kName);  // the user's own from now on, equal or not
    EXPECT_EQ(BytesOf(File), shipped);
    IniWrite("s", "k", "5", kName);
    EXPECT_EQ(BytesOf(File), "; by us\r\n[s]\r\nk=5\r\nj=2\r\n");
    EXPECT_EQ(BytesOf(Shipped / "a.ini"), shipped);

    std::filesystem::remove(File);
    std::filesystem::create_directory(File);
    EXPECT_EQ(IniRead("s", "k", kName), "") << "the user has one, though none that can be read";
    platform::SetPlaces({Folder / std::string(5000, 'x'), Shipped, Folder});
    EXPECT_EQ(IniRead("s", "k", kName), "1") << "nobody can tell whether the user has one";
    IniWrite("s", "k", "5", kName);
    EXPECT_EQ(BytesOf(Shipped / "a.ini"), shipped);
}

TEST_F(ModIniTest, AnOpenFileIsOneStateAndSavesAllOrNothing) {
    const std::string before = "[s]\nk=1\n";
    Put(File, before);
    IniFile file(File);
    file.Write("s", "k", "2");
    file.Write("t", "k", "3");
    EXPECT_EQ(file.Read("T", "K"), "3");
    EXPECT_EQ(BytesOf(File), before);
    Put(File, "[s]\nk=9\n");
    EXPECT_EQ(file.Read("s", "k"), "2");
    EXPECT_EQ(IniRead("s", "k", kName), "9") << "nothing is kept between calls";
    file.Save();
    EXPECT_EQ(BytesOf(File), "[s]\nk=2\n[t]\nk=3\n");
    IniFile(User / "b.ini").Save();
    EXPECT_EQ(CountIn(User), 1);
}

}  // namespace
}  // namespace orvane
