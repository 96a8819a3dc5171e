#include "alignment/frmAling.h"

#include <algorithm>

#include "alignment/display_geometry.h"
#include "alignment/frmEditQuestions.h"
#include "platform/application.h"

namespace orvane {
namespace {

constexpr ControlRow kControls[] = {
    {"Icon", Kind::Picture, "logo", {8, 0, 32, 32}, kPlain, {}, "Logo"},
    {"lblTitle", Kind::Title, "Orvane Alingment meter", {48, 8, 401, 17}},
    {{"Cmnd", 4}, Kind::Button, "_", {456, 8, 17, 17}},
    {{"Cmnd", 3}, Kind::Button, "x", {472, 8, 17, 17}},
    {"Label1", Kind::Caption, "&Question and ansvers :", {8, 32, 273, 17}},
    {"txtQuestion", Kind::QuestionBox, "", {8, 48, 273, 105}, kFixed},
    {"Image2", Kind::Picture, "ornament", {8, 163, 21, 10}, kPlain, {.Count = 4, .Pitch = 24}},
    {"lblInput",
     Kind::LeftButton,
     "",
     {32, 160, 249, 17},
     kPlain,
     {.Count = kAnswerCount, .Pitch = 24, .First = 1}},
    {"Label6", Kind::Caption, "&Result :", {288, 32, 201, 17}},
    {"picOutPut", Kind::PictureBox, "display", {288, 48, 200, 200}, kPlain, {}, "Display"},
    {"Status", Kind::StatusLine, "", {0, 256, 497, 17}},
    {"Command1", Kind::PushButton, "Editor", {424, 280, 65, 17}},
};

constexpr HintRow kHints[] = {
    {{"lblInput", 1}, "Answer number 1."},     {{"lblInput", 2}, "Answer number 2."},
    {{"lblInput", 3}, "Answer number 3."},     {{"lblInput", 4}, "Answer number 4."},
    {"picOutPut", "Alingment visual display"}, {"txtQuestion", "Question"},
    {{"Cmnd", 3}, "Will close this window"},   {{"Cmnd", 4}, "Will minimize window"},
};

constexpr WindowTable kTable{.Name = "frmAling",
                             .Caption = "Form1",
                             .Width = 496,
                             .Height = 305,
                             .Controls = kControls,
                             .Hints = kHints,
                             .Centred = false,
                             .Icon = false,
                             .FrameWidth = 497,
                             .FrameHeight = 273,
                             .FullHeight = 321};

constexpr platform::Color kInk{255, 255, 223};
constexpr int kBarPen = 1;
constexpr int kPointerPen = 4;

// Where the pointer took hold of this window's title.
std::int32_t ownDragX = 0;
std::int32_t ownDragY = 0;

}  // namespace

frmAling::frmAling() : ThemedForm(kTable, ownDragX, ownDragY) {
    for (int i = 1; i <= kAnswerCount; ++i)
        The<platform::Label>({"lblInput", i}).Click = [this, i] { lblInput_Click(i); };
    The<platform::PushButton>("Command1").Click = [] { platform::TheForm<frmEditQuestions>().Show(); };
}

void frmAling::Form_Load() {
    MakeTopMost(*this);
    PlayWave("theme2.wav");
    SoundEnabled = kTrue;
    QuestionCount = LoadQuestions(kQuestionFile, questions_);
    ShowQuestion(1);
    CurrentQuestion = 1;
    Finished = kFalse;
}

void frmAling::ShowQuestion(std::int32_t Number) {
    const QuestionRecord& question = questions_[Number];
    txtQuestion.SetText(NumberText(Number) + " of " + NumberText(QuestionCount) + std::string(kLineBreak) +
                        TextOf(question.Text));
    for (int i = 1; i <= kAnswerCount; ++i)
        The<platform::Label>({"lblInput", i})
            .SetCaption("&" + NumberText(i) + ".) " + TextOf(question.Answers[i].Text));
}

void frmAling::lblInput_Click(int Index) {
    if (Finished == kTrue) return;
    PlayWave("click.wav");
    if (!ApplyAnswer(TextOf(questions_[CurrentQuestion].Answers[Index].Value), scores_))
        platform::ShowMessage("error");
    DrawAlignment();
    if (CurrentQuestion == QuestionCount) {
        Finished = kTrue;
        return;
    }
    // Without a count there is no last question, only a last slot.
    CurrentQuestion = std::min(CurrentQuestion + 1, kMaxQuestions);
    ShowQuestion(CurrentQuestion);
}

void frmAling::DrawAlignment() {
    picOutPut.Cls();
    picOutPut.SetPen(kBarPen, platform::PenMode::Xor);
    for (const DisplaySpan& bar : AlignmentBars(scores_)) picOutPut.Box(bar.X1, bar.Y1, bar.X2, bar.Y2, kInk);
    picOutPut.SetDescription("Good " + NumberText(scores_.GoodCount) + ", Evil " +
                             NumberText(scores_.EvilCount) + ", Law " + NumberText(scores_.LawCount) +
                             ", Chaos " + NumberText(scores_.ChaosCount));
    Label6.SetCaption("&Result : " + std::string(AlignmentName(scores_)));
    const DisplaySpan pointer = AlignmentPointer(scores_);
    picOutPut.SetPen(kPointerPen, platform::PenMode::Copy);
    picOutPut.Line(pointer.X1, pointer.Y1, pointer.X2, pointer.Y2, kInk);
    picOutPut.SetPen(kBarPen, platform::PenMode::Xor);
}

}  // namespace orvane
