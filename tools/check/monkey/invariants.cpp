#include "monkey/invariants.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <map>
#include <numeric>
#include <stdexcept>
#include <tuple>
#include <vector>

#include "alignment/frmAling.h"
#include "alignment/frmEditQuestions.h"
#include "alignment/modIni.h"
#include "dice/frmDice.h"
#include "dice/frmRange2Dice.h"
#include "dice/range_text.h"
#include "frame/frmMain.h"
#include "platform/places.h"
#include "stats/frmStatsCounter.h"
#include "stats/frmStatsGenerator.h"
#include "stats/stat_sheet.h"
#include "support/robot.h"
#include "weapons/frmWeapons.h"

namespace monkey {
namespace {

using namespace orvane;
using platform::IsLoaded;
using robot::Text;
using Files = std::map<std::filesystem::path, std::tuple<std::uintmax_t, std::filesystem::file_time_type>>;

template <class Window>
constexpr WindowRow Row(std::string_view name, int width, int height, int restored = 0) {
    return {name,
            width,
            height,
            restored == 0 ? height : restored,
            [] {
                return IsLoaded<Window>() ? static_cast<platform::Form*>(&platform::TheForm<Window>())
                                          : nullptr;
            },
            [] { platform::TheForm<Window>().Show(); },
            platform::UnloadForm<Window>};
}

constexpr std::string_view kEditor = "frmEditQuestions";

// What is kept of the state before the event.
struct Before {
    std::string EditorFocus;
    std::map<std::string, std::ptrdiff_t> Lengths;  // of the dice boxes
    std::string From, To;
    bool Auto = false;
    Files Home;
};
Before before;

// What the meter was given, and the first of its questions that may be on show.
QuestionList asked;
std::int32_t askedNow = 0;  // 0: the meter is not loaded

// What the editor showed of each question.
std::map<int, std::vector<std::string>> edited;
int editedNow = 0;

std::string EditorFocus() { return robot::Shown(kEditor) ? robot::Focus(kEditor) : ""; }

Files FilesOfHome() {
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(platform::CurrentPlaces().Home)) {
        if (entry.is_regular_file()) files[entry.path()] = {entry.file_size(), entry.last_write_time()};
    }
    return files;
}

bool AllDigits(std::string_view text) { return text.find_first_not_of("0123456789") == text.npos; }

void Windows() {
    Require(robot::Shown(kWindows[0].Name), "the launcher stays on the screen");
    for (const WindowRow& row : kWindows) {
        const platform::Form* form = row.Get();
        Require((form != nullptr && form->Visible()) == robot::Shown(row.Name),
                std::string(row.Name) + " is shown");
    }
    const std::vector<std::string> shown = robot::ShownWindows();
    const auto strange = std::ranges::count_if(shown, [](const std::string& name) {
        return std::ranges::find(kWindows, name, &WindowRow::Name) == kWindows.end();
    });
    Require(strange == (robot::Popup(kWindows[0].Name).Width > 0 ? 1 : 0), "one open list or menu at most");
}

void SizesAndPlaces() {
    for (const WindowRow& row : kWindows) {
        const platform::Form* form = row.Get();
        if (form == nullptr) continue;
        const platform::Rect at = robot::Bounds(row.Name);
        const bool rolledUp = row.Name != kEditor && Text(row.Name, "Cmnd(4)") == "=";
        const std::string name(row.Name);
        Require(at.Width == row.Width, name + " keeps its width");
        Require(rolledUp ? at.Height == 32 : at.Height == row.Height || at.Height == row.Restored,
                name + " keeps its height");
        Require(form->Height() == static_cast<float>(at.Height) * platform::kTwipsPerPixel,
                name + " knows its height");
        if (row.Name == kEditor) continue;  // the desktop's frame lies round it
        Require(std::lround(form->Left() / platform::kTwipsPerPixel) == at.Left &&
                    std::lround(form->Top() / platform::kTwipsPerPixel) == at.Top,
                name + " knows where it is: " + std::to_string(form->Left()) + ", " +
                    std::to_string(form->Top()) + " for " + std::to_string(at.Left) + ", " +
                    std::to_string(at.Top));
    }
}

void FocusAndPresses() {
    for (const WindowRow& row : kWindows) {
        if (!robot::Shown(row.Name)) continue;
        const std::string name(row.Name);
        Require(robot::Pressed(row.Name).empty(), "no label of " + name + " stays pressed");
        if (row.Name == "frmMain") continue;
        const std::string focus = robot::Focus(row.Name);
        constexpr std::string_view kTake[] = {"txt", "cmb", "chk", "Command1", "cmnd"};
        Require(std::ranges::any_of(kTake, [&](std::string_view kind) { return focus.starts_with(kind); }) &&
                    robot::Describe(row.Name, focus).Role != "text",
                "the focus of " + name + " is in a control that takes it, not in '" + focus + "'");
    }
}

void Sound() { Require(SoundEnabled == kTrue, "the sound is on"); }

void DiceBoxes() {
    if (!IsLoaded<frmDice>()) return;
    for (const std::string box : {"txtN", "txtS", "txtB"}) {
        const std::string text = Text("frmDice", box);
        // A character of UTF-8 begins with a byte that does not continue one.
        const auto length = std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; });
        Require(length <= 3 || length <= before.Lengths[box] || AllDigits(text), box + " keeps its limit");
        Require(
            !robot::Shown("frmDice") || robot::Focus("frmDice") == box || (!text.empty() && AllDigits(text)),
            box + " is a clean number");
        before.Lengths[box] = length;
    }
}

