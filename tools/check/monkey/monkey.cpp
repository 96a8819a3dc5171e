// A monkey at the mouse and the keyboard. Its events are drawn from a seed and go to the real widgets, and
// after each one everything is looked at that must always hold. The same seed makes the same events.
//     monkey [--seed N] [--events N] [--from N]     from event N on each is printed

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <deque>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <map>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>

#include "monkey/invariants.h"
#include "platform/application.h"
#include "platform/places.h"
#include "platform/random.h"
#include "platform/sound.h"
#include "support/robot.h"
#include "tools.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

using monkey::Require;
using platform::Rect;
using robot::Button;
using robot::Point;
using Text = std::string;

// Milliseconds of the processor that an event may take: most of them, and a key in a box that holds a huge
// text.
constexpr double kSlowest = 250;
constexpr double kSlowestWithHugeText = 2500;

struct Run {
    std::mt19937 Dice;
    long Number = 0, Events = 2000, From = -1, Lives = 0, Boxes = 0;
    Text Line;  // the event under way
    std::deque<Text> Last;
    std::uint64_t Hash = 14695981039346656037U;
    double Slowest = 0;
    bool HugeText = false;  // was pasted since the start
    Text SlowestLine;
    std::atomic<long> Alive = 0;
};
Run run;
unsigned long seed = 1;

// The standard's own distributions differ from library to library.
int Below(std::size_t count) { return static_cast<int>(std::uint64_t{run.Dice()} * count >> 32); }
int Between(int low, int high) { return low + Below(static_cast<std::size_t>(high - low + 1)); }
bool OneIn(int count) { return Below(static_cast<std::size_t>(count)) == 0; }

template <class List>
auto OneOf(const List& list) {
    return list[static_cast<std::size_t>(Below(std::size(list)))];
}

// What stands between blanks.
std::vector<Text> Words(const Text& text) {
    std::istringstream words(text);
    return {std::istream_iterator<Text>(words), {}};
}

// Words for what cannot stand between blanks.
Text Meant(const Text& word) {
    static const std::map<Text, Text> kTexts = {{"NAIVE", "na\u00efve \u05d0\U0001F409.ini"},
                                                {"EMPTY", ""},
                                                {"BLANK", " "},
                                                {"NUL", Text("1\0002", 3)},
                                                {"NULNAME", Text("a\0b", 3)},
                                                {"LINES", "a\r\nb\nc\rd\u2028e\u2029f"},
                                                {"TABS", "\t \u00a0x\u00ad"},
                                                {"MARKS", "&&1 &A"},
                                                {"HEAD", "[HEAD]\r\nitems=7"},
                                                {"BROKEN", "a\nb.ini"},
                                                {"LONG", Text(250, 'q')},
                                                {"NAME", Text(300, 'n')},
                                                {"PATH", Text(5000, 'n')}};
    const auto found = kTexts.find(word);
    return found == kTexts.end() ? word : found->second;
}

void Note(const Text& word) {
    Text& line = run.Line += " ";
    for (const char c : word.substr(0, 40)) line += static_cast<unsigned char>(c) < ' ' ? '.' : c;
    if (word.size() > 40) line += "... (" + std::to_string(word.size()) + ")";
}
void Note(Point at) {
    Note(std::to_string(static_cast<int>(at.X)) + "," + std::to_string(static_cast<int>(at.Y)));
}

Text AnyForm() {
    std::vector<Text> shown;
    for (const monkey::WindowRow& row : monkey::kWindows) {
        if (robot::Shown(row.Name)) shown.emplace_back(row.Name);
    }
    const Text form = OneOf(shown);
    Note(form);
    robot::TurnTo(form);
    return form;
}

bool EndsProgram(const Text& form, const Text& control) {
    return form == "frmMain" && (control == "Cmnd(2)" || control == "Cmnd(3)");
}

// The end comes seldom, or nothing would be old.
Text AnyControl(const Text& form) {
    const std::vector<Text> controls = robot::Controls(form);
    Text control = OneOf(controls);
    if (EndsProgram(form, control) && !OneIn(40)) control = "Cmnd(4)";
    Note(control);
    return control;
}

Point Within(const Rect& rect) {
    Point at;
    at.X = Between(rect.Left, rect.Left + rect.Width - 1);
    at.Y = Between(rect.Top, rect.Top + rect.Height - 1);
    Note(at);
    return at;
}

