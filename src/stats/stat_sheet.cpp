#include "stats/stat_sheet.h"

#include <algorithm>

#include "frame/mdlDeclars.h"

namespace orvane {
namespace {

constexpr std::size_t kNameAndMinColumns = 16;
constexpr std::size_t kMaxColumns = 5;
constexpr std::size_t kBonColumns = 5;
constexpr std::size_t kSheetColumns = 15;

// A name flush left and a text flush right, together as wide as told. What is too wide is never cut.
std::string Spread(std::string_view left, std::string_view right, std::size_t width) {
    std::string line(left);
    line.resize(std::max(line.size(), width - std::min(width, right.size())), ' ');
    line += right;
    return line;
}

std::string SheetLine(std::string_view name, std::int32_t number) {
    return Spread(name, NumberText(number), kSheetColumns);
}

}  // namespace

std::string BuildResultText(std::string_view sexText, std::string_view raceText, std::string_view classText,
                            const StatTable& records) {
    std::string text;
    text.append(sexText).append(" ").append(raceText).append(" ").append(classText).append(kLineBreak);
    text += "Stats        Min  Max  Bon";
    for (const StatRecord& stat : records) {
        text += kLineBreak;
        text += Spread(stat.Name, NumberText(stat.Min), kNameAndMinColumns);
        text += Spread({}, NumberText(stat.Max), kMaxColumns);
        text += Spread({}, FormatBonus(stat.Bon), kBonColumns);
    }
    return text;
}

std::string BuildStatSheet(const StatTable& records, std::int32_t pool) {
    std::string text;
    std::int32_t total = 0;
    for (const StatRecord& stat : records) {
        text += SheetLine(stat.Name, stat.Value);
        text += kLineBreak;
        total += stat.Value;
    }
    text += SheetLine("Total", total);
    text += kLineBreak;
    return text + SheetLine("Left", pool);
}

}  // namespace orvane
