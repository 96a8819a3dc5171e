#include "alignment/frmAling.h"

#include <algorithm>
#include <cmath>

#include "alignment/frmEditQuestions.h"
#include "frame/theme.h"
#include "platform/places.h"
#include "platform/profile_fixture.h"
#include "support/robot.h"
#include "support/sounds.h"

using namespace orvane;
using platform::TheForm;

namespace {

constexpr std::string_view kForm = "frmAling";
constexpr int kPictureLeft = 288;
constexpr int kPictureTop = 48;

class Meter : public FolderTest {
 protected:
    Meter() {
        SoundEnabled = kTrue;
        platform::SetPlaces({Folder / "user", Folder / "program"});
    }
    ~Meter() override {
        platform::UnloadForm<frmAling>();
        platform::UnloadForm<frmEditQuestions>();
        platform::SetPlaces();
    }

    // A questionnaire in which each question offers the same four codes.
    void Ask(int count, const std::vector<std::string>& codes) {
        std::string text = "[HEAD]\r\nitems=" + std::to_string(count) + "\r\n";
        for (int i = 1; i <= std::max(count, 0); ++i) {
            const std::string number = std::to_string(i);
            text += "[QUESTION_" + std::string(3 - number.size(), '0') + number + "]\r\nquestion=Why " +
                    number + "?\r\n";
            for (std::size_t j = 0; j < codes.size(); ++j) {
                const std::string answer = std::to_string(j + 1);
                text += "ansvertext_" + answer + "=Since " + answer + " & so\r\nansvervalue_" + answer + "=" +
                        codes[j] + "\r\n";
            }
        }
        Put(Folder / "program" / "questions.ini", text);
        TheForm<frmAling>().Show();
        bare_ = Picture();
    }

    static void Answer(int index) { robot::Click(kForm, ElementName("lblInput", index)); }
    static std::string Question() { return robot::Text(kForm, "txtQuestion"); }
    static std::string Result() { return robot::Text(kForm, "Label6"); }

    static std::vector<platform::Color> Picture() {
        return robot::Pixels(kForm, {kPictureLeft, kPictureTop, 200, 200});
    }
    const platform::Color& Bare(int x, int y) const { return bare_[static_cast<std::size_t>(y * 200 + x)]; }

    // Exactly the pixels of the given boxes are turned round, and those near the pointer are left out.
    void ExpectTurned(const std::vector<platform::Rect>& boxes, robot::Point pointer) const {
        const auto now = Picture();
        for (int y = 0; y < 200; ++y) {
            for (int x = 0; x < 200; ++x) {
                if (NearPointer(x, y, pointer)) continue;
                const platform::Color& bare = Bare(x, y);
                const bool turned = std::ranges::any_of(boxes, [&](const platform::Rect& box) {
                    return x >= box.Left && x < box.Left + box.Width && y >= box.Top &&
                           y < box.Top + box.Height;
                });
                const platform::Color wanted =
                    turned ? platform::Color{static_cast<std::uint8_t>(bare.Red ^ 255),
                                             static_cast<std::uint8_t>(bare.Green ^ 255),
                                             static_cast<std::uint8_t>(bare.Blue ^ 223)}
                           : bare;
                ASSERT_EQ(now[static_cast<std::size_t>(y * 200 + x)], wanted) << x << "," << y;
            }
        }
    }

    // Within 4 pixels of the line from the short end of the pointer, 5 pixels from the centre, to the long
    // one.
    static bool NearPointer(int x, int y, robot::Point direction) {
        const double length = std::hypot(direction.X, direction.Y);
        const double dx = x - 100;
        const double dy = y - 100;
        if (length == 0) return std::hypot(dx, dy) < 4;
        const double along = (dx * direction.X + dy * direction.Y) / length;
        const double aside = (dx * direction.Y - dy * direction.X) / length;
        return along > -9 && along < 54 && std::abs(aside) < 4;
    }

    Listener listener;
    std::vector<platform::Color> bare_;
};

TEST_F(Meter, AsksEachQuestionOnceAndStandsStill) {
    Ask(2, {"LG", "C", "NUL", "CE"});
    EXPECT_EQ(listener.Heard(), std::vector<std::string>{"theme2.wav"});
    EXPECT_EQ(Question(), "1 of 2\r\nWhy 1?");
    EXPECT_EQ(robot::Text(kForm, "lblInput(2)"), "2.) Since 2 & so");
    EXPECT_EQ(Result(), "Result :");
    Answer(1);
    EXPECT_EQ(Question(), "2 of 2\r\nWhy 2?");
    EXPECT_EQ(Result(), "Result : Lawfull Good");
    Answer(4);
    EXPECT_EQ(Question(), "2 of 2\r\nWhy 2?");
    EXPECT_EQ(Result(), "Result : True Neutral");
    EXPECT_EQ(listener.Heard(), (std::vector<std::string>(2, "click.wav")));
    Answer(1);
    EXPECT_TRUE(listener.Heard().empty());
    EXPECT_EQ(Result(), "Result : True Neutral");
    robot::Click(kForm, "Cmnd(3)");
    TheForm<frmAling>().Show();
    EXPECT_EQ(Result(), "Result : True Neutral");
}

TEST_F(Meter, TurnsThePixelsOfTheBarsAndNoOthers) {
    Ask(9, {"L", "G", "GEN", "C"});
    Answer(1);
    ExpectTurned({{20, 90, 69, 21}}, {-1, 0});
    EXPECT_EQ(Picture()[100 * 200 + 52], (platform::Color{255, 255, 223}));
    EXPECT_EQ(Picture()[100 * 200 + 103], (platform::Color{255, 255, 223}));
    EXPECT_NE(Picture()[100 * 200 + 44], (platform::Color{255, 255, 223}));
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
        EXPECT_EQ(Question(), question);
    });
    Answer(1);
    EXPECT_EQ(robot::MessagesSeen(), 1);
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

TEST_F(Meter, GrowsWithTheFirstRollUpAndKeepsTheEditorInItsFrame) {
    Ask(1, {"G"});
    EXPECT_EQ(robot::Bounds(kForm).Height, 305);
    EXPECT_EQ(robot::Bounds(kForm, "shpFrame").Height, 273);
    EXPECT_EQ(robot::Describe(kForm, "Command1").Name, "Editor");
    robot::Click(kForm, "Cmnd(4)");
    EXPECT_EQ(robot::Bounds(kForm).Height, 32);
    robot::Click(kForm, "Cmnd(4)");
    EXPECT_EQ(TheForm<frmAling>().Height(), 4815);
    EXPECT_EQ(robot::Bounds(kForm, "shpFrame").Height, 321);
    for (const auto& [control, hint] :
         {std::pair{"lblInput(3)", "Answer number 3."}, std::pair{"Label1", "Answer number 3."},
          std::pair{"picOutPut", "Alingment visual display"}, std::pair{"Status", "Alingment visual display"},
          std::pair{"txtQuestion", "Question"}}) {
        robot::Hover(kForm, control);
        EXPECT_EQ(robot::Text(kForm, "Status"), hint) << control;
    }
}

TEST_F(Meter, DragsByAGrabPointOfItsOwn) {
    Ask(1, {"G"});
    DragX = 77;
    const robot::Point grip = robot::Middle(kForm, "lblTitle");
    const float left = TheForm<frmAling>().Left();
    robot::Press(kForm, grip);
    robot::Move(kForm, {grip.X + 30, grip.Y});
    robot::Release(kForm, grip);
    EXPECT_EQ(TheForm<frmAling>().Left(), left + 30);
    EXPECT_EQ(DragX, 77);
}

}  // namespace
