#include "frame/control_table.h"

#include <algorithm>
#include <stdexcept>

namespace orvane {
namespace {

// Nothing for an outline.
std::unique_ptr<platform::Control> MakeControl(platform::Form& form, const ControlRow& row,
                                               std::string_view name, bool themed) {
    switch (row.What.As) {
        case Made::Label: {
            auto label = std::make_unique<platform::Label>(form, name, row.Place, row.What.Label);
            label->SetCaption(row.Text);
            return label;
        }
        case Made::TextBox: {
            platform::TextBox::Style style = row.What.Box;
            style.Framed = !themed;
            auto box = std::make_unique<platform::TextBox>(form, name, row.Place, style);
            box->SetText(row.Text);
            return box;
        }
        case Made::List: return std::make_unique<platform::DropDownList>(form, name, row.Place);
        case Made::CheckBox: return std::make_unique<platform::CheckBox>(form, name, row.Place, row.Text);
        case Made::PushButton: return std::make_unique<platform::PushButton>(form, name, row.Place, row.Text);
        case Made::Picture: return std::make_unique<platform::Picture>(form, name, row.Place, row.Text);
        case Made::PictureBox: return std::make_unique<platform::PictureBox>(form, name, row.Place, row.Text);
        case Made::Outline: break;
    }
    return nullptr;
}

}  // namespace

std::string ControlName::Text() const {
    std::string text(Array);
    if (Index >= 0) text += "(" + std::to_string(Index) + ")";
    return text;
}

TableForm::TableForm(const WindowTable& table, platform::FormFrame frame)
    : Form(table.Name, table.Caption, table.Width, table.Height, frame) {
    const bool themed = frame == platform::FormFrame::None;
    for (const ControlRow& row : table.Controls) {
        if (row.Array.Count == 0) Make(row, themed);
        for (int i = 0; i < row.Array.Count; ++i) {
            ControlRow element = row;
            element.Name.Index = row.Array.First + i;
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

TableForm::~TableForm() = default;

void TableForm::Make(const ControlRow& row, bool themed) {
    const std::string name = row.Name.Text();
    const auto outline = [&](const std::string& shape, int lineWidth) {
        outlines_.push_back(
            std::make_unique<platform::Shape>(*this, shape, row.Place, row.What.Colors.Line, lineWidth));
    };
    if (themed && row.What.Line == Edge::Thick) outline("shp" + name, kBoxLine);
    auto control = MakeControl(*this, row, name, themed);
    if (control == nullptr) return outline(name, kThinLine);
    control->SetFont(row.Font);
    if (!row.Spoken.empty()) control->SetSpokenName(row.Spoken);
    if (themed && row.What.As != Made::PushButton) control->SetColors(row.What.Colors);
    if (themed && row.What.Line == Edge::Thin) outline("shp" + name, kThinLine);
    controls_.push_back({row.Name, row.What, std::move(control)});
}

platform::Control& TableForm::Named(const ControlName& name) const {
    const auto found = std::ranges::find(controls_, name, &NamedControl::Name);
    if (found == controls_.end()) throw std::logic_error("no control " + name.Text());
    return *found->Made;
}

}  // namespace orvane
