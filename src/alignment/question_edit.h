#pragma once

#include "alignment/question_file.h"

namespace orvane {

// A list of questions under edit. Slots above QuestionCount keep their texts; CurrentQuestion is always a
// slot of the table. QuestionCount may be 0 or below after a file without questions.
struct QuestionEdit {
    QuestionList List;
    std::int32_t QuestionCount = 0;
    std::int32_t CurrentQuestion = 1;
};

// Goes to a question of the list; a number outside it gives the nearest one, and slot 1 if there is none.
void GoToQuestion(QuestionEdit& Edit, std::int32_t Number);

// Adds a question at the end of the list, up to the last slot, and goes there. It shows what its slot holds.
void AddQuestion(QuestionEdit& Edit);

// Takes the last question off the list, down to one, and goes to the one that is now the last.
void DropLastQuestion(QuestionEdit& Edit);

// Empties the questions of the list and leaves a list of one.
void ClearQuestions(QuestionEdit& Edit);

// Loads a question file over the list and goes to its first question.
void OpenQuestions(QuestionEdit& Edit, std::string_view FileName);

}  // namespace orvane
