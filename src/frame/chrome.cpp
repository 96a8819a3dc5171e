#include "frame/chrome.h"

#include <charconv>

#include "frame/theme.h"

namespace orvane {
namespace {

constexpr float kTwipsPerPixel = 15;
constexpr float kRolledUpHeight = 480;    // of the window, in twips
constexpr int kRolledUpFrameHeight = 32;  // of shpFrame, in pixels
constexpr std::string_view kFullGlyph = "_";
constexpr std::string_view kRolledUpGlyph = "=";
constexpr std::string_view kDragHint = "Drag and move to move window";

constexpr int kCloseButton = 2;
constexpr int kCloseGlyph = 3;
constexpr int kRollGlyph = 4;

// The index in "Cmnd(3)"; -1 for a name that is not of that control array.
int CmndIndex(std::string_view name) {
    constexpr std::string_view kArray = "Cmnd(";
    int index = -1;
    if (name.starts_with(kArray))
        std::from_chars(name.data() + kArray.size(), name.data() + name.size(), index);
    return index;
}

}  // namespace

ThemedForm::ThemedForm(const WindowTable& table)
    : Window(table, platform::FormFrame::None),
      shpFrame(*this, "shpFrame", {0, 0, table.Width, table.Height}, kFrameLine, kThinLine) {
    SetBackColor(kWindowBack);

    lblTitle.MouseDown = [this](float X, float Y) { lblTitle_MouseDown(X, Y); };
    lblTitle.MouseMove = [this](float X, float Y) { lblTitle_MouseMove(X, Y); };
    lblTitle.MouseUp = [this](float, float) { lblTitle_MouseUp(); };

    for (const NamedControl& control : Controls()) {
        if (control.What != Kind::Button && control.What != Kind::CellButton) continue;
        auto& button = static_cast<platform::Label&>(*control.Made);
        button.MouseDown = [&button](float, float) { button.SetBorderStyle(1); };
        button.MouseUp = [&button](float, float) { button.SetBorderStyle(0); };
        if (const int index = CmndIndex(control.Name); index >= 0)
            button.Click = [this, index] { Cmnd_Click(index); };
    }

    for (const HintRow& row : table.Hints) {
        const auto show = [this, text = row.Text](float, float) { Status.SetCaption(text); };
        if (row.Control == kBackground) {
            MouseMove = show;
        } else {
            The<platform::Control>(row.Control).MouseMove = show;
        }
    }
}

void ThemedForm::CloseFromOutside() { Cmnd_Click(kCloseGlyph); }

void ThemedForm::lblTitle_MouseDown(float X, float Y) {
    lblTitle.SetBorderStyle(1);
    DragX = RoundToLong(X);
    DragY = RoundToLong(Y);
}

// The position of the window is in twips and that of the pointer in pixels. They are added as they are: the
// window follows the pointer slowly and comes nearer with each move.
void ThemedForm::lblTitle_MouseMove(float X, float Y) {
    if (lblTitle.BorderStyle() != 1) {
        Status.SetCaption(kDragHint);
        return;
    }
    if (X != static_cast<float>(DragX)) SetLeft(Left() - static_cast<float>(DragX) + X);
    if (Y != static_cast<float>(DragY)) SetTop(Top() - static_cast<float>(DragY) + Y);
}

void ThemedForm::lblTitle_MouseUp() { lblTitle.SetBorderStyle(0); }

void ThemedForm::Cmnd_Click(int Index) {
    switch (Index) {
        case kCloseButton:
        case kCloseGlyph:
            PlayWave("quit.wav");
            Hide();
            break;
        case kRollGlyph:
            PlayWave("click.wav");
            RollUp();
            break;
        default: break;
    }
}

void ThemedForm::RollUp() {
    const bool full = rollGlyph_.Caption() == kFullGlyph;
    const int height = Table().Height;
    rollGlyph_.SetCaption(full ? kRolledUpGlyph : kFullGlyph);
    SetHeight(full ? kRolledUpHeight : static_cast<float>(height) * kTwipsPerPixel);
    shpFrame.SetHeight(full ? kRolledUpFrameHeight : height);
}

}  // namespace orvane
