// A monkey at the mouse and the keyboard: draws an event, sends it to the real widgets, and looks at what
// must always hold. The same SEED of the environment makes the same EVENTS; from event FROM on each is
// printed, ahead of it.

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <random>
#include <sstream>
#include <thread>
#include <tuple>

#include "support/window_test.h"

#if defined(__SANITIZE_ADDRESS__)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace {

using namespace orvane;
namespace fs = std::filesystem;
using platform::Rect;
using Strings = std::vector<std::string>;

long Option(const char* name, long otherwise) {
    const char* value = std::getenv(name);
    return value == nullptr ? otherwise : std::atol(value);
}

const long kSeed = Option("SEED", 1), kEvents = Option("EVENTS", 3000), kFrom = Option("FROM", kEvents);
constexpr std::chrono::seconds kPatience(30);  // until the program hangs

std::mt19937 dice;
std::atomic<long> number = 0;  // of the event
std::string line;              // and what it does

// The standard's own distributions differ from library to library.
int Below(std::size_t count) { return static_cast<int>(std::uint64_t{dice()} * count >> 32); }
bool OneIn(std::size_t count) { return Below(count) == 0; }
template <class List>
const auto& OneOf(const List& list) {
    return std::data(list)[Below(std::size(list))];
}

void Note(std::string_view word) {
    line.append(" ").append(word.substr(0, 60));
    if (number >= kFrom) std::cout << number << line << std::endl;
}

void Require(bool holds, const std::string& what) {
    if (!holds) throw std::logic_error(what);
}

fs::path folder;  // of the user and the program

void TellAndEnd(const std::string& why) {
    fs::remove_all(folder);
    std::cerr << "Event " << number << " of seed " << kSeed << ":" << line << ": " << why << std::endl;
    std::_Exit(1);
}

