// What a window may rely on, shown on a form of the test's own.

#include "platform/controls.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/application.h"
#include "platform/form.h"
#include "support/robot.h"

using namespace platform;

namespace {

struct Loading : Form {
    Loading() : Form("Loading", "Loading", 100, 100, FormFrame::None) {}
    void Form_Load() override {
        ++Loads;
        Inner = &TheForm<Loading>();
        TheForm<Loading>().Hide();
    }
    static inline int Loads = 0;
    Form* Inner = nullptr;
};

TEST(FormReference, LoadsOnceAlsoFromInside) {
    EXPECT_FALSE(IsLoaded<Loading>());
    Loading& form = TheForm<Loading>();
    EXPECT_EQ(&TheForm<Loading>(), &form);
    EXPECT_EQ(form.Inner, &form);
    EXPECT_EQ(Loading::Loads, 1);
    EXPECT_FALSE(form.Visible());
    UnloadForm<Loading>();
    EXPECT_FALSE(IsLoaded<Loading>());
}

// A window whose place is not set comes up where there is room beside the others.
TEST(FormPlace, IsWhereNoOtherWindowIs) {
    Form centred("Centred", "Centred", 300, 250, FormFrame::None);
    Form first("First", "First", 200, 250, FormFrame::None);
    Form second("Second", "Second", 350, 200, FormFrame::Dialog);
    centred.Centre();
    std::vector<Rect> places;
    for (Form* form : {&centred, &first, &second}) {
        form->Show();
        places.push_back(robot::Bounds(form == &centred ? "Centred" : form == &first ? "First" : "Second"));
        const Rect& at = places.back();
        EXPECT_TRUE(at.Left >= 0 && at.Top >= 0 && at.Left + at.Width <= 800 && at.Top + at.Height <= 800);
        for (std::size_t i = 0; i + 1 < places.size(); ++i) {
            const Rect& other = places[i];
            EXPECT_TRUE(at.Left >= other.Left + other.Width || other.Left >= at.Left + at.Width ||
                        at.Top >= other.Top + other.Height || other.Top >= at.Top + at.Height);
        }
    }
}

class Controls : public testing::Test {
 protected:
    Form form{"Test", "Test", 300, 200, FormFrame::None};
    std::vector<std::string> events;
    auto Note(std::string event) {
        return [this, event] { events.push_back(event); };
    }
    auto NoteAt(std::string event) {
        return [this, event](int x, int y) {
            events.push_back(event + " " + std::to_string(x) + "," + std::to_string(y));
        };
    }
    std::vector<std::string> Events() { return std::exchange(events, {}); }
    using Strings = std::vector<std::string>;
};

TEST_F(Controls, ALabelThatGotThePressGetsTheRest) {
    Label label(form, "label", {10, 10, 50, 20}, {});
    Label silent(form, "silent", {100, 10, 50, 20}, {});
    Shape shape(form, "shape", {10, 10, 50, 20}, {}, 1);
    form.MouseMove = NoteAt("form");
    label.MouseDown = NoteAt("down");
    label.MouseMove = NoteAt("move");
    label.MouseUp = NoteAt("up");
    label.Click = Note("click");
    form.Show();
    robot::Move("Test", {12, 13});
    EXPECT_EQ(Events(), Strings{"move 2,3"});
    robot::Press("Test", {12, 13});
    robot::Move("Test", {110, 100});
    robot::Release("Test", {110, 100});
    EXPECT_EQ(Events(), (Strings{"down 2,3", "move 100,90", "up 100,90"}));
    robot::Move("Test", {12, 13});
    Events();
    robot::Press("Test", {12, 13}, robot::Button::Middle);
    robot::Release("Test", {12, 13}, robot::Button::Middle);
    EXPECT_EQ(Events(), (Strings{"down 2,3", "up 2,3", "click"}));
    robot::DoubleClick("Test", "label");
    EXPECT_EQ(std::ranges::count(Events(), "click"), 2);
    // A second button has no part in a press, and a press ends with the window.
    robot::Move("Test", {12, 13});
    Events();
    robot::Press("Test", {12, 13});
    robot::Press("Test", {12, 13}, robot::Button::Right);
    robot::Release("Test", {12, 13}, robot::Button::Right);
    EXPECT_EQ(Events(), Strings{"down 2,3"});
    form.Hide();
    EXPECT_EQ(Events(), Strings{"up 0,0"});
    form.Show();
    robot::Release("Test", {12, 13});
    Events();
    // A control without handlers ends an event, the form's own background has it.
    robot::Hover("Test", "silent");
    EXPECT_TRUE(Events().empty());
    robot::Move("Test", {200, 150});
    EXPECT_EQ(Events(), Strings{"form 200,150"});
}

TEST_F(Controls, ACaptionHasAtMostOneAccessKey) {
    Label label(form, "label", {0, 0, 100, 20}, {});
    TextBox hidden(form, "ignored", {0, 20, 100, 20}, {.TabStop = false});
    TextBox other(form, "other", {0, 40, 100, 20}, {});
    label.SetCaption("&1.) Rest & be &thankful");
    EXPECT_EQ(robot::Text("Test", "label"), "1.) Rest & be &thankful");
    form.Show();
    robot::Click("Test", "other");
    robot::Key("Test", "Alt+1");
    EXPECT_EQ(robot::Focus("Test"), "ignored");
    // A letter that is no access key is typed no more than one that is.
    robot::Key("Test", "Alt+X");
    EXPECT_EQ(hidden.Text(), "");
    label.SetCaption("Bread && &Butter");
    EXPECT_EQ(robot::Text("Test", "label"), "Bread && Butter");
    EXPECT_EQ(label.Caption(), "Bread && &Butter");
}

TEST_F(Controls, ATextKeepsItsLineBreaksAndTellsItsChanges) {
    TextBox box(form, "box", {0, 0, 100, 100}, {.MultiLine = true});
    TextBox line(form, "line", {0, 100, 100, 20}, {});
    box.Change = Note("box");
    line.Change = Note("line");
    box.SetText("one\r\ntwo\r\n");
    line.SetText("1");
    EXPECT_EQ(Events(), (Strings{"box", "line"}));
    form.Show();
    robot::Click("Test", "box");
    robot::Key("Test", "Ctrl+End");
    robot::Type("Test", "3");
    robot::Key("Test", "Return");
    EXPECT_EQ(box.Text(), "one\r\ntwo\r\n3\r\n");
    EXPECT_EQ(Events(), (Strings{"box", "box"}));
    robot::Key("Test", "Ctrl+A");
    robot::Key("Test", "Ctrl+C");
    EXPECT_EQ(robot::Clipboard(), "one\r\ntwo\r\n3\r\n");
}

TEST_F(Controls, ALineStaysALineAndAnUndoStaysWithinATextThatWasSet) {
    TextBox line(form, "line", {0, 0, 100, 20}, {});
    TextBox area(form, "area", {0, 20, 100, 60}, {.MultiLine = true});
    form.Show();
    robot::Click("Test", "line");
    robot::Paste("Test",
                 "one\n[two]\r\nthree\xE2\x80\xA8"
                 "four");
    EXPECT_EQ(line.Text(), "one [two]  three four");
    const std::string odd = "Quoi\xC2\xA0? \xF0\x9D\x84\x9E";
    area.SetText(odd);
    EXPECT_EQ(area.Text(), odd);
    robot::Click("Test", "area");
    robot::Key("Test", "Ctrl+A");
    robot::Key("Test", "Ctrl+C");
    EXPECT_EQ(robot::Clipboard(), odd);
    for (TextBox* box : {&line, &area}) {
        box->SetText("first");
        robot::Click("Test", box == &line ? "line" : "area");
        robot::Type("Test", "x");
        box->SetText(box->Text());
        const std::string shown = box->Text();
        robot::Key("Test", "Ctrl+Z");
        EXPECT_EQ(box->Text(), shown);
    }
}

TEST_F(Controls, ABoxTakesNoMoreThanItIsFor) {
    TextBox three(form, "three", {0, 0, 100, 20}, {.MaxLength = 3});
    TextBox line(form, "line", {0, 20, 100, 20}, {});
    TextBox area(form, "area", {0, 40, 100, 60}, {.MultiLine = true});
    form.Show();
    const auto replace = [](const char* box, const std::string& pasted) {
        robot::Click("Test", box);
        robot::Key("Test", "Ctrl+A");
        robot::Paste("Test", pasted);
    };
    replace("three", "12\xF0\x9D\x84\x9E");  // of which the last takes two units
    robot::Type("Test", "345");
    EXPECT_EQ(three.Text(), "123");
    three.SetText("1000000");
    robot::Type("Test", "2");
    EXPECT_EQ(three.Text(), "1000000");
    replace("line", std::string(10'000'000, '7'));
    robot::Type("Test", "8");
    EXPECT_EQ(line.Text(), std::string(64 * 1024, '7'));
    replace("area", std::string(10'000'000, 'a'));
    EXPECT_EQ(area.Text(), std::string(1024 * 1024, 'a'));
    replace("area", std::string(1'000'000, '\r'));
    EXPECT_EQ(std::ranges::count(area.Text(), '\n'), 64 * 1024 - 1);
}

TEST_F(Controls, AListTellsItsOpeningKeysAndChoices) {
    DropDownList list(form, "list", {0, 0, 100, 20});
    for (const char* entry : {"Male", "Female", "Other"}) list.AddItem(entry);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.Text(), "");
    list.Click = [this, &list] { events.push_back("click " + list.Text()); };
    list.KeyPress = Note("key");
    list.DropDown = Note("open");
    list.SetListIndex(0);
    list.SetListIndex(0);
    EXPECT_EQ(Events(), (Strings{"click Male", "click Male"}));
    form.Show();
    robot::Choose("Test", "list", 2);
    EXPECT_EQ(Events(), (Strings{"open", "click Other"}));
    robot::Key("Test", "F");
    EXPECT_EQ(Events(), (Strings{"key", "click Female"}));
    robot::Key("Test", "Up");
    EXPECT_EQ(Events(), Strings{"click Male"});
    robot::Key("Test", "Alt+F");
    EXPECT_TRUE(Events().empty());
    robot::OpenList("Test", "list");
    robot::KeyInOpenList("Test", "list", "O");
    robot::KeyInOpenList("Test", "list", "Return");
    EXPECT_EQ(Events(), (Strings{"open", "key", "key", "click Other"}));
}