Button AnyButton() {
    const int drawn = Below(10);
    if (drawn < 8) return Button::Left;
    Note(drawn == 8 ? "middle" : "right");
    return drawn == 8 ? Button::Middle : Button::Right;
}

// If the press closed what was open in another window, the desktop turns to this one only now.
void Press(const Text& form, Point at, Button button = Button::Left) {
    robot::Press(form, at, button);
    robot::TurnTo(form);
}

void ClickAt(const Text& form, Point at, Button button = Button::Left) {
    robot::Move(form, at);
    Press(form, at, button);
    robot::Release(robot::Shown(form) ? form : "frmMain", at, button);
}

void Click() {
    const Text form = AnyForm();
    const Point at = Within(robot::Bounds(form, AnyControl(form)));
    ClickAt(form, at, AnyButton());
}

void DoubleClick() {
    const Text form = AnyForm();
    const Text control = AnyControl(form);
    // The first of two clicks would pick an entry of an open list, and the second do something else.
    if (robot::Popup(form).Width > 0) return robot::Click(form, control);
    robot::DoubleClick(form, control);
    if (robot::Shown(form)) robot::TurnTo(form);
}

void Drag() {
    const Text form = AnyForm();
    const Text control = OneIn(2) && form != "frmEditQuestions" ? "lblTitle" : AnyControl(form);
    const Button button = AnyButton();
    const int reach = OneIn(4) ? 3000 : 60;
    Point at = Within(robot::Bounds(form, control));
    Press(form, at, button);
    for (int moves = Between(1, 6); moves > 0; --moves)
        robot::Move(form, at = Within({-reach, -reach, 2 * reach, 2 * reach}));
    robot::Release(form, at, button);
}

// Something comes between a press and its release.
void Interrupt() {
    const Text form = AnyForm();
    const Point at = Within(robot::Bounds(form, AnyControl(form)));
    Press(form, at);
    const int how = Below(4);
    Note(std::to_string(how));
    if (how == 0 && form != "frmMain") {
        robot::DesktopCloses(form);
        Require(form == "frmEditQuestions" || robot::Pressed(form).empty(), "a press ends with its window");
    }
    if (how == 1) robot::DesktopMoves(form, Between(-50, 700), Between(-50, 700));
    if (how == 2) robot::Key(form, "Tab");
    if (how == 3 && form != "frmEditQuestions") robot::PressByAssistant(form, "Cmnd(4)");
    robot::Release(robot::Shown(form) ? form : "frmMain", at);
}

void Hover() {
    const Text form = AnyForm();
    const Text control = AnyControl(form);
    const bool told = control.starts_with("Cmnd(") && control >= "Cmnd(2)" && control <= "Cmnd(4)";
    robot::Hover(form, control);
    if (told && robot::Popup(form).Width == 0)
        Require(robot::Text(form, "Status").starts_with("Will "), "the status line explains " + control);
}

void OpenTool() {
    const Text button =
        "Cmnd(" + Text(OneOf(std::to_array<const char*>({"0", "1", "5", "6", "7", "8"}))) + ")";
    Note(button);
    robot::Click("frmMain", button);
}

void OpenEditor() {
    if (robot::Shown("frmAling")) robot::Click("frmAling", "Command1");
}

void Close() {
    const Text form = AnyForm();
    if (form == "frmMain" && !OneIn(40)) return;
    OneIn(2) || form == "frmEditQuestions" ? robot::DesktopCloses(form) : robot::Click(form, "Cmnd(3)");
}

void Roll() {
    const Text form = AnyForm();
    if (form != "frmEditQuestions") robot::Click(form, "Cmnd(4)");
}

void MoveWindow() {
    const Text form = AnyForm();
    const Point to = Within({-100, -100, 900, 900});
    robot::DesktopMoves(form, static_cast<int>(to.X), static_cast<int>(to.Y));
}

const std::vector<Text> kKeys = Words(
    "Tab Shift+Tab Return Enter Space Escape Up Down Left Right Home End PgUp PgDown "
    "Shift+Left Shift+Home Shift+End Shift+Down Ctrl+A Ctrl+C Ctrl+X Ctrl+V Ctrl+Z "
    "Ctrl+Shift+Z Backspace Delete Insert Ctrl+Delete Ctrl+Left Ctrl+Tab Ctrl+Backspace "
    "Alt+Down F4 Menu Alt+N Alt+S Alt+P Alt+B Alt+R Alt+F Alt+T Alt+C Alt+Q Alt+O Alt+1 Alt+2 "
    "Alt+3 Alt+4 Alt+X E W 1 Shift+M Ctrl+Home Ctrl+K Ctrl+Y");

