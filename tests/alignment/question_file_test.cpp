#include "alignment/question_file.h"

#include "alignment/question_edit.h"
#include "platform/places.h"
#include "platform/profile_fixture.h"

namespace orvane {
namespace {

class QuestionFile : public FolderTest {
 protected:
    const Path File = Folder / "questions.ini";
    const std::string Name = platform::Utf8OfPath(File);
};

TEST_F(QuestionFile, ReadsWhatTheCountReachesAndNoFurther) {
    QuestionEdit edit;
    edit.List[2].Answers[2].Value = "LG";
    edit.List[4].Text = "Kept";
    edit.CurrentQuestion = 5;
    Put(File,
        "[question_001]\r\nAnsverValue_4 = CG \r\nquestion=One\r\nansvertext_1=A\r\n[QUESTION_2]\r\nquestion="
        "Unpadded\r\n[QUESTION_003]\r\nquestion=Three\r\n[QUESTION_004]\r\nquestion=Four\r\n[Head]\r\nITEMS="
        "3");
    OpenQuestions(edit, Name);
    EXPECT_EQ(edit.QuestionCount, 3);
    EXPECT_EQ(edit.CurrentQuestion, 1);
    EXPECT_EQ(edit.List[1].Text, "One");
    EXPECT_EQ(edit.List[1].Answers[1].Text, "A");
    EXPECT_EQ(edit.List[1].Answers[4].Value, "CG");
    EXPECT_EQ(edit.List[2].Text, "");  // assigned, not unset
    EXPECT_EQ(edit.List[2].Answers[2].Value, "");
    EXPECT_EQ(edit.List[3].Text, "Three");
    EXPECT_EQ(edit.List[4].Text, "Kept");
    ClearQuestions(edit);
    EXPECT_EQ(edit.List[1].Answers[4].Value, "");
    for (const auto& [items, count] :
         {std::pair{"2.5", 2}, {"7abc", 7}, {"seven", 0}, {"101", 100}, {"-7", -7}}) {
        Put(File, std::string("[HEAD]\r\nitems=") + items);
        OpenQuestions(edit, Name);
        EXPECT_EQ(edit.QuestionCount, count) << items;
    }
    GoToQuestion(edit, edit.QuestionCount);
    EXPECT_EQ(edit.CurrentQuestion, 1);
    AddQuestion(edit);
    EXPECT_EQ(edit.QuestionCount, 1);
}

TEST_F(QuestionFile, SavesItsOwnKeysInOrder) {
    QuestionList list;
    list[1].Text = "First line\r\nlast line";
    list[1].Answers[1] = {"  A ", std::string(300, 'x')};
    list[2].Text = "";
    list[2].Answers[3].Value = "N";
    SaveQuestions(Name, list, 2);
    const std::string answer = "ansvertext_1=  A \r\nansvervalue_1=" + std::string(300, 'x') + "\r\n";
    const std::string second = "[QUESTION_002]\r\nquestion=\r\nansvervalue_3=N\r\n";
    EXPECT_EQ(BytesOf(File), "[HEAD]\r\nitems=2\r\n[QUESTION_001]\r\nquestion=First line\r\nlast line\r\n" +
                                 answer + second);
    QuestionList shorter;
    shorter[1].Text = "Changed";
    SaveQuestions(Name, shorter, 1);
    EXPECT_EQ(BytesOf(File),
              "[HEAD]\r\nitems=1\r\n[QUESTION_001]\r\nquestion=Changed\r\nlast line\r\n" + second);
}

}  // namespace
}  // namespace orvane