TEST_F(Controls, TheFocusAsksBeforeItGoesAndTellsThatItWent) {
    TextBox first(form, "first", {0, 0, 100, 20}, {});
    PushButton button(form, "button", {0, 30, 100, 20}, "&Save");
    bool letGo = false;
    first.Validate = [&] { return letGo; };
    first.LostFocus = Note("lost");
    button.Click = Note("saved");
    form.Show();
    robot::Click("Test", "button");
    robot::Key("Test", "Alt+S");
    EXPECT_TRUE(Events().empty());
    letGo = true;
    robot::Key("Test", "Alt+S");
    EXPECT_EQ(Events(), (Strings{"lost", "saved"}));
    robot::Click("Test", "button");
    EXPECT_EQ(Events(), Strings{"saved"});
}

TEST_F(Controls, TheFocusIsHeldBackAndToldAlsoWhereNoUserMovedIt) {
    TextBox first(form, "first", {0, 0, 100, 20}, {});
    DropDownList second(form, "second", {0, 30, 100, 20});
    bool letGo = false;
    first.Validate = [&] { return letGo; };
    first.LostFocus = Note("lost");
    second.LostFocus = Note("lost second");
    Form other("Other", "Other", 100, 100, FormFrame::None);
    other.Show();
    form.Show();
    robot::TurnTo("Test");
    robot::FocusByAssistant("Test", "second");
    EXPECT_EQ(robot::Focus("Test"), "first");
    robot::TurnTo("Other");
    robot::FocusByAssistant("Test", "second");
    robot::TurnTo("Test");
    EXPECT_EQ(robot::Focus("Test"), "first");
    EXPECT_TRUE(Events().empty());
    letGo = true;
    robot::TurnTo("Other");
    EXPECT_TRUE(Events().empty());
    robot::FocusByAssistant("Test", "second");
    robot::TurnTo("Test");
    EXPECT_EQ(robot::Focus("Test"), "second");
    EXPECT_EQ(Events(), Strings{"lost"});
}

}  // namespace
