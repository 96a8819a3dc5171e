// What a window may rely on, shown on a form of the test's own.

#include "platform/controls.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/form.h"
#include "support/robot.h"

using namespace platform;

class Controls : public testing::Test {
 protected:
    using Strings = std::vector<std::string>;
    // An event, with the place of the pointer if that is told.
    auto Note(std::string event) {
        return [this, event](auto... at) {
            events.push_back((event + ... + (" " + std::to_string(static_cast<int>(at)))));
        };
    }
    Strings Events() { return std::exchange(events, {}); }

    Form form{"Test", "Test", 300, 200, FormFrame::None};
    Strings events;
};

TEST_F(Controls, AFormComesUpWhereNoOtherIs) {
    Form large("Large", "Large", 350, 250, FormFrame::Dialog);
    Form small("Small", "Small", 200, 200, FormFrame::None);
    form.Centre();
    for (Form* next : {&form, &large, &small}) next->Show();
    EXPECT_EQ(robot::Bounds("Test").Left, 250);
    EXPECT_EQ(robot::Bounds("Test").Top, 300);
    const auto meet = [](std::string_view one, std::string_view other) {
        const Rect a = robot::Bounds(one), b = robot::Bounds(other);
        return a.Left < b.Left + b.Width && b.Left < a.Left + a.Width && a.Top < b.Top + b.Height &&
               b.Top < a.Top + a.Height;
    };
    EXPECT_FALSE(meet("Test", "Large") || meet("Test", "Small") || meet("Large", "Small"));
}

TEST_F(Controls, ALabelThatGotThePressGetsTheRest) {
    // At places that are whole on a screen of any density.
    Label label(form, "label", {8, 8, 52, 20}, {});
    CheckBox silent(form, "silent", {100, 8, 52, 20}, "");
    form.MouseMove = Note("form");
    label.MouseDown = Note("down");
    label.MouseMove = Note("move");
    label.MouseUp = Note("up");
    label.Click = Note("click");
    form.Show();
    robot::Move("Test", {12, 16});
    robot::Press("Test", {12, 16});
    robot::Move("Test", {108, 100});
    robot::Release("Test", {108, 100});
    EXPECT_EQ(Events(), (Strings{"move 4 8", "down 4 8", "move 100 92", "up 100 92"}));
    robot::Move("Test", {12, 16});
    robot::Press("Test", {12, 16}, robot::Button::Middle);
    robot::Press("Test", {12, 16}, robot::Button::Right);
    robot::Release("Test", {12, 16}, robot::Button::Right);
    robot::Release("Test", {12, 16}, robot::Button::Middle);
    EXPECT_EQ(Events(), (Strings{"move 4 8", "down 4 8", "up 4 8", "click"}));
    robot::DoubleClick("Test", "label");
    EXPECT_EQ(std::ranges::count(Events(), "click"), 2);
    robot::Press("Test", {12, 16});
    form.Hide();
    EXPECT_EQ(Events().back(), "up 0 0");
    form.Show();
    robot::Release("Test", {12, 16});
    // A control without handlers ends an event, the form's own background has it.
    robot::Hover("Test", "silent");
    robot::Move("Test", {200, 152});
    EXPECT_EQ(Events(), Strings{"form 200 152"});
}

