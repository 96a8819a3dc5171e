#pragma once

// The questions of the alignment meter as they lie in a profile file and in memory.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

// The meter's one file, and the one that the editor offers first.
inline constexpr std::string_view kQuestionFile = "c:\\questions.ini";

inline constexpr std::int32_t kMaxQuestions = 100;
inline constexpr std::int32_t kAnswerCount = 4;

// A table whose places are numbered from 1 to Size; every other number throws std::out_of_range.
template <typename Entry, std::int32_t Size>
class NumberedTable {
 public:
    Entry& operator[](std::int32_t number) { return entries_.at(static_cast<std::size_t>(number) - 1); }
    const Entry& operator[](std::int32_t number) const {
        return entries_.at(static_cast<std::size_t>(number) - 1);
    }

 private:
    std::array<Entry, static_cast<std::size_t>(Size)> entries_;
};

// A text that may be unset: nothing was ever assigned to it, and saving leaves its key out of the file.
using TextField = std::optional<std::string>;

// What a screen shows of a field: an unset one is empty.
inline std::string TextOf(const TextField& Field) { return Field.value_or(std::string()); }

struct AnswerRecord {
    TextField Text;
    TextField Value;  // the answer code; any text can stand here, see kAnswerCodes
};

struct QuestionRecord {
    TextField Text;
    NumberedTable<AnswerRecord, kAnswerCount> Answers;
};

using QuestionList = NumberedTable<QuestionRecord, kMaxQuestions>;

// What an answer does to a pair of opposed scores.
enum class ScoreStep : std::uint8_t { None, First, Second, LowerGreater };

// An answer code, its entry in the lists of the editor, and its effect in the meter.
struct AnswerCode {
    std::string_view Code;
    std::string_view Entry;
    bool Accepted;  // the meter reports a code that it does not accept
    ScoreStep GoodEvil = ScoreStep::None;
    ScoreStep LawChaos = ScoreStep::None;
};

// In the order of the editor's lists. The first entry stands for every text that is no code.
inline constexpr std::array<AnswerCode, 14> kAnswerCodes = {{
    {"", "    Illegal value!", false},
    {"G", "G   Good", true, ScoreStep::First, ScoreStep::None},
    {"E", "E   Evil", true, ScoreStep::Second, ScoreStep::None},
    {"L", "L   Lawfull", true, ScoreStep::None, ScoreStep::First},
    {"C", "C   Chaotic", true, ScoreStep::None, ScoreStep::Second},
    {"LG", "LG  Lawfull Good", true, ScoreStep::First, ScoreStep::First},
    {"LE", "LE  Lawfull Evil", true, ScoreStep::Second, ScoreStep::First},
    {"CG", "CG  Chaotic Good", true, ScoreStep::First, ScoreStep::Second},
    {"CE", "CE  Chaotic Evil", true, ScoreStep::Second, ScoreStep::Second},
    {"N", "N   Neutral", false},
    {"GEN", "GEN Good-Evil Neutral", true, ScoreStep::LowerGreater, ScoreStep::None},
    {"LCN", "LCN Law-Chaos Neutral", true, ScoreStep::None, ScoreStep::LowerGreater},
    {"NUL", "NUL Nothing", true},
    {"R", "R   Random", true},
}};

// The position in kAnswerCodes of a code, compared exactly; 0 for every other text.
std::size_t AnswerCodePosition(std::string_view Value);

// Fills the slots from 1 on from a profile file and gives the count that the file states, rounded, which may
// be 0 or below; what is missing in the file reads as empty. A count above 100 reads 100 questions and is
// 100. Slots above the count stay as they were.
std::int32_t LoadQuestions(std::string_view FileName, QuestionList& List);

// Writes the slots 1 to Count to a profile file, all of them or, if that cannot be done, none. What the file
// holds beside them stays, but for the keys of unset fields. Count above 100 is taken as 100.
void SaveQuestions(std::string_view FileName, const QuestionList& List, std::int32_t Count);

}  // namespace orvane
