#include "frame/theme.h"
#include "support/window_test.h"

using namespace orvane;

constexpr std::string_view kForm = "frmAling";

class Meter : public WindowTest {
 protected:
    // Asks so many questions, each of which offers the same four codes.
    void Ask(int count, const Strings& codes) {
        QuestionList list;
        for (int i = 1; i <= count; ++i) {
            list[i].Text = "Why " + std::to_string(i) + "?";
            int j = 0;
            for (const std::string& code : codes) list[i].Answers[++j] = {"Since & so", code};
        }
        SaveQuestions(kQuestionFile, list, count);
        Show<frmAling>();
        bare_ = Display();
    }

    static void Answer(int index) { robot::Click(kForm, ControlName("lblInput", index).Text()); }
    static std::string Question() { return robot::Text(kForm, "txtQuestion"); }
    static std::vector<platform::Color> Display() {
        return robot::Pixels(kForm, robot::Bounds(kForm, "picOutPut"));
    }

    // What stands at places of the display: "." the picture's own, "x" that turned round, "#" the ink.
    std::string Drawn(std::initializer_list<std::pair<std::size_t, std::size_t>> places) const {
        const auto now = Display();
        std::string drawn;
        for (const auto& [x, y] : places) {
            const platform::Color is = now[y * 200 + x], was = bare_[y * 200 + x];
            const bool turned = is.Red == (was.Red ^ 255) && is.Blue == (was.Blue ^ 223);
            drawn += is == was ? '.' : turned ? 'x' : is == platform::Color{255, 255, 223} ? '#' : '?';
        }
        return drawn;
    }

    std::vector<platform::Color> bare_;
};

TEST_F(Meter, AsksEachQuestionOnceAndStandsStill) {
    Ask(2, {"LG", "C", "NUL", "CE"});
    EXPECT_EQ(listener.Heard(), Strings{"theme2.wav"});
    EXPECT_EQ(Question(), "1 of 2\r\nWhy 1?");
    EXPECT_EQ(robot::Text(kForm, "lblInput(2)"), "2.) Since & so");
    for (const auto& [answer, result] :
         {std::pair{1, "Result : Lawfull Good"}, {4, "Result : True Neutral"}}) {
        Answer(answer);
        EXPECT_EQ(Question(), "2 of 2\r\nWhy 2?");
        EXPECT_EQ(robot::Text(kForm, "Label6"), result);
        EXPECT_EQ(listener.Heard(), Strings{"click.wav"});
    }
    Answer(1);
    EXPECT_TRUE(listener.Heard().empty());
    robot::Click(kForm, "Cmnd(3)");
    Show<frmAling>();
    EXPECT_EQ(robot::Text(kForm, "Label6"), "Result : True Neutral");
}

TEST_F(Meter, TurnsThePixelsOfTheBarsAndPointsWithInk) {
    Ask(9, {"L", "G", "GEN", "C"});
    Answer(1);
    // Law's bar to its corners and no further; the pointer's arm of 50 pixels and its stub of 5.
    EXPECT_EQ(Drawn({{20, 90}, {88, 110}, {19, 90}, {20, 89}, {89, 110}, {88, 111}}), "xx....");
    EXPECT_EQ(Drawn({{52, 100}, {52, 99}, {103, 100}, {44, 100}, {110, 100}}), "###x.");
    Answer(2);
    EXPECT_EQ(Drawn({{20, 90}, {90, 20}, {110, 88}, {90, 19}, {52, 100}, {70, 70}}), "xxx.x#");
    Answer(1);
    // Good stands at half of Law: from y = 88 up to 54.
    EXPECT_EQ(Drawn({{20, 90}, {90, 54}, {90, 53}}), "xx.");
}

TEST_F(Meter, ReportsAnUnknownCodeAndGoesOnAsFarAsThereAreSlots) {
    Ask(0, {});
    static int seen;
    seen = 0;
    robot::WhenMessageComes([] {
        ++seen;
        EXPECT_EQ(robot::MessageText(), "error");
        // The box has the attention of all windows.
        const std::string question = Question();
        Answer(4);
        robot::PressByAssistant(kForm, "lblInput(4)");
        EXPECT_EQ(Question(), question);
    });
    EXPECT_EQ(Question(), "1 of 0\r\n");
    for (int i = 0; i < 101; ++i) Answer(1);
    EXPECT_EQ(Question(), "100 of 0\r\n");
    EXPECT_EQ(seen, 101);
}

TEST_F(Meter, GrowsWithTheFirstRollUpAndDragsByAGrabPointOfItsOwn) {
    Ask(0, {});
    EXPECT_EQ(robot::Pixel(kForm, 100, 273 - 1), kFrameLine);
    for (const int height : {32, 321}) {
        robot::Click(kForm, "Cmnd(4)");
        EXPECT_EQ(robot::Bounds(kForm).Height, height);
        EXPECT_EQ(robot::Pixel(kForm, 100, height - 1), kFrameLine);
    }
    DragX = 77;
    robot::Press(kForm, robot::Middle(kForm, "lblTitle"));
    EXPECT_EQ(DragX, 77);
}
