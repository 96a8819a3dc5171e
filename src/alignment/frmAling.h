#pragma once

#include "alignment/question_file.h"
#include "alignment/scores.h"
#include "frame/chrome.h"

namespace orvane {

// The alignment meter: a questionnaire and the display of what the answers say.
class frmAling : public ThemedForm {
 public:
    frmAling();

    void Form_Load() override;

 private:
    void ShowQuestion(std::int32_t Number);
    void DrawAlignment();
    void lblInput_Click(int Index);

    QuestionList questions_;
    std::int32_t QuestionCount = 0;
    std::int32_t CurrentQuestion = 1;
    AlignmentScores scores_;
    Truth Finished = kFalse;

    platform::TextBox& txtQuestion = The<platform::TextBox>("txtQuestion");
    platform::Label& Label6 = The<platform::Label>("Label6");
    platform::PictureBox& picOutPut = The<platform::PictureBox>("picOutPut");
};

}  // namespace orvane
