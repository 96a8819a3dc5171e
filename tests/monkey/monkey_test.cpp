// A monkey at the mouse and the keyboard: draws an event, sends it to the real widgets, and looks at what
// must always hold. The same SEED of the environment makes the same EVENTS; from event FROM on each is
// printed, ahead of it.

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <random>
#include <stdexcept>

#include "alignment/modIni.h"
#include "support/window_test.h"

namespace {

using namespace orvane;
namespace fs = std::filesystem;
using platform::Rect;
using Text = std::string;

long Option(const char* name, long otherwise) {
    const char* value = std::getenv(name);
    return value == nullptr ? otherwise : std::atol(value);
}

const long kSeed = Option("SEED", 1), kEvents = Option("EVENTS", 3000), kFrom = Option("FROM", kEvents);

std::mt19937 dice;
long number = 0;  // of the event
Text line;        // and what it does
fs::path folder;  // of the user and the program

// The standard's own distributions differ from library to library.
int Below(std::size_t count) { return static_cast<int>(std::uint64_t{dice()} * count >> 32); }
bool OneIn(std::size_t count) { return Below(count) == 0; }
template <class List>
const auto& OneOf(const List& list) {
    return std::data(list)[Below(std::size(list))];
}

void Require(bool holds, const Text& what) {
    if (holds) return;
    fs::remove_all(folder);
    std::cerr << "Event " << number << " of seed " << kSeed << ": " << line << ": not so: " << what
              << std::endl;
    std::_Exit(1);
}

// Pressed more often than by chance, so that there is something to press.
const std::pair<Text, Text> kOften[] = {
    {"frmMain", "Cmnd(0)"},           {"frmMain", "Cmnd(1)"},           {"frmMain", "Cmnd(5)"},
    {"frmMain", "Cmnd(6)"},           {"frmMain", "Cmnd(7)"},           {"frmMain", "Cmnd(8)"},
    {"frmAling", "Command1"},         {"frmRange2Dice", "chkAuto"},     {"frmRange2Dice", "txtTo"},
    {"frmEditQuestions", "cmndOpen"}, {"frmEditQuestions", "cmndNext"}, {"frmEditQuestions", "cmndSave"},
};
const Text kKeys[] = {"Tab",        "Shift+Tab", "Return",    "Space",  "Escape", "Up",     "Down",
                      "Left",       "Right",     "Home",      "End",    "PgUp",   "PgDown", "Ctrl+A",
                      "Shift+Left", "Shift+Up",  "Backspace", "Delete", "Ctrl+C", "Ctrl+X", "Ctrl+V",
                      "Ctrl+Z",     "Ctrl+Y",    "Alt+Down",  "Menu",   "F4",     "Alt+N",  "Alt+P",
                      "Alt+R",      "Alt+T",     "Alt+Q",     "Alt+1"};
const Text kLetters[] = {"0", "1", "2", "9", "-", ".", ",", "e", "D", "&", "=", "ß", "漢", "א", "\U0001F409"};
const Text kPastes[] = {"",       "1e999",         "a\r\nb\nc\u2028d", "\t\u00a0x", {"1\0002", 3},
                        "&&1 &A", Text(9'000, '7')};

std::vector<Text> ShownForms() {
    std::vector<Text> forms = robot::ShownWindows();
    std::erase_if(forms, [](const Text& name) { return !name.starts_with("frm"); });
    std::ranges::sort(forms);
    return forms;
}

robot::Point Within(const Rect& rect) {
    const int x = rect.Left + Below(static_cast<std::size_t>(rect.Width));
    return {x, rect.Top + Below(static_cast<std::size_t>(rect.Height))};
}

void Click(const Text& form, const Text& control) {
    using enum robot::Button;
    const Rect popup = robot::Popup("frmMain");
    const bool inPopup = popup.Width > 0 && OneIn(2);
    const Text window = inPopup ? "frmMain" : form;
    const robot::Button button = OneIn(4) ? OneOf(std::array{Middle, Right}) : Left;
    robot::Point at = Within(inPopup ? popup : robot::Bounds(form, control));
    robot::Move(window, at);
    robot::Press(window, at, button);
    robot::TurnTo(window);  // if the press closed what was open in another window
    for (int moves = OneIn(8) ? 5 : 0; moves > 0; --moves)
        robot::Move(window, at = Within({-60, -60, 700, 700}));
    robot::Release(robot::Shown(window) ? window : "frmMain", at, button);
}

void Assist(const Text& form, const Text& control) {
    if (control.starts_with("Cmnd") || control.starts_with("lblInput"))
        robot::PressByAssistant(form, control);
}

// From the one drawn most often to the rarest.
const std::pair<const char*, void (*)(const Text& form, const Text& control)> kActs[] = {
    {"click", Click},
    {"press", [](const Text& form, const Text&) { robot::Key(form, OneOf(kKeys)); }},
    {"type", [](const Text& form, const Text&) { robot::Type(form, OneOf(kLetters)); }},
    {"paste", [](const Text& form, const Text&) { robot::Paste(form, OneOf(kPastes)); }},
    {"wheel", [](const Text& form, const Text& control) { robot::Wheel(form, control, 2 - Below(5)); }},
    {"assist", Assist},
    {"move",
     [](const Text& form, const Text&) { robot::DesktopMoves(form, Below(1000), Below(1000) - 100); }},
    {"close", [](const Text& form, const Text&) { robot::DesktopCloses(form); }},
};

void Draw() {
    auto [form, control] = OneOf(kOften);
    const bool often = OneIn(3) && robot::Shown(form) && robot::Bounds(form).Height > 32;
    if (!often) {
        form = OneOf(ShownForms());
        control = OneOf(robot::Controls(form));
    }
    auto [name, act] = kActs[often ? 0 : Below(1 + static_cast<std::size_t>(Below(std::size(kActs))))];
    // The end comes seldom, or nothing would be old.
    if (form == "frmMain" && (control == "Cmnd(2)" || control == "Cmnd(3)" || name == Text("close")) &&
        !OneIn(40))
        return;
    robot::TurnTo(form);
    line = form + " " + control + " " + name;
    if (number >= kFrom) std::cout << number << " " << line << std::endl;
    act(form, control);
}

// What must always hold.

std::map<Text, Rect> sizes;  // as each window came up
std::map<fs::path, fs::file_time_type> files;
Text editorFocus;

void CheckState() {
    Require(SoundEnabled == kTrue, "the sound is on");
    for (const Text& name : ShownForms()) {
        const Rect now = robot::Bounds(name), first = sizes.try_emplace(name, now).first->second;
        const bool rolledUp = name != "frmEditQuestions" && robot::Text(name, "Cmnd(4)") == "=";
        Require(now.Width == first.Width, name + " keeps its width");
        Require(rolledUp ? now.Height == 32 : now.Height == first.Height || now.Height == 321,
                name + " keeps its height");
        Require(robot::Pressed(name).empty(), "no label of " + name + " stays pressed");
        Require(name == "frmMain" || !robot::Focus(name).empty(), "a control of " + name + " has the focus");
    }
    std::int32_t sum = PointsToDistribute;
    for (const StatRecord& stat : Stats) sum += stat.Value;
    Require(Stats.front().Name.empty() || sum == kPoolPoints, "pool and values make 81");

    std::map<fs::path, fs::file_time_type> now;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) now[entry] = entry.last_write_time();
    const Text focus = robot::Shown("frmEditQuestions") ? robot::Focus("frmEditQuestions") : "";
    Require(number == 1 || now == files || focus == "cmndSave" || editorFocus == "cmndSave",
            "only Save writes a file");
    files = now;
    editorFocus = focus;
}

class Monkey : public WindowTest {};

TEST_F(Monkey, BreaksNothing) {
    std::size_t early = 0, late = 0;  // once every window is closed
    const auto step = [this] {
        if (++number > kEvents) return false;
        try {
            Draw();
        } catch (const std::runtime_error&) {
            // A window went in the middle of it.
        }
        if (robot::Shown("frmMain")) CheckState();
        listener.Heard();  // Else the list of all sounds would be what grows.
        return number != kEvents / 4 && number != kEvents / 4 * 3;
    };
    dice.seed(static_cast<unsigned long>(kSeed));
    folder = Folder;
    fs::copy(ORVANE_SOURCE_FOLDER "/data", folder / "program", fs::copy_options::recursive);
    // Too long for its label in any font, so that the fonts that are tried, and kept, are there early.
    IniWrite("QUESTION_001", "ansvertext_1", Text(90, 'W'), kQuestionFile);
    robot::Hurry();
    robot::WhenToolkitWarns([](const Text& warning) { Require(false, "the toolkit is silent: " + warning); });
    robot::WhenMessageComes([] { robot::Key("frmAling", OneOf(kKeys)); });
    while (number < kEvents) {
        Show<frmMain>();
        const bool ended = robot::Live(step);
        EXPECT_TRUE(!ended || ShownForms().empty());
        Each([]<class Form>() { platform::UnloadForm<Form>(); });
        robot::Live([] { return false; });  // until they are gone
        if (number == kEvents / 4) early = robot::HeldResources();
        if (number == kEvents / 4 * 3) late = robot::HeldResources();
    }
    std::cout << "held after a quarter and three quarters of the events: " << early << " and " << late
              << "\n";
    EXPECT_LE(late, early + robot::kLateCaches);
}

}  // namespace
