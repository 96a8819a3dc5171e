#pragma once

// A user at the mouse and the keyboard, for tests: it finds windows and controls by their names, sends the
// events that a desktop would send, and tells what can be seen. Places are in pixels.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/look.h"

namespace robot {

enum class Button { Left, Middle, Right };

struct Point {
    int X = 0;
    int Y = 0;
};

// The words of a command line that brings a program up without a screen, on a desktop of a language that runs
// from right to left.
std::vector<char*> Arguments(char* program);

// The desktop turns to a window, as it does before a press or a key, unless an open list or menu has them
// all.
void TurnTo(std::string_view form);

// In a window: the pointer goes to a place of the window.
void Move(std::string_view form, Point at);
void Press(std::string_view form, Point at, Button button = Button::Left);
void Release(std::string_view form, Point at, Button button = Button::Left);

// On a control: in its middle, or at a place from its corner.
Point Middle(std::string_view form, std::string_view control);
void Hover(std::string_view form, std::string_view control);
void Click(std::string_view form, std::string_view control, Button button = Button::Left);
void DoubleClick(std::string_view form, std::string_view control);

// Turns the wheel over a control, up for steps above 0.
void Wheel(std::string_view form, std::string_view control, int steps);

// From now on nothing depends on how fast events follow each other: clicks are single ones, letters in a list
// are searched for one by one, and no text is dragged away. For a program that does not wait.
void Hurry();

// A key by its name, such as "Tab", "Alt+N" or "Backspace"; goes to what has the focus in the window, or to
// the message box, open list or menu that has the keys of all.
void Key(std::string_view form, std::string_view key);
void Type(std::string_view form, std::string_view text);
// Puts the text on the clipboard and pastes it.
void Paste(std::string_view form, std::string_view text);
std::string Clipboard();

// Opens a drop-down list with the pointer and picks an entry with it.
void OpenList(std::string_view form, std::string_view control);
void Choose(std::string_view form, std::string_view control, int index);
// The open list or menu, from the corner of the window; without width if there is none. It gets the pointer
// of every window.
platform::Rect Popup(std::string_view form);
// The colour at a place of it.
platform::Color PopupPixel(int x, int y);

// The desktop moves the window, tells it of a place where it no longer is (nothing, where moves are told at
// once), or asks it to close.
void DesktopMoves(std::string_view form, int left, int top);
void DesktopTellsLate(std::string_view form, int left, int top);
void DesktopCloses(std::string_view form);

bool Shown(std::string_view form);
// The shown windows of the program, message boxes included, by name or title.
std::vector<std::string> ShownWindows();
platform::Rect Bounds(std::string_view form);
platform::Rect Bounds(std::string_view form, std::string_view control);
bool OnTop(std::string_view form);
// What a user reads on a control: a caption without the mark of its access key, a text, a selected entry.
std::string Text(std::string_view form, std::string_view control);
// Whether a text of several lines can be read without scrolling, each line on one line.
bool Whole(std::string_view form, std::string_view control);
// The labels, boxes of one line, buttons and lists whose text, or an entry, is drawn beyond the control or
// too small to read.
std::vector<std::string> CutTexts(std::string_view form);
// The controls that lie in the window, in the order in which they were made.
std::vector<std::string> Controls(std::string_view form);
// The labels that show the line of a press.
std::vector<std::string> Pressed(std::string_view form);
// The control with the focus; empty if none has it.
std::string Focus(std::string_view form);
// The colours that are drawn on a part of the window, row by row, and at a place of it; one for each of the
// program's pixels, however dense the screen is.
std::vector<platform::Color> Pixels(std::string_view form, const platform::Rect& part);
platform::Color Pixel(std::string_view form, int x, int y);

// Looks at the next message boxes in the test's way, then closes each by its button.
void WhenMessageComes(std::function<void()> look);
// The text of the box that is on the screen.
std::string MessageText();

// Hands on what the toolkit complains about.
void WhenToolkitWarns(void (*tell)(const std::string& warning));

// How much the program holds of what a leak would take, in bytes of memory or in objects of the system, and
// the most that caches add which fill late.
std::size_t HeldResources();
extern const std::size_t kLateCaches;

// Runs the program's event loop and takes the step whenever it is idle, until that gives false. Gives whether
// the program ended first. A menu that waits for an answer in the middle of a step is closed.
bool Live(const std::function<bool()>& step);

// What assistive technology says behind a control's name, does in place of a click, and the focus that it
// gives.
std::string Description(std::string_view form, std::string_view control);
void PressByAssistant(std::string_view form, std::string_view control);
void FocusByAssistant(std::string_view form, std::string_view control);

}  // namespace robot
