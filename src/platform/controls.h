#pragma once

// The controls of a form. The order of their creation is the tab order, and a later one lies over an earlier
// one. Every text is UTF-8 with CR LF line breaks. A "&" in a caption marks an access key, which moves the
// focus to the next control in tab order that takes it; only the first one of a caption counts.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/look.h"

namespace platform {

class Form;

// What all controls share. A pointer event that a control has no handler for ends there.
class Control {
 public:
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    void SetColors(const Colors& colors);
    void SetFont(const Font& font);

    // For assistive technology only: the name of a control that has no caption of its own or ahead of it, and
    // what is said behind the name. A label's name is always its caption.
    void SetSpokenName(std::string_view name);
    void SetDescription(std::string_view text);

    // X and Y in pixels from the control's corner. The control that got the press gets every move and the
    // release, wherever the pointer is; other buttons have no part in it till then. A press ends with the
    // form: hidden, the control gets the release, at 0, 0.
    std::function<void(float X, float Y)> MouseDown;
    std::function<void(float X, float Y)> MouseMove;
    std::function<void(float X, float Y)> MouseUp;
    // A press that ends on the control, whichever button; a quick second one counts like any other.
    std::function<void()> Click;
    // The focus has gone to another control of the form.
    std::function<void()> LostFocus;
    // The focus goes to another control of the form: false holds it back, and the press or key that moves it
    // does nothing else.
    std::function<bool()> Validate;

    struct Native;
    Native& Toolkit() const { return *native_; }

 protected:
    explicit Control(std::unique_ptr<Native> native);

 private:
    std::unique_ptr<Native> native_;
};

// Text that takes no focus. One of the style Button is a button to assistive technology.
class Label : public Control {
 public:
    struct Style {
        Alignment Align = Alignment::Left;
        bool Wrapped = false;  // over several lines, from the top; else one line, in the middle of the height
        bool Transparent = false;  // shows what lies behind it
        bool Button = false;       // is pressed like a button
        bool Status = false;       // is the form's status line to assistive technology
    };
    Label(Form& form, std::string_view name, const Rect& place, const Style& style);

    std::string Caption() const;
    // A line too wide for the label is drawn narrower, so that it stays whole.
    void SetCaption(std::string_view caption);
    // 1: a thin line round the label; 0: none.
    int BorderStyle() const;
    void SetBorderStyle(int style);
};

// A text of one line or several. The user enters and edits it as anywhere on the desktop: Ctrl+A selects
// all, Ctrl+Z undoes what was entered since the text was set last, and a key with Alt enters nothing. Line
// breaks that are pasted into a box of one line become blanks.
class TextBox : public Control {
 public:
    struct Style {
        Alignment Align = Alignment::Left;
        bool MultiLine = false;
        bool ReadOnly = false;
        bool ScrollBar = false;
        bool TabStop = true;
        bool Framed = false;  // with the desktop's own frame
        int MaxLength = 0;    // for what the user enters, in characters; 0: none
    };
    TextBox(Form& form, std::string_view name, const Rect& place, const Style& style);

    std::string Text() const;
    void SetText(std::string_view text);
    // Typed characters other than digits are refused; what is pasted or set goes in.
    void SetDigitsOnly();

    // Every change of the text, typed or set.
    std::function<void()> Change;
};

// One entry of a list. A letter selects the next entry that begins with it. Click tells a choice: an entry
// clicked on, a key in the closed list, Return in the open one. Whether a letter in the open list is a choice
// by itself is the desktop's.
class DropDownList : public Control {
 public:
    DropDownList(Form& form, std::string_view name, const Rect& place);

    void AddItem(std::string_view text);
    // From 0; -1 when nothing is selected.
    int ListIndex() const;
    // Fires Click like a choice by the user. An index outside the list selects nothing.
    void SetListIndex(int index);
    // The selected entry; empty when nothing is selected.
    std::string Text() const;

    // A key that gives a character, the list being open or closed; comes before the list acts on it.
    std::function<void()> KeyPress;
    // The list is about to open.
    std::function<void()> DropDown;
};

class CheckBox : public Control {
 public:
    CheckBox(Form& form, std::string_view name, const Rect& place, std::string_view caption);

    bool Checked() const;
};

// The desktop's own push button, which Return presses as well as Space.
class PushButton : public Control {
 public:
    PushButton(Form& form, std::string_view name, const Rect& place, std::string_view caption);
};

// A rectangle's outline, centred on the edge of its place. Not a control: the pointer does not see it.
class Shape {
 public:
    Shape(Form& form, std::string_view name, const Rect& place, Color color, int lineWidth);
    ~Shape();
    Shape(const Shape&) = delete;
    Shape& operator=(const Shape&) = delete;

    // In pixels.
    void SetHeight(int height);

 private:
    struct Native;
    std::unique_ptr<Native> native_;
};

// A fixed picture of the program's own, by its name. Assistive technology passes by one without a spoken
// name.
class Picture : public Control {
 public:
    Picture(Form& form, std::string_view name, const Rect& place, std::string_view picture);
};

enum class PenMode : std::uint8_t {
    Copy,
    Xor  // each bit of what is there, where the colour has one, is turned round
};

// A picture that can be drawn on. Coordinates are pixels from its corner, rounded to the nearest.
class PictureBox : public Control {
 public:
    PictureBox(Form& form, std::string_view name, const Rect& place, std::string_view picture);

    // The width is that of lines, in pixels. At the start it is 1, with Xor.
    void SetPen(int width, PenMode mode);
    // A filled box with both corners in it; without width or height it is empty.
    void Box(float x1, float y1, float x2, float y2, Color color);
    // A straight line with round ends; without length it is a dot.
    void Line(float x1, float y1, float x2, float y2, Color color);
    // Back to the bare picture.
    void Cls();

 private:
    int width_ = 1;
    PenMode mode_ = PenMode::Xor;
};

}  // namespace platform
