#include <algorithm>
#include <cmath>

#include "support/window_test.h"

using namespace orvane;

namespace {

constexpr std::string_view kForm = "frmAling";

class Meter : public WindowTest {
 protected:
    using Pixels = std::vector<platform::Color>;

    // A questionnaire in which each question offers the same four codes.
    void Ask(int count, const Strings& codes) {
        std::string text = "[HEAD]\r\nitems=" + std::to_string(count) + "\r\n";
        for (int i = 1; i <= count; ++i) {
            const std::string number = std::to_string(i);
            text += "[QUESTION_00" + number + "]\r\nquestion=Why " + number + "?\r\n";
            for (std::size_t j = 0; j < codes.size(); ++j) {
                const std::string answer = std::to_string(j + 1);
                text += "ansvertext_" + answer + "=Since " + answer + " & so\r\nansvervalue_" + answer + "=" +
                        codes[j] + "\r\n";
            }
        }
        Put(Folder / "program" / "questions.ini", text);
        Show<frmAling>();
        bare_ = Picture();
    }

    static void Answer(int index) { robot::Click(kForm, ControlName("lblInput", index).Text()); }
    static std::string Question() { return robot::Text(kForm, "txtQuestion"); }
    static std::string Result() { return robot::Text(kForm, "Label6"); }
    static Pixels Picture() { return robot::Pixels(kForm, {288, 48, 200, 200}); }

    // Exactly the pixels of the given boxes are turned round, and those near the pointer are left out.
    void ExpectTurned(const std::vector<platform::Rect>& boxes, robot::Point pointer) const {
        const auto now = Picture();
        for (int y = 0; y < 200; ++y) {
            for (int x = 0; x < 200; ++x) {
                if (NearPointer(x, y, pointer)) continue;
                const auto at = static_cast<std::size_t>(y * 200 + x);
                platform::Color wanted = bare_[at];
                if (std::ranges::any_of(boxes, [&](const platform::Rect& box) {
                        return x >= box.Left && x < box.Left + box.Width && y >= box.Top &&
                               y < box.Top + box.Height;
                    })) {
                    wanted.Red ^= 255;
                    wanted.Green ^= 255;
                    wanted.Blue ^= 223;
                }
                ASSERT_EQ(now[at], wanted) << x << "," << y;
            }
        }
    }

    // Within 4 pixels of the line from the short end of the pointer, 5 pixels from the centre, to the long
    // one.
    static bool NearPointer(int x, int y, robot::Point direction) {
        const double length = std::hypot(direction.X, direction.Y), dx = x - 100, dy = y - 100;
        if (length == 0) return std::hypot(dx, dy) < 4;
        const double along = (dx * direction.X + dy * direction.Y) / length;
        const double aside = (dx * direction.Y - dy * direction.X) / length;
        return along > -9 && along < 54 && std::abs(aside) < 4;
    }

    Pixels bare_;
};

TEST_F(Meter, AsksEachQuestionOnceAndStandsStill) {
    Ask(2, {"LG", "C", "NUL", "CE"});
    EXPECT_EQ(listener.Heard(), Strings{"theme2.wav"});
    EXPECT_EQ(Question(), "1 of 2\r\nWhy 1?");
    EXPECT_EQ(robot::Text(kForm, "lblInput(2)"), "2.) Since 2 & so");
    EXPECT_EQ(Result(), "Result :");
    for (const auto& [answer, result] : {std::pair{1, "Lawfull Good"}, {4, "True Neutral"}}) {
        Answer(answer);
        EXPECT_EQ(Question(), "2 of 2\r\nWhy 2?");
        EXPECT_EQ(Result(), std::string("Result : ") + result);
        EXPECT_EQ(listener.Heard(), Strings{"click.wav"});
    }
    Answer(1);
    EXPECT_TRUE(listener.Heard().empty());
    robot::Click(kForm, "Cmnd(3)");
    Show<frmAling>();
    EXPECT_EQ(Result(), "Result : True Neutral");
}

TEST_F(Meter, TurnsThePixelsOfTheBarsAndNoOthers) {
    Ask(9, {"L", "G", "GEN", "C"});
    Answer(1);
    ExpectTurned({{20, 90, 69, 21}}, {-1, 0});
    constexpr platform::Color kInk{255, 255, 223};
    for (const auto& [x, inked] : {std::pair{52, true}, {103, true}, {44, false}})
        EXPECT_EQ(Picture()[static_cast<std::size_t>(100 * 200 + x)] == kInk, inked) << x;
    Answer(2);
    ExpectTurned({{20, 90, 69, 21}, {90, 20, 21, 69}}, {-1, -1});
    Answer(1);
    // Good stands at half of Law: from y = 88 up to 54.
    ExpectTurned({{20, 90, 69, 21}, {90, 54, 21, 35}}, {-2, -1});
}

TEST_F(Meter, DrawsANegativeScoreTheOtherWay) {
    Ask(3, {"GEN", "LCN", "NUL", "R"});
    Answer(3);
    EXPECT_EQ(Result(), "Result : Chaotic Evil");
    ExpectTurned({}, {});
    Answer(1);
    ExpectTurned({{90, 43, 21, 69}}, {0, -1});
}

TEST_F(Meter, ReportsAnUnknownCodeAndGoesOn) {
    Ask(2, {"N", "g", "", "G"});
    robot::WhenMessageComes([this] {
        EXPECT_EQ(robot::MessageText(), "error");
        // The box has the attention of all windows.
        const std::string question = Question();
        Answer(4);
        robot::PressByAssistant(kForm, "lblInput(4)");
        robot::PressByAssistant(kForm, "Command1");
        EXPECT_EQ(Question(), question);
    });
    Answer(1);
    EXPECT_EQ(robot::MessagesSeen(), 1);
    EXPECT_FALSE(robot::Shown("frmEditQuestions"));
    EXPECT_EQ(Question(), "2 of 2\r\nWhy 2?");
    EXPECT_EQ(Result(), "Result : Chaotic Evil");
}

TEST_F(Meter, WithoutQuestionsStopsAtTheLastSlot) {
    Ask(0, {});
    EXPECT_EQ(Question(), "1 of 0\r\n");
    EXPECT_EQ(robot::Text(kForm, "lblInput(1)"), "1.) ");
    robot::WhenMessageComes([] {});
    for (int i = 0; i < 120; ++i) Answer(1 + i % 4);
    EXPECT_EQ(Question(), "100 of 0\r\n");
    EXPECT_EQ(robot::MessagesSeen(), 120);
}

TEST_F(Meter, GrowsWithTheFirstRollUpAndDragsByAGrabPointOfItsOwn) {
    Ask(1, {"G"});
    EXPECT_EQ(robot::Bounds(kForm).Height, 305);
    EXPECT_EQ(robot::Bounds(kForm, "shpFrame").Height, 273);
    for (const int height : {32, 321}) {
        robot::Click(kForm, "Cmnd(4)");
        EXPECT_EQ(robot::Bounds(kForm).Height, height);
        EXPECT_EQ(robot::Bounds(kForm, "shpFrame").Height, height);
    }
    DragX = 77;
    const robot::Point grip = robot::Middle(kForm, "lblTitle");
    const float left = platform::TheForm<frmAling>().Left();
    robot::Press(kForm, grip);
    robot::Move(kForm, {grip.X + 30, grip.Y});
    robot::Release(kForm, grip);
    EXPECT_EQ(platform::TheForm<frmAling>().Left(), left + 30);
    EXPECT_EQ(DragX, 77);
}

}  // namespace
