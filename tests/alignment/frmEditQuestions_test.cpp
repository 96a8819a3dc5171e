#include "support/window_test.h"

using namespace orvane;

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
    std::string Saved() {
        Press("cmndSave");
        return BytesOf(File);
    }

    const Path File = User / "questions.ini";
};

TEST_F(Editor, StoresTextsAtOnceAndCodesWhenTheFocusGoes) {
    Enter(kForm, "Alt+Q", "Who?");
    robot::Key(kForm, "Return");
    robot::Type(kForm, "line=2");
    Enter(kForm, "Alt+1", "Me");
    robot::Choose(kForm, "cmbAling(1)", 5);
    // What was never entered has no key.
    EXPECT_EQ(Saved(),
              "[HEAD]\r\nitems=1\r\n[QUESTION_001]\r\nquestion=Who?\r\nline=2\r\nansvertext_1=Me\r\n"
              "ansvervalue_1=LG\r\n");
    // Where showing a slot empties a box, that is stored.
    Press("cmndAdd");
    EXPECT_NE(Saved().find("[QUESTION_002]\r\nquestion=\r\nansvertext_1=\r\n"), std::string::npos);
    Press("cmndDel");
    EXPECT_NE(Saved().find("items=1\r\n"), std::string::npos);
    EXPECT_NE(BytesOf(File).find("[QUESTION_002]\r\n"), std::string::npos);
    // By its access key as well.
    robot::Choose(kForm, "cmbAling(1)", 8);
    robot::Key(kForm, "Alt+S");
    EXPECT_NE(BytesOf(File).find("ansvervalue_1=CE\r\n"), std::string::npos);
}

TEST_F(Editor, WalksAndCutsAndGrowsTheList) {
    for (int i = 1; i <= 5; ++i) {
        if (i > 1) Press("cmndAdd");
        Enter(kForm, "Alt+2", "a" + std::to_string(i));
        robot::Choose(kForm, "cmbAling(2)", i);
    }
    const std::tuple<const char*, int, const char*> steps[] = {
        {"cmndNext", 1, "5/5 a5 LG"},    {"cmndPrev", 1, "4/5 a4 C "}, {"cmndFirst", 1, "1/5 a1 G "},
        {"cmndPrev", 1, "1/5 a1 G "},    {"cmndLast", 1, "5/5 a5 LG"}, {"cmndDel", 2, "3/3 a3 L "},
        {"cmndNew", 1, "1/1    "},       {"cmndAdd", 2, "3/3    "},    {"cmndAdd", 1, "4/4 a4 C "},
        {"cmndAdd", 120, "100/100    "}, {"cmndDel", 120, "1/1    "},
    };
    for (const auto& [button, times, shown] : steps) {
        Press(button, times);
        EXPECT_EQ(Text("lblNumber") + " " + Text("txtAnsver(2)") + " " + Text("cmbAling(2)").substr(0, 2),
                  shown)
            << button;
    }
}

TEST_F(Editor, SavesWhatNobodyEditsAsItWasUnlessTheFocusHasBeenInAList) {
    const std::string text =
        "[HEAD]\r\nitems=2\r\n[QUESTION_001]\r\nquestion=Quoi\xC2\xA0? a\xE2\x80\xA8"
        "b\xE2\x80\xA9"
        "c\r\nansvertext_1=[QUESTION_002] a=b\r\nansvervalue_1=XX\r\nansvervalue_2=";
    Put(File, text + "YY\r\n");
    Press("cmndAdd");
    Press("cmndOpen");
    EXPECT_EQ(Text("lblNumber"), "1/2");
    EXPECT_EQ(Text("cmbAling(1)"), "    Illegal value!");
    robot::Wheel(kForm, "cmbAling(1)", -1);
    EXPECT_TRUE(Saved().starts_with(text + "YY\r\n"));
    for (const char* key : {"Alt+2", "Tab", "Tab"}) robot::Key(kForm, key);
    EXPECT_TRUE(Saved().starts_with(text + "\r\n"));
}

TEST_F(Editor, ShowsNoCountForAFileThatIsMissingAndForgetsWhatWasNotSaved) {
    Enter(kForm, "Alt+Q", "Still here");
    Press("cmndAdd");
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