void DiceResult() {
    if (!IsLoaded<frmDice>()) return;
    const std::string text = Text("frmDice", "txtResult");
    std::int64_t number = 0, sides = 0, bonus = 0, low = 0, high = 0, roll = 0;
    double average = 0;
    std::sscanf(text.c_str(), "Dice: %ldD%ld%ld", &number, &sides, &bonus);
    const std::size_t range = std::min(text.find("Range:"), text.size());
    Require(std::sscanf(text.c_str() + range, "Range: %ld to %ld Average: %lf Result of roll: %ld", &low,
                        &high, &average, &roll) == 4,
            "the roll is told: " + text);
    const std::int64_t highest = number * sides + bonus;
    Require(low == ClampToLong(number + bonus) && high == ClampToLong(highest),
            "the range is that of the dice");
    Require(low <= roll && roll <= high, "the roll lies in its range");
    Require(high != highest || std::abs(2 * average - static_cast<double>(low + high)) < 1e-6,
            "the average is right");
}

void RangeResult() {
    if (!IsLoaded<frmRange2Dice>()) return;
    const auto box = [](std::string_view name) { return Text("frmRange2Dice", name); };
    const auto number = [](const std::string& text) { return RoundToLong(LeadingNumber(text)); };
    const std::string from = box("txtFrom"), to = box("txtTo");
    const bool automatic = robot::Checked("frmRange2Dice", "chkAuto");
    if (automatic && (from != before.From || to != before.To || !before.Auto))
        Require(box("txtResult") == RangeText(number(from), number(to)), "the notation follows the range");
    std::tie(before.From, before.To, before.Auto) = std::tuple(from, to, automatic);
}

void Statistics() {
    if (!IsLoaded<frmStatsGenerator>() || !IsLoaded<frmStatsCounter>()) return;
    std::int32_t sum = PointsToDistribute, bonuses = 0;
    for (const StatRecord& stat : Stats) {
        Require(stat.Min <= stat.Value && stat.Value <= stat.Max, stat.Name + " lies in its bounds");
        sum += stat.Value;
        bonuses += stat.Bon;
    }
    Require(sum == kPoolPoints, "pool and values make 81");
    Require(bonuses == 0, "the bonuses add up to 0");
    const auto generator = [](std::string_view name) { return Text("frmStatsGenerator", name); };
    Require(generator("txtTextOut") ==
                BuildResultText(generator("cmbSex"), generator("cmbRace"), generator("cmbClass"), Stats),
            "the result is that of the lists");
    Require(Text("frmStatsCounter", "txtTextOut") == BuildStatSheet(Stats, PointsToDistribute),
            "the sheet is right");
    Require(Text("frmStatsCounter", "cmndToDistribute") == PoolText(PointsToDistribute), "the pool is right");
    const StatGrid grid = BuildStatGrid(Stats, PointsToDistribute);
    for (int i = 0; i < static_cast<int>(kStatCount); ++i) {
        const StatGridRow& row = grid.Rows[static_cast<std::size_t>(i)];
        Require(Text("frmStatsCounter", ControlName("cmndValue", i).Text()) == row.Value &&
                    Text("frmStatsCounter", ControlName("cmndRange", i).Text()) == row.Range,
                "the grid shows " + row.Name);
    }
}

