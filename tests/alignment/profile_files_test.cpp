#include "alignment/modIni.h"
#include "alignment/question_edit.h"
#include "platform/profile_fixture.h"

using namespace orvane;

constexpr std::string_view kName = "a.ini";

class ProfileFiles : public FolderTest {
 protected:
    const Path File = User / kName;
};

TEST_F(ProfileFiles, WritesGoByThemselvesAndSayNothing) {
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

TEST_F(ProfileFiles, TheShippedFileStandsInUntilTheFirstWrite) {
    Put(Program / kName, "[s]\nk=1\n");
    EXPECT_EQ(IniRead("s", "k", kName), "1");
    IniWrite("s", "k", "1", kName);
    EXPECT_EQ(BytesOf(File), "[s]\nk=1\n") << "the user's own from now on, equal or not";
    std::filesystem::remove(File);
    std::filesystem::create_directory(File);
    EXPECT_EQ(IniRead("s", "k", kName), "") << "the user has one, though none that can be read";
    platform::SetPlaces({Folder / std::string(5000, 'x'), Program});
    EXPECT_EQ(IniRead("s", "k", kName), "1") << "nobody can tell whether the user has one";
    IniWrite("s", "k", "2", kName);
    EXPECT_EQ(BytesOf(Program / kName), "[s]\nk=1\n");
}

TEST_F(ProfileFiles, AnOpenFileIsOneStateAndSavesAllOrNothing) {
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

TEST_F(ProfileFiles, ReadsWhatTheCountReachesAndNoFurther) {
    QuestionEdit edit;
    edit.List[2].Answers[2].Value = "LG";
    edit.List[4].Text = "Kept";
    edit.CurrentQuestion = 5;
    Put(File,
        "[question_001]\r\nAnsverValue_4 = CG \r\n[QUESTION_2]\r\nquestion="
        "Unpadded\r\n[QUESTION_003]\r\nquestion=Three\r\n[QUESTION_004]\r\nquestion=Four\r\n[Head]\r\nITEMS="
        "3");
    OpenQuestions(edit, kName);
    EXPECT_EQ(edit.QuestionCount, 3);
    EXPECT_EQ(edit.CurrentQuestion, 1);
    EXPECT_EQ(edit.List[1].Answers[4].Value, "CG");
    EXPECT_EQ(edit.List[2].Text, "");  // assigned, not unset
    EXPECT_EQ(edit.List[2].Answers[2].Value, "");
    EXPECT_EQ(edit.List[3].Text, "Three");
    EXPECT_EQ(edit.List[4].Text, "Kept");
    for (const auto& [items, count] : {std::pair{"2.5", 2}, {"seven", 0}, {"101", 100}, {"-7", -7}}) {
        Put(File, std::string("[HEAD]\r\nitems=") + items);
        OpenQuestions(edit, kName);
        EXPECT_EQ(edit.QuestionCount, count) << items;
    }
    AddQuestion(edit);
    EXPECT_EQ(edit.QuestionCount, 1);
}
