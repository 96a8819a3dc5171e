// Saves a full question file in the folder that is given, with the mark that tells one save from another;
// what saving_test.py cuts off.

#include "alignment/question_file.h"
#include "platform/places.h"

int main(int, char** arguments) {
    platform::SetPlaces({arguments[1], arguments[1], arguments[1]});
    orvane::QuestionList list;
    for (std::int32_t i = 1; i <= orvane::kMaxQuestions; ++i) list[i].Text = std::string(150, *arguments[2]);
    orvane::SaveQuestions(orvane::kQuestionFile, list, orvane::kMaxQuestions);
}