void Meter() {
    if (!IsLoaded<frmAling>()) return;
    if (askedNow == 0) {
        asked = {};
        LoadQuestions(kQuestionFile, asked);
        askedNow = 1;
    }
    const auto onShow = [](std::int32_t number) {
        for (std::int32_t i = 1; i <= kAnswerCount; ++i) {
            const std::string answer = std::to_string(i) + ".) " + TextOf(asked[number].Answers[i].Text);
            if (Text("frmAling", ControlName("lblInput", i).Text()) != answer) return false;
        }
        return true;
    };
    while (askedNow <= kMaxQuestions && !onShow(askedNow)) ++askedNow;
    Require(askedNow <= kMaxQuestions, "the meter shows a question of its list and never goes back");
    constexpr std::string_view kNames =
        "|Chaotic Evil|Chaotic|Chaotic Good|Evil|True Neutral|Good|Lawfull Evil"
        "|Lawfull|Lawfull Good|";
    const std::string result = Text("frmAling", "Label6");
    const std::string name = result.substr(std::min<std::size_t>(result.size(), 9));
    Require((name.empty() && askedNow == 1) || kNames.find("|" + name + "|") != kNames.npos,
            "the alignment has a name: " + result);
}

void Editor() {
    if (!IsLoaded<frmEditQuestions>()) {
        edited.clear();
        editedNow = 0;
        return;
    }
    int number = 0, count = 0;
    const std::string position = Text(kEditor, "lblNumber");
    Require(std::sscanf(position.c_str(), "%d/%d", &number, &count) == 2 && number >= 1 &&
                count <= kMaxQuestions && number <= std::max(count, 1),
            "the editor stands in its list: " + position);
    std::vector<std::string> shown{Text(kEditor, "txtQuestion")};
    for (int i = 1; i <= kAnswerCount; ++i) {
        shown.push_back(Text(kEditor, ControlName("txtAnsver", i).Text()));
        shown.push_back(Text(kEditor, ControlName("cmbAling", i).Text()));
    }
    for (const std::string& focus : {before.EditorFocus, EditorFocus()}) {
        if (focus == "cmndNew" || focus == "cmndOpen") edited.clear();
    }
    const auto known = edited.find(number);
    Require(number == editedNow || known == edited.end() || known->second == shown,
            "question " + position + " is as it was left");
    edited[number] = shown;
    editedNow = number;
}

void Saved() {
    const Files files = FilesOfHome();
    if (files == before.Home) return;
    const bool first = before.Home.empty();
    before.Home = files;
    if (first) return;
    const std::string focus = EditorFocus();
    Require(before.EditorFocus == "cmndSave" || focus == "cmndSave", "only Save writes a file");
    int number = 0, count = 0;
    std::sscanf(Text(kEditor, "lblNumber").c_str(), "%d/%d", &number, &count);
    const std::string name = Text(kEditor, "txtFile"), text = Text(kEditor, "txtQuestion");
    const auto path = platform::PathOfName(name);
    Require(files.contains(path.lexically_normal()), "Save writes the file that was asked for");
    Require(IniRead("HEAD", "items", name) == NumberText(count), "the file is whole");
    const bool plain =
        text.size() < 200 && std::ranges::all_of(text, [](char c) { return c > '@' && c < '{'; });
    char section[32];
    std::snprintf(section, sizeof section, "QUESTION_%03d", number);
    if (plain && count > 0)
        Require(IniRead(section, "question", name) == text, "the file holds the question");
}

using Invariant = void (*)();
constexpr Invariant kInvariants[] = {Windows,    SizesAndPlaces, FocusAndPresses, Sound, DiceBoxes,
                                     DiceResult, RangeResult,    Statistics,      Meter, Editor,
                                     Saved};

}  // namespace

const std::array<WindowRow, 8> kWindows = {
    Row<frmMain>("frmMain", 209, 273),        Row<frmStatsGenerator>("frmStatsGenerator", 345, 321),
    Row<frmDice>("frmDice", 209, 305),        Row<frmStatsCounter>("frmStatsCounter", 345, 321),
    Row<frmAling>("frmAling", 496, 305, 321), Row<frmRange2Dice>("frmRange2Dice", 209, 161),
    Row<frmWeapons>("frmWeapons", 281, 345),  Row<frmEditQuestions>("frmEditQuestions", 465, 259),
};

void BeforeEvent() { before.EditorFocus = EditorFocus(); }

void ForgetProgram() {
    before = {};
    askedNow = 0;
    Stats = {};
    PointsToDistribute = DragX = DragY = 0;
    SoundEnabled = kFalse;
    for (const WindowRow& row : kWindows) row.Unload();
}

void Require(bool holds, const std::string& what) {
    if (!holds) throw std::logic_error(what);
}

void CheckAll() {
    for (const Invariant check : kInvariants) check();
}

}  // namespace monkey
