#include "alignment/modIni.h"
#include "support/window_test.h"

using namespace orvane;

namespace {

constexpr std::string_view kForm = "frmEditQuestions";

class Editor : public WindowTest {
 protected:
    Editor() {
        Show<frmAling>();
        robot::Click("frmAling", "Command1");
        listener.Heard();
    }

    static void Press(std::string_view button) { robot::Click(kForm, button); }
    static std::string Text(std::string_view control) { return robot::Text(kForm, control); }
    void Open(std::string_view bytes) {
        Put(Folder / "user" / "quiz.ini", bytes);
        robot::Click(kForm, "txtFile");
        robot::Key(kForm, "Ctrl+A");
        robot::Type(kForm, "quiz.ini");
        Press("cmndOpen");
    }
};

TEST_F(Editor, StoresTextsAtOnceAndCodesWhenTheFocusGoes) {
    EXPECT_EQ(Text("cmbAling(4)"), "    Illegal value!");
    Enter(kForm, "Alt+Q", "Who?");
    robot::Key(kForm, "Return");
    robot::Type(kForm, "line=2");
    Enter(kForm, "Alt+1", "Me");
    robot::Choose(kForm, "cmbAling(1)", 5);
    EXPECT_EQ(Text("cmbAling(1)"), "LG  Lawfull Good");
    Press("cmndSave");
    const Path file = Folder / "user" / "questions.ini";
    const std::string saved =
        "[HEAD]\r\nitems=1\r\n[QUESTION_001]\r\nquestion=Who?\r\nline=2\r\nansvertext_1=Me\r\nansvervalue_1="
        "LG\r\n";
    EXPECT_TRUE(BytesOf(file).starts_with(saved)) << BytesOf(file);
    // By its access key as well.
    robot::Choose(kForm, "cmbAling(1)", 8);
    robot::Key(kForm, "Alt+S");
    EXPECT_EQ(IniRead("QUESTION_001", "ansvervalue_1", "c:\\questions.ini"), "CE");
    EXPECT_TRUE(listener.Heard().empty());
}

TEST_F(Editor, WalksAndCutsAndGrowsTheList) {
    for (int i = 1; i <= 5; ++i) {
        if (i > 1) Press("cmndAdd");
        Enter(kForm, "Alt+2", "a" + std::to_string(i));
    }
    const struct {
        const char *Button, *Number, *Answer;
        int Times = 1;
    } steps[] = {
        {"cmndNext", "5/5", "a5"}, {"cmndPrev", "4/5", "a4"},       {"cmndFirst", "1/5", "a1"},
        {"cmndPrev", "1/5", "a1"}, {"cmndLast", "5/5", "a5"},       {"cmndDel", "3/3", "a3", 2},
        {"cmndNew", "1/1", ""},    {"cmndAdd", "3/3", "", 2},       {"cmndAdd", "4/4", "a4"},
        {"cmndAdd", "5/5", "a5"},  {"cmndAdd", "100/100", "", 120}, {"cmndDel", "1/1", "", 120},
    };
    for (const auto& [button, number, answer, times] : steps) {
        for (int i = 0; i < times; ++i) Press(button);
        EXPECT_EQ(Text("lblNumber"), number) << button;
        EXPECT_EQ(Text("txtAnsver(2)"), answer) << button;
    }
}

TEST_F(Editor, StoresTheEmptyTextWhereShowingASlotEmptiesABox) {
    Press("cmndAdd");
    Press("cmndAdd");
    Enter(kForm, "Alt+2", "two");
    Press("cmndPrev");
    Press("cmndSave");
    const std::string saved = BytesOf(Folder / "user" / "questions.ini");
    EXPECT_NE(saved.find("[QUESTION_002]\r\nansvertext_2=\r\n[QUESTION_003]\r\nansvertext_2=two"),
              std::string::npos)
        << saved;
}

TEST_F(Editor, KeepsACodeThatItDoesNotKnowUntilTheFocusHasBeenThere) {
    Open("[HEAD]\r\nitems=1\r\n[QUESTION_001]\r\nansvervalue_1=XX\r\nansvervalue_2=YY\r\n");
    EXPECT_EQ(Text("cmbAling(1)"), "    Illegal value!");
    for (const char* key : {"Alt+2", "Tab", "Tab"}) robot::Key(kForm, key);
    Press("cmndSave");
    EXPECT_EQ(IniRead("QUESTION_001", "ansvervalue_1", "quiz.ini"), "XX");
    EXPECT_EQ(IniRead("QUESTION_001", "ansvervalue_2", "quiz.ini"), "");
}

TEST_F(Editor, SavesUneditedTextsAsTheyWere) {
    const std::string text =
        "[HEAD]\r\nitems=1\r\n[QUESTION_001]\r\nquestion=Quoi\xC2\xA0? a\xE2\x80\xA8"
        "b\xE2\x80\xA9"
        "c\r\n"
        "ansvertext_1=[QUESTION_002] a=b\r\nansvervalue_1=L\r\n";
    Open(text);
    robot::Wheel(kForm, "cmbAling(1)", -1);
    EXPECT_EQ(Text("cmbAling(1)"), "L   Lawfull");
    Press("cmndSave");
    EXPECT_TRUE(BytesOf(Folder / "user" / "quiz.ini").starts_with(text))
        << BytesOf(Folder / "user" / "quiz.ini");
}

TEST_F(Editor, ShowsNoCountForAFileThatIsMissingAndForgetsWhatWasNotSaved) {
    Enter(kForm, "Alt+Q", "Still here");
    Enter(kForm, "Alt+4", "");
    for (int i = 0; i < 8; ++i) robot::Key(kForm, "Tab");  // to the file
    robot::Key(kForm, "Ctrl+A");
    robot::Type(kForm, "none\\missing.ini");
    for (const char* button : {"cmndOpen", "cmndNext", "cmndLast"}) {
        Press(button);
        EXPECT_EQ(Text("lblNumber"), "1/0");
        EXPECT_EQ(Text("txtQuestion"), "Still here");
    }
    Press("cmndSave");
    EXPECT_EQ(IniRead("HEAD", "items", "none\\missing.ini"), "0");
    robot::Click("frmAling", "Command1");
    EXPECT_EQ(Text("txtQuestion"), "Still here");
    robot::DesktopCloses(kForm);
    EXPECT_FALSE(robot::Shown(kForm));
    robot::Click("frmAling", "Command1");
    EXPECT_EQ(Text("txtQuestion"), "");
    EXPECT_EQ(Text("lblNumber"), "1/1");
}

}  // namespace
