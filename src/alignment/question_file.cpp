#include "alignment/question_file.h"

#include <algorithm>

#include "alignment/modIni.h"
#include "frame/mdlDeclars.h"
#include "platform/places.h"

namespace orvane {
namespace {

constexpr std::string_view kHead = "HEAD";
constexpr std::string_view kItems = "items";
constexpr std::string_view kQuestion = "question";

std::string SectionName(std::int32_t number) {
    const std::string digits = NumberText(number);
    return "QUESTION_" + std::string(3 - digits.size(), '0') + digits;
}

std::string TextKey(std::int32_t answer) { return "ansvertext_" + NumberText(answer); }
std::string ValueKey(std::int32_t answer) { return "ansvervalue_" + NumberText(answer); }

}  // namespace

std::size_t AnswerCodePosition(std::string_view Value) {
    const auto* found = std::ranges::find(kAnswerCodes, Value, &AnswerCode::Code);
    return found == kAnswerCodes.end() ? 0 : static_cast<std::size_t>(found - kAnswerCodes.begin());
}

std::int32_t LoadQuestions(std::string_view FileName, QuestionList& List) {
    IniFile file(platform::PathOfName(FileName));
    const std::int32_t stated = RoundToLong(LeadingNumber(file.Read(kHead, kItems)));
    const std::int32_t count = std::min(stated, kMaxQuestions);
    for (std::int32_t i = 1; i <= count; ++i) {
        const std::string section = SectionName(i);
        QuestionRecord& question = List[i];
        question.Text = file.Read(section, kQuestion);
        for (std::int32_t j = 1; j <= kAnswerCount; ++j) {
            question.Answers[j].Text = file.Read(section, TextKey(j));
            question.Answers[j].Value = file.Read(section, ValueKey(j));
        }
    }
    return count;
}

void SaveQuestions(std::string_view FileName, const QuestionList& List, std::int32_t Count) {
    IniFile file(platform::PathOfName(FileName));
    const std::int32_t count = std::min(Count, kMaxQuestions);
    file.Write(kHead, kItems, NumberText(count));
    for (std::int32_t i = 1; i <= count; ++i) {
        const std::string section = SectionName(i);
        const QuestionRecord& question = List[i];
        file.Write(section, kQuestion, question.Text);
        for (std::int32_t j = 1; j <= kAnswerCount; ++j) {
            file.Write(section, TextKey(j), question.Answers[j].Text);
            file.Write(section, ValueKey(j), question.Answers[j].Value);
        }
    }
    file.Save();
}

}  // namespace orvane
