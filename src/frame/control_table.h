#pragma once

// A window as data: the rows that its controls are made from.

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/theme.h"
#include "platform/controls.h"
#include "platform/form.h"
#include "platform/look.h"

namespace orvane {

inline constexpr platform::Font kPlain{"MS Sans Serif", 8};
inline constexpr platform::Font kMedium{"MS Sans Serif", 13.5};
inline constexpr platform::Font kLarge{"MS Sans Serif", 17.25};
inline constexpr platform::Font kFixed{"Fixedsys", 9};

// What a row is made as; an outline is no control.
enum class Made : std::uint8_t { Label, TextBox, List, CheckBox, PushButton, Picture, PictureBox, Outline };

// Where a themed window draws the line round a control: a thin one on its edge, a thick one behind it.
enum class Edge : std::uint8_t { Bare, Thin, Thick };

// All that sets one kind of control apart from another.
struct ControlKind {
    Made As;
    platform::Colors Colors = kControlColors;
    Edge Line = Edge::Bare;
    platform::Label::Style Label{};
    platform::TextBox::Style Box{};
};

namespace Kind {
using platform::Alignment;

// The label that drags the window.
inline constexpr ControlKind Title{Made::Label, kTitleColors, Edge::Thin, {.Align = Alignment::Centre}};
// At the foot of the window.
inline constexpr ControlKind StatusLine{
    Made::Label, kLabelColors, Edge::Bare, {.Align = Alignment::Centre, .Transparent = true, .Status = true}};
// Plain labels of one line, and of several.
inline constexpr ControlKind Caption{Made::Label, kLabelColors, Edge::Bare, {.Transparent = true}};
inline constexpr ControlKind CentredCaption{
    Made::Label, kLabelColors, Edge::Bare, {.Align = Alignment::Centre, .Transparent = true}};
inline constexpr ControlKind RightCaption{
    Made::Label, kLabelColors, Edge::Bare, {.Align = Alignment::Right, .Transparent = true}};
inline constexpr ControlKind Help{
    Made::Label, kLabelColors, Edge::Bare, {.Wrapped = true, .Transparent = true}};
// Labels that are pressed like a button.
inline constexpr ControlKind Button{
    Made::Label, kControlColors, Edge::Thin, {.Align = Alignment::Centre, .Button = true}};
inline constexpr ControlKind LeftButton{Made::Label, kControlColors, Edge::Thin, {.Button = true}};
// In a grid, which has lines of its own: a value, and a button.
inline constexpr ControlKind Cell{Made::Label, kControlColors, Edge::Bare, {.Align = Alignment::Centre}};
inline constexpr ControlKind CellButton{
    Made::Label, kControlColors, Edge::Bare, {.Align = Alignment::Centre, .Button = true}};

inline constexpr ControlKind TextBox{Made::TextBox, kControlColors, Edge::Thick};
// Three characters at most, in the middle.
inline constexpr ControlKind NumberBox{
    Made::TextBox, kControlColors, Edge::Thick, {}, {.Align = Alignment::Centre, .MaxLength = 3}};
// Several lines to be read.
inline constexpr ControlKind ResultBox{
    Made::TextBox, kControlColors, Edge::Thick, {}, {.MultiLine = true, .ReadOnly = true}};
// Several lines with a scroll bar.
inline constexpr ControlKind SheetBox{
    Made::TextBox, kControlColors, Edge::Thick, {}, {.MultiLine = true, .ScrollBar = true}};
// The same, but Tab passes it by.
inline constexpr ControlKind QuestionBox{
    Made::TextBox, kControlColors, Edge::Thick, {}, {.MultiLine = true, .ScrollBar = true, .TabStop = false}};

inline constexpr ControlKind List{Made::List};
inline constexpr ControlKind CheckBox{Made::CheckBox, kControlColors, Edge::Thick};
inline constexpr ControlKind PushButton{Made::PushButton};  // the desktop's own
// Their text is the picture's name.
inline constexpr ControlKind Picture{Made::Picture};
inline constexpr ControlKind PictureBox{Made::PictureBox};
// A rectangle or a line.
inline constexpr ControlKind Outline{Made::Outline};
}  // namespace Kind

// The name of a control, such as "Status", or of one in a control array: {"Cmnd", 3} is "Cmnd(3)".
struct ControlName {
    // Implicit: most rows just say the name. NOLINTNEXTLINE(google-explicit-constructor)
    constexpr ControlName(const char* name) : Array(name) {}
    constexpr ControlName(std::string_view array, int index) : Array(array), Index(index) {}

    std::string Text() const;
    bool operator==(const ControlName&) const = default;

    std::string_view Array;
    int Index = -1;
};

// A row that stands for a control array, one control below the other.
struct ArrayOf {
    int Count = 0;  // 0: a single control
    int Pitch = 0;  // from one to the next, in pixels
    int First = 0;  // the first index
};

struct ControlRow {
    ControlName Name;
    ControlKind What;
    std::string_view Text;  // at the start
    platform::Rect Place;   // left, top, width, height
    platform::Font Font = kPlain;
    ArrayOf Array{};
    std::string_view Spoken{};  // the name for assistive technology where no caption gives one
};

// What the status line shows while the pointer is over a control, and assistive technology says of it.
struct HintRow {
    ControlName Control;  // kBackground stands for the window itself
    std::string_view Text;
};
inline constexpr ControlName kBackground = "Form";

struct WindowTable {
    std::string_view Name;
    std::string_view Caption;  // only the desktop's list of windows shows it
    int Width;                 // of the client area, in pixels
    int Height;
    std::span<const ControlRow> Controls{};
    std::span<const HintRow> Hints{};
    bool Centred = true;
    bool Icon = true;
    // Of shpFrame at the start and of the window and shpFrame when rolled down, in pixels; 0: as the window.
    int FrameWidth = 0;
    int FrameHeight = 0;
    int FullHeight = 0;
};

// A form whose controls come from a table. Only the names in it have to outlive the form.
class TableForm : public platform::Form {
 public:
    TableForm(const WindowTable& table, platform::FormFrame frame);
    ~TableForm() override;

 protected:
    // The control of that name. The name and the type are those of the window's own table.
    template <class T>
    T& The(const ControlName& name) const {
        return dynamic_cast<T&>(Named(name));
    }

    struct NamedControl {
        ControlName Name;
        ControlKind What;
        std::unique_ptr<platform::Control> Made;
    };
    const std::vector<NamedControl>& Controls() const { return controls_; }

 private:
    platform::Control& Named(const ControlName& name) const;
    void Make(const ControlRow& row, bool themed);

    std::vector<NamedControl> controls_;  // in the order of the table
    std::vector<std::unique_ptr<platform::Shape>> outlines_;
};

}  // namespace orvane
