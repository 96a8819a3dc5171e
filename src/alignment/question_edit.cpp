#include "alignment/question_edit.h"

#include <algorithm>

namespace orvane {

void GoToQuestion(QuestionEdit& Edit, std::int32_t Number) {
    Edit.CurrentQuestion = std::clamp(Number, 1, std::max(Edit.QuestionCount, 1));
}

void AddQuestion(QuestionEdit& Edit) {
    Edit.QuestionCount = std::clamp(Edit.QuestionCount, 0, kMaxQuestions - 1) + 1;
    GoToQuestion(Edit, Edit.QuestionCount);
}

void DropLastQuestion(QuestionEdit& Edit) {
    Edit.QuestionCount = std::max(Edit.QuestionCount, 2) - 1;
    GoToQuestion(Edit, Edit.QuestionCount);
}

void ClearQuestions(QuestionEdit& Edit) {
    for (std::int32_t i = 1; i <= Edit.QuestionCount; ++i) {
        Edit.List[i].Text = "";
        for (std::int32_t j = 1; j <= kAnswerCount; ++j) Edit.List[i].Answers[j] = {"", ""};
    }
    Edit.QuestionCount = 1;
    Edit.CurrentQuestion = 1;
}

void OpenQuestions(QuestionEdit& Edit, std::string_view FileName) {
    Edit.QuestionCount = LoadQuestions(FileName, Edit.List);
    Edit.CurrentQuestion = 1;
}

}  // namespace orvane