TEST_F(Controls, ATextIsEnteredAndToldAsItStands) {
    Label label(form, "label", {0, 0, 100, 20}, {});
    TextBox line(form, "line", {0, 20, 100, 20}, {.TabStop = false});
    TextBox area(form, "area", {0, 40, 100, 60}, {.MultiLine = true});
    TextBox small(form, "small", {0, 100, 100, 20}, {.MaxLength = 3});
    label.SetCaption("Rest && &1.) be &thankful &");
    EXPECT_EQ(robot::Text("Test", "label"), "Rest && 1.) be &thankful &");
    line.Change = Note("line");
    area.Change = Note("area");
    form.Show();
    robot::Click("Test", "area");
    robot::Key("Test", "Alt+1");
    EXPECT_EQ(robot::Focus("Test"), "line");
    robot::Key("Test", "Alt+X");
    EXPECT_EQ(Events(), Strings());
    robot::Paste("Test", "one\n[two]\r\nthree\xE2\x80\xA8");
    EXPECT_EQ(line.Text(), "one [two]  three ");
    robot::Key("Test", "Ctrl+Backspace");
    EXPECT_EQ(line.Text(), "one [two]  ");
    area.SetText("Quoi\xC2\xA0? \xF0\x9D\x84\x9E\r\n");
    EXPECT_EQ(Events(), (Strings{"line", "line", "area"}));
    robot::Key("Test", "Tab");
    robot::Key("Test", "Ctrl+End");
    robot::Type("Test", "3");
    robot::Key("Test", "Return");
    EXPECT_EQ(area.Text(), "Quoi\xC2\xA0? \xF0\x9D\x84\x9E\r\n3\r\n");
    robot::Key("Test", "Ctrl+Backspace");
    EXPECT_TRUE(area.Text().ends_with("\r\n3"));
    robot::Key("Test", "Ctrl+A");
    robot::Key("Test", "Ctrl+C");
    EXPECT_EQ(robot::Clipboard(), area.Text());
    std::string huge;
    while (huge.size() < 3 << 20) huge += "Each of these lines is as long as one of a question.\n";
    for (const auto& [name, box, least] : {std::tuple{"line", &line, 8'000U}, {"area", &area, 128'000U}}) {
        // An undo does not go back behind a text that was set.
        robot::Click("Test", name);
        robot::Type("Test", "x");
        const std::string shown = box->Text();
        Events();
        box->SetText(shown);
        EXPECT_EQ(Events(), Strings()) << "no change";
        robot::Key("Test", "Ctrl+Z");
        EXPECT_EQ(box->Text(), shown);
        robot::Paste("Test", huge);
        EXPECT_TRUE(box->Text().size() > least && box->Text().size() < 2 << 20) << box->Text().size();
    }
    for (int i = 0; i < 2; ++i) {
        robot::Key("Test", "Ctrl+A");
        robot::Paste("Test", std::string(9'000, 'm'));
        EXPECT_GT(area.Text().size(), 4'000U);
    }
    small.SetText("12");
    for (const char* key : {"Tab", "End"}) robot::Key("Test", key);
    robot::Paste("Test", "345");
    EXPECT_EQ(small.Text(), "123");
}

TEST_F(Controls, AListTellsItsOpeningKeysAndChoices) {
    DropDownList list(form, "list", {0, 0, 100, 20});
    for (const char* entry : {"Male", "Female", "Other"}) list.AddItem(entry);
    EXPECT_EQ(list.ListIndex(), -1);
    list.Click = [this, &list] { events.push_back("click " + list.Text()); };
    list.KeyPress = Note("key");
    list.DropDown = Note("open");
    list.SetListIndex(0);
    list.SetListIndex(0);
    EXPECT_EQ(Events(), (Strings{"click Male", "click Male"}));
    form.Show();
    robot::Choose("Test", "list", 2);
    EXPECT_EQ(Events(), (Strings{"open", "click Other"}));
    for (const char* key : {"F", "Up", "Alt+O"}) robot::Key("Test", key);
    EXPECT_EQ(Events(), (Strings{"key", "click Female", "click Male"}));
    robot::OpenList("Test", "list");
    for (const char* key : {"O", "Return"}) robot::Key("Test", key);
    const Strings told = Events();
    EXPECT_EQ(std::ranges::count(told, "key"), 2);
    EXPECT_EQ(std::ranges::count(told, "click Other"), 1);
}

TEST_F(Controls, TheFocusAsksBeforeItGoesAndTellsThatItWent) {
    TextBox first(form, "first", {0, 0, 100, 20}, {});
    DropDownList second(form, "second", {0, 30, 100, 20});
    second.AddItem("entry");
    PushButton button(form, "button", {0, 60, 100, 20}, "&Save");
    bool letGo = false;
    first.Validate = [&] { return letGo; };
    first.LostFocus = Note("lost");
    button.Click = Note("saved");
    Form other("Other", "Other", 100, 100, FormFrame::None);
    other.Show();
    form.Show();
    robot::TurnTo("Test");
    robot::Wheel("Test", "second", -1);
    EXPECT_EQ(second.ListIndex(), -1);
    robot::Click("Test", "button");
    robot::Key("Test", "Alt+S");
    robot::FocusByAssistant("Test", "second");
    // Where nobody has the window before the eyes it is held back when the desktop turns to it.
    robot::TurnTo("Other");
    robot::FocusByAssistant("Test", "second");
    robot::TurnTo("Test");
    EXPECT_EQ(robot::Focus("Test"), "first");
    EXPECT_EQ(Events(), Strings());
    letGo = true;
    robot::Key("Test", "Alt+S");
    EXPECT_EQ(Events(), (Strings{"lost", "saved"}));
    robot::Click("Test", "button");
    for (const char* key : {"Return", "Space", "Shift+Tab"}) robot::Key("Test", key);
    EXPECT_EQ(Events(), (Strings{"saved", "saved", "saved"}));
    EXPECT_EQ(robot::Focus("Test"), "second");
}
