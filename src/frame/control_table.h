#pragma once

// A window as data: the rows that its controls are made from.

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "platform/form.h"
#include "platform/look.h"

namespace orvane {

inline constexpr platform::Font kPlain{"MS Sans Serif", 8};
inline constexpr platform::Font kMedium{"MS Sans Serif", 13.5};
inline constexpr platform::Font kLarge{"MS Sans Serif", 17.25};
inline constexpr platform::Font kFixed{"Fixedsys", 9};

enum class Kind {
    Picture,  // its text is the picture's name
    Title,    // the label that drags the window
    Button,   // a label that is pressed like a button
    Caption,  // plain labels of one line
    CentredCaption,
    StatusLine,  // at the foot of the window
    RightCaption,
    Help,         // a plain label over several lines
    TextBox,      // one line
    NumberBox,    // one line, centred, three characters
    ResultBox,    // several lines, read-only
    SheetBox,     // several lines, a scroll bar
    QuestionBox,  // the same, but Tab passes it by
    List,
    CheckBox,
    Cell,        // a value in a grid
    CellButton,  // a button in a grid
    LeftButton,  // a button with its text on the left
    PushButton,  // the desktop's own
    PictureBox,  // its text is the picture's name
    Outline      // a rectangle or a line, no control
};

// A row that stands for a control array, one control below the other.
struct ArrayOf {
    int Count = 0;  // 0: a single control
    int Pitch = 0;  // from one to the next, in pixels
    int First = 0;  // the first index
};

struct ControlRow {
    std::string_view Name;
    Kind What;
    std::string_view Text;  // at the start
    platform::Rect Place;   // left, top, width, height
    platform::Font Font = kPlain;
    ArrayOf Array{};
    std::string_view Spoken{};  // the name for assistive technology where no caption gives one
};

// What the status line shows while the pointer is over a control, and assistive technology says of it.
struct HintRow {
    std::string_view Control;  // kBackground stands for the window itself
    std::string_view Text;
};
inline constexpr std::string_view kBackground = "Form";

struct WindowTable {
    std::string_view Name;
    std::string_view Caption;  // only the desktop's list of windows shows it
    int Width;                 // of the client area, in pixels
    int Height;
    std::span<const ControlRow> Controls;
    std::span<const HintRow> Hints;
    bool Centred = true;
    bool Icon = true;
    // Of shpFrame at the start and of the window and shpFrame when rolled down, in pixels; 0: as the window.
    int FrameWidth = 0;
    int FrameHeight = 0;
    int FullHeight = 0;
};

// The name of a control in an array, such as "Cmnd(3)".
std::string ElementName(std::string_view array, int index);

// A window whose controls come from a table.
class Window : public platform::Form {
 public:
    Window(const WindowTable& table, platform::FormFrame frame);
    ~Window() override;

 protected:
    // The control of that name. The name and the type are those of the window's own table.
    template <class T>
    T& The(std::string_view name) const {
        return dynamic_cast<T&>(Named(name));
    }
    template <class T>
    T& The(std::string_view array, int index) const {
        return The<T>(ElementName(array, index));
    }

    const WindowTable& Table() const { return table_; }

    struct NamedControl {
        std::string Name;
        Kind What;
        std::unique_ptr<platform::Control> Made;
    };
    const std::vector<NamedControl>& Controls() const { return controls_; }

 private:
    platform::Control& Named(std::string_view name) const;
    void Make(const ControlRow& row, bool themed);

    const WindowTable& table_;
    std::vector<NamedControl> controls_;  // in the order of the table
    std::vector<std::unique_ptr<platform::Shape>> outlines_;
};

}  // namespace orvane
