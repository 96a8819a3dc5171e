#include "support/window_test.h"

using namespace orvane;

namespace {

constexpr std::string_view kForm = "frmEditQuestions";

class Editor : public WindowTest {
 protected:
    Editor() {
        Show<frmAling>();
        robot::Click("frmAling", "Command1");
    }

    static void Press(std::string_view button, int times = 1) {
        for (int i = 0; i < times; ++i) robot::Click(kForm, button);
    }
    static std::string Text(std::string_view control) { return robot::Text(kForm, control); }
    static void Name(std::string_view file) {
        robot::Click(kForm, "txtFile");
        robot::Key(kForm, "Ctrl+A");
        robot::Type(kForm, file);
    }
    std::string Saved(std::string_view file = "questions.ini") {
        Press("cmndSave");
        return BytesOf(Folder / "user" / file);
    }
};

TEST_F(Editor, StoresTextsAtOnceAndCodesWhenTheFocusGoes) {
    Enter(kForm, "Alt+Q", "Who?");
    robot::Key(kForm, "Return");
    robot::Type(kForm, "line=2");
    Enter(kForm, "Alt+1", "Me");
    robot::Choose(kForm, "cmbAling(1)", 5);
    EXPECT_TRUE(
        Saved().starts_with("[HEAD]\r\nitems=1\r\n[QUESTION_001]\r\nquestion=Who?\r\nline=2\r\nansvertext_1="
                            "Me\r\nansvervalue_1=LG\r\n"));
    // By its access key as well.
    robot::Choose(kForm, "cmbAling(1)", 8);
    robot::Key(kForm, "Alt+S");
    EXPECT_NE(BytesOf(Folder / "user" / "questions.ini").find("ansvervalue_1=CE\r\n"), std::string::npos);
}

TEST_F(Editor, WalksAndCutsAndGrowsTheList) {
    for (int i = 1; i <= 5; ++i) {
        if (i > 1) Press("cmndAdd");
        Enter(kForm, "Alt+2", "a" + std::to_string(i));
        robot::Choose(kForm, "cmbAling(2)", i);
    }
    const struct {
        const char *Button, *Number, *Answer, *Code;
        int Times = 1;
    } steps[] = {
        {"cmndNext", "5/5", "a5", "LG"},   {"cmndPrev", "4/5", "a4", "C "},
        {"cmndFirst", "1/5", "a1", "G "},  {"cmndPrev", "1/5", "a1", "G "},
        {"cmndLast", "5/5", "a5", "LG"},   {"cmndDel", "3/3", "a3", "L ", 2},
        {"cmndNew", "1/1", "", "  "},      {"cmndAdd", "3/3", "", "  ", 2},
        {"cmndAdd", "4/4", "a4", "C "},    {"cmndAdd", "100/100", "", "  ", 120},
        {"cmndDel", "1/1", "", "  ", 120},
    };
    for (const auto& [button, number, answer, code, times] : steps) {
        Press(button, times);
        EXPECT_EQ(Text("lblNumber") + Text("txtAnsver(2)") + Text("cmbAling(2)").substr(0, 2),
                  std::string(number) + answer + code)
            << button;
    }
}

// Nothing of what nobody edits changes, but where the focus has been in a list or a box has been emptied by
// what it was made to show.
TEST_F(Editor, SavesWhatNobodyEditsAsItWas) {
    const std::string text =
        "[HEAD]\r\nitems=2\r\n[QUESTION_001]\r\nquestion=Quoi\xC2\xA0? a\xE2\x80\xA8"
        "b\xE2\x80\xA9"
        "c\r\nansvertext_1=[QUESTION_002] a=b\r\nansvervalue_1=XX\r\nansvervalue_2=";
    Put(Folder / "user" / "quiz.ini", text + "YY\r\n");
    Press("cmndAdd");
    Name("quiz.ini");
    Press("cmndOpen");
    EXPECT_EQ(Text("lblNumber"), "1/2");
    EXPECT_EQ(Text("cmbAling(1)"), "    Illegal value!");
    robot::Wheel(kForm, "cmbAling(1)", -1);
    EXPECT_TRUE(Saved("quiz.ini").starts_with(text + "YY\r\n"));
    for (const char* key : {"Alt+2", "Tab", "Tab"}) robot::Key(kForm, key);
    EXPECT_TRUE(Saved("quiz.ini").starts_with(text + "\r\n"));
}

TEST_F(Editor, StoresTheEmptyTextWhereShowingASlotEmptiesABox) {
    Press("cmndAdd", 2);
    Enter(kForm, "Alt+2", "two");
    Press("cmndPrev");
    EXPECT_NE(Saved().find("[QUESTION_002]\r\nansvertext_2=\r\n[QUESTION_003]\r\nansvertext_2=two"),
              std::string::npos);
}

TEST_F(Editor, ShowsNoCountForAFileThatIsMissingAndForgetsWhatWasNotSaved) {
    Enter(kForm, "Alt+Q", "Still here");
    Name("d:\\none\\missing.ini");
    for (const char* button : {"cmndOpen", "cmndNext", "cmndLast"}) {
        Press(button);
        EXPECT_EQ(Text("lblNumber") + Text("txtQuestion"), "1/0Still here");
    }
    robot::Click("frmAling", "Command1");
    EXPECT_EQ(Text("txtQuestion"), "Still here");
    robot::DesktopCloses(kForm);
    EXPECT_FALSE(robot::Shown(kForm));
    robot::Click("frmAling", "Command1");
    EXPECT_EQ(Text("lblNumber") + Text("txtQuestion"), "1/1");
}

}  // namespace
