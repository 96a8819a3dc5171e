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
    RightCaption,
    Help,       // a plain label over several lines
    TextBox,    // one line
    NumberBox,  // one line, centred, three characters
    ResultBox,  // several lines, read-only
    List,
    CheckBox
};

struct ControlRow {
    std::string_view Name;
    Kind What;
    std::string_view Text;  // at the start
    platform::Rect Place;   // left, top, width, height
    platform::Font Font = kPlain;
};

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
};

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
        return The<T>(std::string(array) + "(" + std::to_string(index) + ")");
    }

    const WindowTable& Table() const { return table_; }

 private:
    platform::Control& Named(std::string_view name) const;

    const WindowTable& table_;
    std::vector<std::unique_ptr<platform::Control>> controls_;  // one for each row of the table, in its order
    std::vector<std::unique_ptr<platform::Shape>> outlines_;
};

}  // namespace orvane
