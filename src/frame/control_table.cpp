#include "frame/control_table.h"

#include <algorithm>
#include <stdexcept>

#include "frame/theme.h"

namespace orvane {
namespace {

using platform::Alignment;

platform::Label::Style LabelStyle(Kind kind) {
    switch (kind) {
        case Kind::Title:
        case Kind::Cell: return {.Align = Alignment::Centre};
        case Kind::Button:
        case Kind::CellButton: return {.Align = Alignment::Centre, .Button = true};
        case Kind::LeftButton: return {.Button = true};
        case Kind::StatusLine: return {.Align = Alignment::Centre, .Transparent = true, .Status = true};
        case Kind::CentredCaption: return {.Align = Alignment::Centre, .Transparent = true};
        case Kind::RightCaption: return {.Align = Alignment::Right, .Transparent = true};
        case Kind::Help: return {.Wrapped = true, .Transparent = true};
        default: return {.Transparent = true};
    }
}

platform::TextBox::Style BoxStyle(Kind kind) {
    constexpr int kDigits = 3;
    switch (kind) {
        case Kind::NumberBox: return {.Align = Alignment::Centre, .MaxLength = kDigits};
        case Kind::ResultBox: return {.MultiLine = true, .ReadOnly = true};
        case Kind::SheetBox: return {.MultiLine = true, .ScrollBar = true};
        case Kind::QuestionBox: return {.MultiLine = true, .ScrollBar = true, .TabStop = false};
        default: return {};
    }
}

const platform::Colors& ColorsOf(Kind kind) {
    switch (kind) {
        case Kind::Title: return kTitleColors;
        case Kind::Caption:
        case Kind::CentredCaption:
        case Kind::StatusLine:
        case Kind::RightCaption:
        case Kind::Help: return kLabelColors;
        default: return kControlColors;
    }
}

std::unique_ptr<platform::Control> MakeControl(platform::Form& form, const ControlRow& row, bool themed) {
    switch (row.What) {
        case Kind::Picture: return std::make_unique<platform::Picture>(form, row.Name, row.Place, row.Text);
        case Kind::List: return std::make_unique<platform::DropDownList>(form, row.Name, row.Place);
        case Kind::CheckBox: return std::make_unique<platform::CheckBox>(form, row.Name, row.Place, row.Text);
        case Kind::PushButton:
            return std::make_unique<platform::PushButton>(form, row.Name, row.Place, row.Text);
        case Kind::PictureBox:
            return std::make_unique<platform::PictureBox>(form, row.Name, row.Place, row.Text);
        case Kind::TextBox:
        case Kind::NumberBox:
        case Kind::ResultBox:
        case Kind::SheetBox:
        case Kind::QuestionBox: {
            platform::TextBox::Style style = BoxStyle(row.What);
            style.Framed = !themed;
            auto box = std::make_unique<platform::TextBox>(form, row.Name, row.Place, style);
            box->SetText(row.Text);
            return box;
        }
        default: {
            auto label = std::make_unique<platform::Label>(form, row.Name, row.Place, LabelStyle(row.What));
            label->SetCaption(row.Text);
            return label;
        }
    }
}

// An outline that is wider than its control lies behind it, a thin one on its edge.
bool OutlinedBehind(Kind kind) {
    switch (kind) {
        case Kind::TextBox:
        case Kind::NumberBox:
        case Kind::ResultBox:
        case Kind::SheetBox:
        case Kind::QuestionBox:
        case Kind::CheckBox: return true;
        default: return false;
    }
}

bool OutlinedOnEdge(Kind kind) {
    return kind == Kind::Title || kind == Kind::Button || kind == Kind::LeftButton;
}

}  // namespace

std::string ElementName(std::string_view array, int index) {
    return std::string(array) + "(" + std::to_string(index) + ")";
}

Window::Window(const WindowTable& table, platform::FormFrame frame)
    : Form(table.Name, table.Caption, table.Width, table.Height, frame), table_(table) {
    const bool themed = frame == platform::FormFrame::None;
    for (const ControlRow& row : table.Controls) {
        if (row.Array.Count == 0) Make(row, themed);
        for (int i = 0; i < row.Array.Count; ++i) {
            const std::string name = ElementName(row.Name, row.Array.First + i);
            ControlRow element = row;
            element.Name = name;
            element.Place.Top += i * row.Array.Pitch;
            Make(element, themed);
        }
    }
    for (const HintRow& hint : table.Hints) {
        if (hint.Control != kBackground) Named(hint.Control).SetDescription(hint.Text);
    }
    if (table.Centred) Centre();
    if (table.Icon) SetIcon("logo");
}

Window::~Window() = default;

void Window::Make(const ControlRow& row, bool themed) {
    const auto outline = [&](const std::string& name, int lineWidth) {
        outlines_.push_back(
            std::make_unique<platform::Shape>(*this, name, row.Place, ColorsOf(row.What).Line, lineWidth));
    };
    const std::string name(row.Name);
    if (row.What == Kind::Outline) return outline(name, kThinLine);
    if (themed && OutlinedBehind(row.What)) outline("shp" + name, kBoxLine);
    auto control = MakeControl(*this, row, themed);
    control->SetFont(row.Font);
    if (!row.Spoken.empty()) control->SetSpokenName(row.Spoken);
    if (themed && row.What != Kind::PushButton) control->SetColors(ColorsOf(row.What));
    if (themed && OutlinedOnEdge(row.What)) outline("shp" + name, kThinLine);
    controls_.push_back({name, row.What, std::move(control)});
}

platform::Control& Window::Named(std::string_view name) const {
    const auto found = std::ranges::find(controls_, name, &NamedControl::Name);
    if (found == controls_.end()) throw std::logic_error("no control " + std::string(name));
    return *found->Made;
}

}  // namespace orvane