void Key() {
    const Text form = AnyForm();
    const Text key = OneOf(kKeys);
    Note(key);
    robot::Key(form, key);
}

void Type() {
    static const std::vector<Text> kLetters =
        Words("0 1 2 3 4 5 6 7 8 9 - + . , e D _ a Z & ß 漢 א \U0001F409 ; =");
    const Text form = AnyForm();
    Text text;
    for (int letters = Between(1, 6); letters > 0; --letters) text += OneOf(kLetters);
    std::ranges::replace(text, '_', ' ');
    Note(text);
    robot::Type(form, text);
}

void Paste() {
    static const std::vector<Text> kRubbish = Words(
        "EMPTY 1e999 9e9 - -7 2.5 1,5 0x10 12345678901234567890 NUL LINES TABS MARKS \u05d0\u05d1\u202e12 "
        "\U0001F409\u0301 HEAD \"quoted\" =;# Question LONG \xff\xfe 99 100 -2147483648");
    static const Text kHuge(100'000, '7');
    const Text form = AnyForm();
    const bool huge = OneIn(100);
    const Text text = huge ? kHuge : Meant(OneOf(kRubbish));
    run.HugeText |= huge;
    Note(text);
    robot::Paste(form, text);
}

void Wipe() {
    const Text form = AnyForm();
    robot::Key(form, "Ctrl+A");
    robot::Key(form, "Delete");
}

void Wheel() {
    const Text form = AnyForm();
    const Text control = AnyControl(form);
    robot::Wheel(form, control, Between(-3, 3));
}

// What is open gets the pointer and the keys.
void InPopup() {
    const Rect open = robot::Popup("frmMain");
    if (open.Width == 0) return;
    if (OneIn(2)) return ClickAt("frmMain", Within(open));
    const Text key =
        OneOf(std::to_array<const char*>({"Up", "Down", "Home", "End", "PgDown", "Return", "Escape", "C"}));
    Note(key);
    robot::Key("frmMain", key);
}

void OpenList() {
    const Text form = AnyForm();
    std::vector<Text> lists = robot::Controls(form);
    std::erase_if(lists, [](const Text& name) { return !name.starts_with("cmb"); });
    if (lists.empty()) return;
    const Text list = OneOf(lists);
    Note(list);
    robot::Click(form, list);
    InPopup();
}

void Assist() {
    const Text form = AnyForm();
    const Text control = AnyControl(form);
    if (control.starts_with("Cmnd(") || control.starts_with("lblInput"))
        robot::PressByAssistant(form, control);
    else if ((control.starts_with("txt") || control.starts_with("cmb")) && robot::Popup(form).Width == 0)
        robot::FocusByAssistant(form, control);
}

void Copy() {
    constexpr std::pair<const char*, const char*> kCopies[] = {
        {"frmDice", "txtResult"}, {"frmStatsGenerator", "txtTextOut"}, {"frmStatsCounter", "txtTextOut"}};
    const auto [form, box] = OneOf(kCopies);
    Note(form);
    const auto canBePressed = [&] { return robot::Shown(form) && robot::Bounds(form).Height > 32; };
    if (!canBePressed() || robot::Popup(form).Width > 0) return;
    robot::TurnTo(form);
    robot::Click(form, "Cmnd(0)");
    const Text copied = robot::Clipboard();
    Require(copied == robot::Text(form, box) && copied.find("\r\n") != copied.npos,
            "the result is on the clipboard");
}

void EnterFileName(const Text& name) {
    robot::Click("frmEditQuestions", "txtFile");
    robot::Key("frmEditQuestions", "Ctrl+A");
    name.empty() ? robot::Key("frmEditQuestions", "Delete") : robot::Paste("frmEditQuestions", name);
}

void LoadOrSave() {
    static const std::vector<Text> kNames = Words(
        "c:\\questions.ini c:\\questions.ini c:\\a.ini d:\\b.ini missing.ini C:/deep/er/x.ini ~/x.ini "
        "~/folder EMPTY BLANK c: con: ..\\..\\..\\x.ini /proc/self/status /dev/null /nowhere/x.ini "
        "HOME/number.ini HOME/pipe NAIVE BROKEN NAME PATH NULNAME ~ ~root/x.ini "
        "c:. "
        "*?<>|.ini");
    if (!robot::Shown("frmEditQuestions") || robot::Popup("frmMain").Width > 0) return;
    Text name = Meant(OneOf(kNames));
    const Text button = OneIn(2) ? "cmndOpen" : "cmndSave";
    Note(name);
    Note(button);
    if (name.starts_with("HOME")) name.replace(0, 4, platform::CurrentPlaces().Home.string());
    EnterFileName(name);
    robot::Click("frmEditQuestions", button);
}

// One step at a time of what an editor is for.
void Edit() {
    constexpr const char* kBoxes[] = {"txtQuestion", "txtAnsver(1)", "txtAnsver(4)", "cmbAling(1)",
                                      "cmbAling(3)"};
    constexpr const char* kWays[] = {"cmndFirst", "cmndPrev", "cmndNext", "cmndLast", "cmndAdd", "cmndDel"};
    const Text form = "frmEditQuestions";
    if (!robot::Shown(form) || robot::Popup("frmMain").Width > 0) return;
    const Text control = OneIn(2) ? OneOf(kBoxes) : OneOf(kWays);
    robot::TurnTo(form);
    Note(control);
    robot::Click(form, control);
    if (control.starts_with("txt")) robot::Type(form, std::to_string(run.Number));
    if (control.starts_with("cmb")) robot::Key(form, "Escape");
    if (control.starts_with("cmb")) robot::Key(form, "Down");
}

// What the finder follows while it is typed.
void Range() {
    if (!robot::Shown("frmRange2Dice") || robot::Popup("frmMain").Width > 0) return;
    const Text control = OneOf(std::to_array<const char*>({"txtFrom", "txtTo", "txtTo", "chkAuto"}));
    const Text number = std::to_string(Between(-30, 200));
    Note(control + " " + number);
    robot::Click("frmRange2Dice", control);
    robot::Key("frmRange2Dice", "Ctrl+A");
    robot::Type("frmRange2Dice", control == "chkAuto" ? "" : number);
}

// Half a name of the list above may be one outside of the monkey's home, and that is the user's.
void KeepToHome() {
    if (!robot::Shown("frmEditQuestions")) return;
    const Text name = robot::Text("frmEditQuestions", "txtFile");
    if (name.starts_with("/") && robot::Popup("frmMain").Width == 0) EnterFileName("c:\\questions.ini");
}

struct Event {
    const char* Name;
    int Weight;
    void (*Do)();
};
constexpr Event kEvents[] = {
    {"click", 30, Click},       {"double click", 4, DoubleClick},
    {"drag", 8, Drag},          {"interrupt", 3, Interrupt},
    {"hover", 4, Hover},        {"open tool", 6, OpenTool},
    {"editor", 6, OpenEditor},  {"close", 3, Close},
    {"roll", 3, Roll},          {"move", 2, MoveWindow},
    {"key", 20, Key},           {"type", 10, Type},
    {"paste", 6, Paste},        {"wipe", 2, Wipe},
    {"wheel", 4, Wheel},        {"in popup", 8, InPopup},
    {"open list", 5, OpenList}, {"assist", 4, Assist},
    {"copy", 2, Copy},          {"file", 4, LoadOrSave},
    {"edit", 16, Edit},         {"range", 4, Range},
};

void PrintLast() {
    std::cerr << "The last events of seed " << seed << ":\n";
    for (const Text& line : run.Last) std::cerr << "  " << line << '\n';
    std::cerr << "  " << run.Line << std::endl;
}

void PrintLastAndEnd(const Text& why) {
    std::cerr << "Event " << run.Number << ": " << why << '\n';
    PrintLast();
    std::_Exit(1);
}

void Draw() {
    int drawn = 0;
    for (const Event& event : kEvents) drawn += event.Weight;
    drawn = Below(static_cast<std::size_t>(drawn));
    const Event* event = std::begin(kEvents);
    while (drawn >= event->Weight) drawn -= event++->Weight;
    run.Line = std::to_string(run.Number) + " " + event->Name + ":";
    KeepToHome();
    event->Do();
}

// The end of the line tells what came of the event, so that two runs with the same hash went the same way.
void NoteState() {
    std::uint64_t texts = 0;
    for (const monkey::WindowRow& row : monkey::kWindows) {
        const platform::Form* form = row.Get();
        if (form == nullptr || !form->Visible()) continue;
        Text state = std::to_string(form->Left()) + std::to_string(form->Top()) + robot::Focus(row.Name);
        if (row.Name != "frmEditQuestions") state += robot::Text(row.Name, "Status");
        for (const char c : state) texts = texts * 31 + static_cast<unsigned char>(c);
    }
    for (const char c : run.Line + std::to_string(texts))
        run.Hash = (run.Hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
}

bool Step() {
    run.Alive = ++run.Number;
    monkey::BeforeEvent();
    const std::clock_t start = std::clock();
    try {
        try {
            Draw();
        } catch (const std::runtime_error& gone) {
            Note(Text("- ") + gone.what());  // a window went in the middle of it
        }
        const double took = 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        if (took > run.Slowest) {
            run.Slowest = took;
            run.SlowestLine = run.Line;
        }
        if (run.From >= 0 && run.Number >= run.From) std::cout << run.Line << '\n';
        NoteState();
        if (!robot::Shown("frmMain")) return true;
        monkey::CheckAll();
        Require(took <= (run.HugeText ? kSlowestWithHugeText : kSlowest),
                "took " + std::to_string(took) + " ms");
    } catch (const std::exception& broken) {
        PrintLastAndEnd(broken.what());
    }
    run.Last.push_back(run.Line);
    if (run.Last.size() > 20) run.Last.pop_front();
    if (run.Number % 20'000 == 0) std::cerr << run.Number << " events\n";
    return run.Number < run.Events;
}

void Live() {
    ++run.Lives;
    run.HugeText = false;
    monkey::kWindows[0].Open();
    const bool ended = robot::Live(Step);
    if (ended && !robot::ShownWindows().empty()) PrintLastAndEnd("nothing stays on the screen after the end");
    monkey::ForgetProgram();
}

void WatchForHang() {
    std::thread([] {
        constexpr std::chrono::seconds kPatience(30);
        for (long seen = -1; seen != run.Alive;) {
            seen = run.Alive;
            std::this_thread::sleep_for(kPatience);
        }
        PrintLastAndEnd("hangs");
    }).detach();
}

// A home and a program's folder of the monkey's own.
std::filesystem::path MakePlaces() {
    namespace fs = std::filesystem;
    const fs::path home = fs::temp_directory_path() / ("monkey-" + std::to_string(std::random_device()()));
    fs::create_directories(home / "folder");
    fs::copy(PROGRAM_FOLDER, home / "program", fs::copy_options::recursive);
    std::system(("mkfifo " + (home / "pipe").string()).c_str());
    platform::SetPlaces({home / "data", home / "program", home});
    return home;
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i + 1 < argc; i += 2) {
        const Text option = argv[i];
        const long value = std::atol(argv[i + 1]);
        if (option == "--seed") seed = static_cast<unsigned long>(value);
        if (option == "--events") run.Events = value;
        if (option == "--from") run.From = value, run.Events = std::max(run.Events, value + 20);
    }
    run.Dice.seed(seed);
    char offscreen[] = "-platform", plugin[] = "offscreen";
    char* arguments[] = {argv[0], offscreen, plugin, nullptr};
    int count = 3;
    const platform::Application application(count, arguments);
    const std::filesystem::path home = MakePlaces();
    platform::SetRandomSource(
        [draws = std::mt19937(seed)]() mutable { return static_cast<float>(draws() >> 8) / 16777216.0F; });
    platform::SetSoundPlayer([](std::string_view name) {
        if (!std::filesystem::exists(Text(PROGRAM_FOLDER "/sounds/").append(name)))
            PrintLastAndEnd("an unknown sound");
    });
    orvane::frmMain::SetTools(orvane::kTools);
    robot::Hurry();
    robot::WhenToolkitWarns([](const Text& warning) { PrintLastAndEnd("the toolkit warns: " + warning); });
    robot::WhenMessageComes([] {
        ++run.Boxes;
        const Text key = OneOf(std::to_array<const char*>({"", "Return", "Escape", "Space"}));
        if (!key.empty()) robot::KeyInMessage(key);
    });
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(PrintLast);
#endif
    WatchForHang();

    while (run.Number < run.Events) Live();
    robot::Live([] { return false; });  // what has been unloaded goes while the toolkit is there
    std::filesystem::remove_all(home);
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback([] {});  // a leak is no event's
#endif
    std::cout << run.Number << " events of seed " << seed << ", " << run.Lives << " starts, " << run.Boxes
              << " boxes; slowest " << run.Slowest << " ms:" << run.SlowestLine << "; hash " << std::hex
              << run.Hash << std::endl;
}