// What stands between blanks.
Strings Words(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

// What is pressed more often than by chance, so that there is something to press.
const Strings kOften = Words(
    "frmMain/Cmnd(0) frmMain/Cmnd(1) frmMain/Cmnd(5) frmMain/Cmnd(6) frmMain/Cmnd(7) frmMain/Cmnd(8) "
    "frmAling/Command1 frmRange2Dice/chkAuto frmRange2Dice/txtTo frmEditQuestions/cmndOpen "
    "frmEditQuestions/cmndOpen frmEditQuestions/cmndNext frmEditQuestions/cmndLast "
    "frmEditQuestions/cmndSave");
const Strings kKeys = Words(
    "Tab Shift+Tab Return Space Escape Up Down Left Right Home End PgUp PgDown Shift+Left Shift+Up Backspace "
    "Delete Ctrl+A Ctrl+C Ctrl+X Ctrl+V Ctrl+Z Ctrl+Y Alt+Down Menu Ctrl+Left F4 Ctrl+Tab Alt+N Alt+P Alt+R "
    "Alt+F Alt+T Alt+Q Alt+1 Alt+4");
const Strings kLetters = Words("0 1 2 9 - + . , e D Z & = ß 漢 א \U0001F409");
const std::string kSeven(100'000, '7'), kNul("1\0002", 3);
const Strings kPastes = {"", "1e999", "a\r\nb\nc\u2028d", "\t\u00a0x", "&&1 &A", kSeven, kNul};

Strings ShownForms() {
    Strings forms = robot::ShownWindows();
    std::erase_if(forms, [](const std::string& name) { return !name.starts_with("frm"); });
    std::ranges::sort(forms);
    return forms;
}

bool PopupIsOpen() { return robot::Popup("frmMain").Width > 0; }

robot::Point Within(const Rect& rect) {
    const double x = rect.Left + Below(static_cast<std::size_t>(rect.Width));
    return {x, static_cast<double>(rect.Top + Below(static_cast<std::size_t>(rect.Height)))};
}

void Click(const std::string& form, robot::Point at, int moves = 0) {
    using enum robot::Button;
    const robot::Button button = OneOf(std::to_array({Left, Left, Left, Left, Left, Left, Middle, Right}));
    robot::Move(form, at);
    robot::Press(form, at, button);
    robot::TurnTo(form);  // if the press closed what was open in another window
    for (; moves > 0; --moves) robot::Move(form, at = Within({-60, -60, 700, 700}));
    robot::Release(robot::Shown(form) ? form : "frmMain", at, button);
}

void Act(const std::string& form, const std::string& control) {
    const int drawn = Below(91);
    if (PopupIsOpen() && OneIn(2)) {
        Note("in what is open");
        if (OneIn(2)) return Click("frmMain", Within(robot::Popup("frmMain")));
        return robot::Key("frmMain", OneOf(std::to_array({"Up", "Down", "End", "Return", "Escape", "C"})));
    }
    if (drawn < 40) {
        Note("click");
        Click(form, Within(robot::Bounds(form, control)), drawn < 5 ? 5 : 0);
    } else if (drawn < 62) {
        const std::string& key = OneOf(kKeys);
        Note(key);
        robot::Key(form, key);
    } else if (drawn < 74) {
        std::string text;
        for (int letters = 1 + Below(4); letters > 0; --letters) text += OneOf(kLetters);
        Note("type " + text);
        robot::Type(form, text);
    } else if (drawn < 78) {
        const std::string& text = OneOf(kPastes);
        Note("paste " + text);
        robot::Paste(form, text);
    } else if (drawn < 82) {
        Note("wheel");
        robot::Wheel(form, control, 2 - Below(5));
    } else if (drawn < 86) {
        Note("assist");
        if (control.starts_with("Cmnd") || control.starts_with("lblInput"))
            robot::PressByAssistant(form, control);
    } else if (drawn < 89) {
        Note("move");
        robot::DesktopMoves(form, Below(1000) - 100, Below(1000) - 100);
    } else if (drawn < 91) {
        Note("close");
        if (form != "frmMain") robot::DesktopCloses(form);
    }
}

void Draw() {
    const std::string& often = OneOf(kOften);
    std::string form = often.substr(0, often.find('/')), control = often.substr(often.find('/') + 1);
    if (OneIn(3) && robot::Shown(form) && robot::Bounds(form).Height > 32) {
        robot::TurnTo(form);
        Note(form + " " + control);
        return Click(form, Within(robot::Bounds(form, control)));
    }
    form = OneOf(ShownForms());
    control = OneOf(robot::Controls(form));
    // The end comes seldom, or nothing would be old.
    if (form == "frmMain" && (control == "Cmnd(2)" || control == "Cmnd(3)") && !OneIn(40))
        control = "Cmnd(4)";
    robot::TurnTo(form);
    Note(form + " " + control);
    Act(form, control);
}

// What must always hold.

std::map<std::string, Rect> sizes;  // as each window came up
std::map<fs::path, fs::file_time_type> files;
std::string editorFocus;

void CheckState() {
    Require(SoundEnabled == kTrue, "the sound is on");
    for (const std::string& name : ShownForms()) {
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
    Require(!platform::IsLoaded<frmStatsCounter>() || sum == kPoolPoints, "pool and values make 81");
}

void CheckFiles() {
    std::map<fs::path, fs::file_time_type> now;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) now[entry.path()] = entry.last_write_time();
    }
    const std::string focus = robot::Shown("frmEditQuestions") ? robot::Focus("frmEditQuestions") : "";
    Require(number == 1 || now == files || focus == "cmndSave" || editorFocus == "cmndSave",
            "only Save writes a file");
    std::tie(files, editorFocus) = std::tuple(now, focus);
}

// The bytes and the open files that the process holds.
std::pair<std::size_t, std::ptrdiff_t> Held() {
    std::size_t bytes = 0;
#if defined(__SANITIZE_ADDRESS__)
    bytes = __sanitizer_get_current_allocated_bytes();
#endif
    const fs::path open = "/proc/self/fd";
    return {bytes, fs::exists(open) ? std::distance(fs::directory_iterator(open), {}) : 0};
}

class Monkey : public WindowTest {};

TEST_F(Monkey, BreaksNothing) {
    // In bytes, once every window is closed. Some of the toolkit's caches fill late, but once.
    constexpr std::size_t kMostGrowth = 5'000'000;
    std::pair<std::size_t, std::ptrdiff_t> early, late;
    const auto step = [&] {
        if (++number > kEvents) return false;
        line.clear();
        try {
            try {
                Draw();
            } catch (const std::runtime_error& gone) {
                Note(std::string("- ") + gone.what());  // a window went in the middle of it
            }
            if (!robot::Shown("frmMain")) return true;
            CheckState();
            CheckFiles();
        } catch (const std::exception& broken) {
            TellAndEnd(broken.what());
        }
        return number != kEvents / 4 && number != kEvents / 4 * 3;
    };
    dice.seed(static_cast<unsigned long>(kSeed));
    folder = Folder;
    fs::copy(ORVANE_SOURCE_FOLDER "/data", folder / "program", fs::copy_options::recursive);
    robot::Hurry();
    robot::WhenToolkitWarns([](const std::string& warning) { TellAndEnd("the toolkit warns: " + warning); });
    robot::WhenMessageComes([] { robot::KeyInMessage(OneOf(std::to_array({"Return", "Escape", "Space"}))); });
    std::thread([] {
        for (long seen = -1; seen != number; std::this_thread::sleep_for(kPatience)) seen = number;
        TellAndEnd("hangs");
    }).detach();
    while (number < kEvents) {
        Show<frmMain>();
        const bool ended = robot::Live(step);
        EXPECT_TRUE(!ended || ShownForms().empty());
        Each([]<class Form>() { platform::UnloadForm<Form>(); });
        robot::Live([] { return false; });  // until they are gone
        if (number == kEvents / 4) early = Held();
        if (number == kEvents / 4 * 3) late = Held();
    }
    std::cout << "after a quarter and three quarters of the events: " << early.first << " and " << late.first
              << " bytes, " << early.second << " and " << late.second << " open files\n";
    EXPECT_LE(late.first, early.first + kMostGrowth);
    EXPECT_LE(late.second, early.second);
}

}  // namespace
