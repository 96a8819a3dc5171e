#include "alignment/question_file.h"

#include <limits>

#include "alignment/question_edit.h"
#include "platform/profile_fixture.h"

namespace orvane {
namespace {

class QuestionFile : public FolderTest {
 protected:
    const Path File = Folder / "questions.ini";
    const std::string Name = File.string();
};

std::string AllTexts(const QuestionRecord& question) {
    std::string all = TextOf(question.Text);
    for (std::int32_t j = 1; j <= kAnswerCount; ++j) {
        all += "|" + TextOf(question.Answers[j].Text) + "|" + TextOf(question.Answers[j].Value);
    }
    return all;
}

TEST_F(QuestionFile, CountIsTheLeadingNumberOfItemsRounded) {
    const struct {
        std::string Items;
        std::int32_t Count;
    } cases[] = {
        {"2.5", 2}, {"3.5", 4},   {"7abc", 7},   {"seven", 0},
        {"-3", -3}, {"101", 100}, {"1e99", 100}, {"-1e99", std::numeric_limits<std::int32_t>::min()},
    };
    for (const auto& [items, count] : cases) {
        Put(File, "[HEAD]\r\nitems=" + items + "\r\n");
        QuestionList list;
        EXPECT_EQ(LoadQuestions(Name, list), count) << items;
    }
}

TEST_F(QuestionFile, ReadsWhatTheCountReachesAndNoFurther) {
    Put(File,
        "[question_001]\r\nAnsverValue_4 = CG \r\nquestion=One\r\nansvertext_1=\"a=b\"\r\n"
        "[QUESTION_2]\r\nquestion=Unpadded\r\n"
        "[QUESTION_003]\r\nquestion=Three\r\nansvertext_5=none\r\n"
        "[QUESTION_004]\r\nquestion=Four\r\n[Head]\r\nITEMS=3\r\n");
    QuestionEdit edit;
    edit.List[2].Answers[2].Value = "LG";
    edit.List[4].Text = "Kept";
    OpenQuestions(edit, Name);
    EXPECT_EQ(edit.QuestionCount, 3);
    EXPECT_EQ(AllTexts(edit.List[1]), "One|a=b|||||||CG");
    EXPECT_EQ(AllTexts(edit.List[2]), "||||||||");
    EXPECT_EQ(edit.List[2].Text, "");  // assigned, not unset
    EXPECT_EQ(AllTexts(edit.List[3]), "Three||||||||");
    EXPECT_EQ(AllTexts(edit.List[4]), "Kept||||||||");

    Put(File, "[HEAD]\r\nitems=-7\r\n");
    OpenQuestions(edit, Name);
    EXPECT_EQ(edit.QuestionCount, -7);
    GoToQuestion(edit, edit.QuestionCount);
    EXPECT_EQ(edit.CurrentQuestion, 1);
    AddQuestion(edit);
    EXPECT_EQ(edit.QuestionCount, 1);
}

TEST_F(QuestionFile, SavesItsOwnKeysInOrderAndReadsThemByTheRules) {
    QuestionList list;
    list[1].Text = "First line\r\nlast line";
    list[1].Answers[1] = {std::string(300, 'x'), "  LG "};
    list[1].Answers[2] = {"\"quoted\"", {}};
    list[2].Text = "";
    list[2].Answers[3].Value = "N";
    SaveQuestions(Name, list, 2);
    const std::string first =
        "[QUESTION_001]\r\nquestion=First line\r\nlast line\r\nansvertext_1=" + std::string(300, 'x') +
        "\r\nansvervalue_1=  LG \r\n";  // the reader cuts
    const std::string second = "[QUESTION_002]\r\nquestion=\r\nansvervalue_3=N\r\n";
    EXPECT_EQ(BytesOf(File), "[HEAD]\r\nitems=2\r\n" + first + "ansvertext_2=\"quoted\"\r\n" + second);
    EXPECT_EQ(LoadQuestions(Name, list), 2);
    EXPECT_EQ(AllTexts(list[1]), "First line|" + std::string(254, 'x') + "|LG|quoted|||||");

    QuestionList shorter;
    shorter[1].Text = "Changed";
    SaveQuestions(Name, shorter, 1);
    EXPECT_EQ(BytesOf(File),
              "[HEAD]\r\nitems=1\r\n[QUESTION_001]\r\nquestion=Changed\r\nlast line\r\n" + second);
}

}  // namespace
}  // namespace orvane
