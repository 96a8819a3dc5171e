#include "alignment/question_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include "alignment/question_edit.h"

namespace orvane {
namespace {

class QuestionFile : public testing::Test {
 protected:
    QuestionFile() {
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    ~QuestionFile() override { std::filesystem::remove_all(folder_); }

    void Write(const std::string& bytes) const { std::ofstream(name_, std::ios::binary) << bytes; }

    // The lines of the file but for blank ones; all must end with CR LF.
    std::vector<std::string> Lines() const {
        std::ifstream file(name_, std::ios::binary);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            EXPECT_TRUE(line.ends_with('\r')) << line;
            if (line != "\r") lines.push_back(line.substr(0, line.size() - 1));
        }
        return lines;
    }

    std::int32_t LoadCount(const std::string& items) const {
        Write("[HEAD]\r\nitems=" + items + "\r\n");
        QuestionList list;
        return LoadQuestions(name_, list);
    }

    const std::filesystem::path folder_ = std::filesystem::path(testing::TempDir()) / "question_file_test" /
                                          testing::UnitTest::GetInstance()->current_test_info()->name();
    const std::string name_ = (folder_ / "questions.ini").string();
};

// A question whose texts all tell where they belong.
QuestionRecord Marked(const std::string& mark) {
    QuestionRecord question;
    question.Text = "Q" + mark;
    const char* const codes[] = {"LG", "LE", "CG", "CE"};
    for (std::int32_t j = 1; j <= kAnswerCount; ++j) {
        question.Answers[j] = {"A" + mark + "." + std::to_string(j), codes[j - 1]};
    }
    return question;
}

std::string AllTexts(const QuestionRecord& question) {
    std::string all = TextOf(question.Text);
    for (std::int32_t j = 1; j <= kAnswerCount; ++j) {
        all += "|" + TextOf(question.Answers[j].Text) + "|" + TextOf(question.Answers[j].Value);
    }
    return all;
}

TEST_F(QuestionFile, CountIsTheLeadingNumberOfItemsRounded) {
    EXPECT_EQ(LoadCount("2.5"), 2);
    EXPECT_EQ(LoadCount("3.5"), 4);
    EXPECT_EQ(LoadCount("7abc"), 7);
    EXPECT_EQ(LoadCount("seven"), 0);
    EXPECT_EQ(LoadCount(""), 0);
    EXPECT_EQ(LoadCount("-3"), -3);
    EXPECT_EQ(LoadCount("101"), 100);
    EXPECT_EQ(LoadCount("1e99"), 100);
    EXPECT_EQ(LoadCount("-1e99"), std::numeric_limits<std::int32_t>::min());
    QuestionList list;
    EXPECT_EQ(LoadQuestions((folder_ / "none.ini").string(), list), 0);
}

TEST_F(QuestionFile, ReadsWhatTheCountReachesAndNoFurther) {
    Write(
        "[question_001]\r\nAnsverValue_4 = CG \r\nquestion=One\r\nansvertext_1=\"a=b\"\r\n"
        "[QUESTION_2]\r\nquestion=Unpadded\r\n"
        "[QUESTION_003]\r\nquestion=Three\r\nansvertext_5=none\r\n"
        "[QUESTION_004]\r\nquestion=Four\r\n[Head]\r\nITEMS=3\r\n");
    QuestionList list;
    list[2] = Marked("2");
    list[4] = Marked("4");
    EXPECT_EQ(LoadQuestions(name_, list), 3);
    EXPECT_EQ(AllTexts(list[1]), "One|a=b|||||||CG");
    EXPECT_EQ(AllTexts(list[2]), "||||||||");
    EXPECT_EQ(list[2].Text, "");  // assigned, not unset
    EXPECT_EQ(AllTexts(list[3]), "Three||||||||");
    EXPECT_EQ(AllTexts(list[4]), AllTexts(Marked("4")));
}

TEST_F(QuestionFile, ANewFileHasItsLinesInOrderAndNoneForUnsetFields) {
    QuestionList list;
    list[1] = Marked("1");
    list[2].Text = "";
    list[2].Answers[3].Value = "N";
    SaveQuestions(name_, list, 2);
    EXPECT_EQ(Lines(),
              (std::vector<std::string>{"[HEAD]", "items=2",                                           //
                                        "[QUESTION_001]", "question=Q1",                               //
                                        "ansvertext_1=A1.1", "ansvervalue_1=LG", "ansvertext_2=A1.2",  //
                                        "ansvervalue_2=LE", "ansvertext_3=A1.3", "ansvervalue_3=CG",   //
                                        "ansvertext_4=A1.4", "ansvervalue_4=CE",                       //
                                        "[QUESTION_002]", "question=", "ansvervalue_3=N"}));
}

TEST_F(QuestionFile, AHundredQuestionsComeBack) {
    QuestionList list;
    for (std::int32_t i = 1; i <= kMaxQuestions; ++i) list[i] = Marked(std::to_string(i));
    SaveQuestions(name_, list, kMaxQuestions);
    EXPECT_EQ(Lines().size(), 2U + 100 * 10);
    QuestionList loaded;
    EXPECT_EQ(LoadQuestions(name_, loaded), 100);
    for (std::int32_t i = 1; i <= kMaxQuestions; ++i) EXPECT_EQ(AllTexts(loaded[i]), AllTexts(list[i]));
}

TEST_F(QuestionFile, RoundTripKeepsNeitherLengthNorBlanksNorQuotesNorBreaks) {
    QuestionList list;
    list[1].Text = "First line\r\nlast line";
    list[1].Answers[1] = {std::string(300, 'x'), "  LG "};
    list[1].Answers[2] = {"\"quoted\"", "'C'"};
    list[1].Answers[3] = {"\"half quoted", "gen"};
    SaveQuestions(name_, list, 1);
    EXPECT_EQ(Lines()[4], "last line");
    EXPECT_EQ(Lines()[5], "ansvertext_1=" + std::string(300, 'x'));  // the reader cuts, not the writer
    QuestionList loaded;
    EXPECT_EQ(LoadQuestions(name_, loaded), 1);
    EXPECT_EQ(AllTexts(loaded[1]),
              "First line|" + std::string(254, 'x') + "|LG|quoted|C|\"half quoted|gen||");
}

TEST_F(QuestionFile, SavingOverAFileTouchesOnlyItsOwnKeys) {
    QuestionList list;
    for (std::int32_t i = 1; i <= 5; ++i) list[i] = Marked(std::to_string(i));
    SaveQuestions(name_, list, 5);
    std::vector<std::string> expected = Lines();
    list[1].Text = "Changed";
    list[1].Answers[2].Text.reset();
    SaveQuestions(name_, list, 1);
    expected[1] = "items=1";
    expected[3] = "question=Changed";
    expected.erase(expected.begin() + 6);
    EXPECT_EQ(Lines(), expected);
    EXPECT_EQ(LoadQuestions(name_, list), 1);
}

TEST_F(QuestionFile, AFailedSaveIsSilent) {
    QuestionList list;
    SaveQuestions((folder_ / "missing" / "questions.ini").string(), list, 1);
    SaveQuestions(folder_.string(), list, 1);
    EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

using QuestionEditing = QuestionFile;

TEST_F(QuestionEditing, QuestionsComeOffTheEndAndComeBack) {
    QuestionEdit edit;
    ClearQuestions(edit);
    EXPECT_EQ(edit.QuestionCount, 1);
    EXPECT_FALSE(edit.List[1].Text);  // nothing was on the list that could be emptied
    for (std::int32_t i = 1; i <= 5; ++i) {
        if (i > 1) AddQuestion(edit);
        EXPECT_EQ(edit.CurrentQuestion, i);
        edit.List[edit.CurrentQuestion] = Marked(std::to_string(i));
    }
    GoToQuestion(edit, 2);
    DropLastQuestion(edit);
    EXPECT_EQ(edit.CurrentQuestion, 4);
    DropLastQuestion(edit);
    ClearQuestions(edit);
    EXPECT_EQ(edit.CurrentQuestion, 1);
    for (int i = 0; i < 4; ++i) AddQuestion(edit);
    EXPECT_EQ(edit.CurrentQuestion, 5);
    for (std::int32_t i = 1; i <= 3; ++i) EXPECT_EQ(AllTexts(edit.List[i]), "||||||||");
    for (std::int32_t i = 4; i <= 5; ++i) {
        EXPECT_EQ(AllTexts(edit.List[i]), AllTexts(Marked(std::to_string(i))));
    }
}

TEST_F(QuestionEditing, PositionAndCountStayWithinTheTable) {
    QuestionEdit edit;
    for (int i = 0; i < 105; ++i) AddQuestion(edit);
    EXPECT_EQ(edit.QuestionCount, 100);
    EXPECT_EQ(edit.CurrentQuestion, 100);
    GoToQuestion(edit, 101);
    EXPECT_EQ(edit.CurrentQuestion, 100);
    GoToQuestion(edit, 0);
    EXPECT_EQ(edit.CurrentQuestion, 1);
    for (int i = 0; i < 105; ++i) DropLastQuestion(edit);
    EXPECT_EQ(edit.QuestionCount, 1);
    EXPECT_EQ(edit.CurrentQuestion, 1);
}

TEST_F(QuestionEditing, OpeningKeepsWhatTheFileDoesNotReach) {
    QuestionEdit edit;
    for (std::int32_t i = 1; i <= 3; ++i) {
        AddQuestion(edit);
        edit.List[i] = Marked(std::to_string(i));
    }
    Write("[HEAD]\r\nitems=1\r\n[QUESTION_001]\r\nquestion=Short\r\n");
    OpenQuestions(edit, name_);
    EXPECT_EQ(edit.CurrentQuestion, 1);
    AddQuestion(edit);
    EXPECT_EQ(AllTexts(edit.List[edit.CurrentQuestion]), AllTexts(Marked("2")));

    for (const std::int32_t count : {0, -7}) {
        Write("[HEAD]\r\nitems=" + std::to_string(count) + "\r\n");
        OpenQuestions(edit, name_);
        EXPECT_EQ(edit.QuestionCount, count);
        EXPECT_EQ(TextOf(edit.List[edit.CurrentQuestion].Text), "Short");
        GoToQuestion(edit, edit.QuestionCount);
        EXPECT_EQ(edit.CurrentQuestion, 1);
        AddQuestion(edit);
        EXPECT_EQ(edit.QuestionCount, 1);
    }
}

}  // namespace
}  // namespace orvane
