#include "alignment/frmEditQuestions.h"

#include "alignment/frmAling.h"
#include "alignment/modIni.h"
#include "platform/places.h"
#include "platform/profile_fixture.h"
#include "support/robot.h"
#include "support/sounds.h"

using namespace orvane;
using platform::TheForm;

namespace {

constexpr std::string_view kForm = "frmEditQuestions";

class Editor : public FolderTest {
 protected:
    Editor() {
        platform::SetPlaces({Folder / "user", Folder / "program"});
        TheForm<frmAling>().Show();
        robot::Click("frmAling", "Command1");
        listener.Heard();
    }
    ~Editor() override {
        platform::UnloadForm<frmEditQuestions>();
        platform::UnloadForm<frmAling>();
        platform::SetPlaces();
    }

    static void Press(std::string_view button) { robot::Click(kForm, button); }
    static std::string Text(std::string_view control) { return robot::Text(kForm, control); }
    static void Enter(std::string_view control, std::string_view text) {
        robot::Click(kForm, control);
        robot::Key(kForm, "Ctrl+A");
        robot::Key(kForm, "Backspace");
        robot::Type(kForm, text);
    }
    std::string Saved(std::string_view section, std::string_view key) {
        return IniRead(section, key, "c:\\questions.ini");
    }

    Listener listener;
};

TEST_F(Editor, StoresTextsAtOnceAndCodesWhenTheFocusGoes) {
    EXPECT_EQ(Text("lblNumber"), "1/1");
    EXPECT_EQ(Text("cmbAling(4)"), "    Illegal value!");
    Enter("txtQuestion", "Who?");
    robot::Key(kForm, "Return");
    robot::Type(kForm, "line=2");
    Enter("txtAnsver(1)", "Me");
    robot::Choose(kForm, "cmbAling(1)", 5);
    EXPECT_EQ(Text("cmbAling(1)"), "LG  Lawfull Good");
    Press("cmndSave");
    EXPECT_EQ(Saved("HEAD", "items"), "1");
    EXPECT_EQ(Saved("QUESTION_001", "question"), "Who?");
    EXPECT_EQ(Saved("QUESTION_001", "ansvertext_1"), "Me");
    EXPECT_EQ(Saved("QUESTION_001", "ansvervalue_1"), "LG");
    // By its access key as well.
    robot::Choose(kForm, "cmbAling(1)", 8);
    robot::Key(kForm, "Alt+S");
    EXPECT_EQ(Saved("QUESTION_001", "ansvervalue_1"), "CE");
    EXPECT_TRUE(listener.Heard().empty());
}

TEST_F(Editor, WalksAndCutsAndGrowsTheList) {
    for (int i = 1; i <= 5; ++i) {
        if (i > 1) Press("cmndAdd");
        Enter("txtAnsver(2)", "a" + std::to_string(i));
    }
    EXPECT_EQ(Text("lblNumber"), "5/5");
    Press("cmndNext");
    EXPECT_EQ(Text("lblNumber"), "5/5");
    Press("cmndPrev");
    EXPECT_EQ(Text("lblNumber"), "4/5");
    EXPECT_EQ(Text("txtAnsver(2)"), "a4");
    Press("cmndFirst");
    Press("cmndPrev");
    EXPECT_EQ(Text("lblNumber"), "1/5");
    Press("cmndLast");
    EXPECT_EQ(Text("lblNumber"), "5/5");
    Press("cmndDel");
    Press("cmndDel");
    EXPECT_EQ(Text("lblNumber"), "3/3");
    Press("cmndNew");
    EXPECT_EQ(Text("lblNumber"), "1/1");
    const char* const texts[] = {"", "", "a4", "a5"};
    for (const char* text : texts) {
        Press("cmndAdd");
        EXPECT_EQ(Text("txtAnsver(2)"), text);
    }
    for (int i = 0; i < 120; ++i) Press("cmndAdd");
    EXPECT_EQ(Text("lblNumber"), "100/100");
    for (int i = 0; i < 120; ++i) Press("cmndDel");
    EXPECT_EQ(Text("lblNumber"), "1/1");
}

TEST_F(Editor, KeepsACodeThatItDoesNotKnowUntilTheFocusHasBeenThere) {
    Put(Folder / "user" / "quiz.ini",
        "[HEAD]\r\nitems=1\r\n[QUESTION_001]\r\nansvervalue_1=XX\r\nansvervalue_2=YY\r\n");
    Enter("txtFile", "quiz.ini");
    Press("cmndOpen");
    EXPECT_EQ(Text("cmbAling(1)"), "    Illegal value!");
    robot::Key(kForm, "Alt+2");
    robot::Key(kForm, "Tab");
    robot::Key(kForm, "Tab");
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
    Put(Folder / "user" / "quiz.ini", text);
    Enter("txtFile", "quiz.ini");
    Press("cmndOpen");
    robot::Wheel(kForm, "cmbAling(1)", -1);
    EXPECT_EQ(Text("cmbAling(1)"), "L   Lawfull");
    Press("cmndSave");
    EXPECT_TRUE(BytesOf(Folder / "user" / "quiz.ini").starts_with(text))
        << BytesOf(Folder / "user" / "quiz.ini");
}

TEST_F(Editor, ShowsNoCountForAFileThatIsMissing) {
    Enter("txtQuestion", "Still here");
    Enter("txtFile", "d:\\none\\missing.ini");
    Press("cmndOpen");
    EXPECT_EQ(Text("lblNumber"), "1/0");
    EXPECT_EQ(Text("txtQuestion"), "Still here");
    Press("cmndNext");
    Press("cmndLast");
    EXPECT_EQ(Text("lblNumber"), "1/0");
    Press("cmndSave");
    EXPECT_EQ(IniRead("HEAD", "items", "d:\\none\\missing.ini"), "0");
}

TEST_F(Editor, ForgetsWhatWasNotSavedWhenItCloses) {
    Enter("txtQuestion", "Gone");
    robot::Click("frmAling", "Command1");
    EXPECT_EQ(Text("txtQuestion"), "Gone");
    robot::DesktopCloses(kForm);
    EXPECT_FALSE(robot::Shown(kForm));
    EXPECT_FALSE(platform::IsLoaded<frmEditQuestions>());
    robot::Click("frmAling", "Command1");
    EXPECT_EQ(Text("txtQuestion"), "");
    EXPECT_EQ(Text("lblNumber"), "1/1");
}

TEST_F(Editor, KeepsItsTabOrder) {
    robot::Key(kForm, "Alt+Q");
    EXPECT_EQ(robot::Focus(kForm), "txtQuestion");
    for (const char* next :
         {"txtAnsver(1)", "cmbAling(1)", "txtAnsver(2)", "cmbAling(2)", "txtAnsver(3)", "cmbAling(3)",
          "txtAnsver(4)", "cmbAling(4)", "cmndFirst", "cmndPrev", "cmndDel", "cmndAdd", "cmndNext",
          "cmndLast", "txtFile", "cmndOpen", "cmndSave", "cmndNew", "txtQuestion"}) {
        robot::Key(kForm, "Tab");
        EXPECT_EQ(robot::Focus(kForm), next);
    }
}

}  // namespace
