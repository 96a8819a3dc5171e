#include "frame/chrome.h"

#include "platform/application.h"

namespace orvane {
namespace {

constexpr float kRolledUpHeight = 480;    // of the window, in twips
constexpr int kRolledUpFrameHeight = 32;  // of shpFrame, in pixels
constexpr std::string_view kFullGlyph = "_";
constexpr std::string_view kRolledUpGlyph = "=";
constexpr std::string_view kDragHint = "Drag and move to move window";

// A size of the table that may be left out.
int Or(int given, int otherwise) { return given == 0 ? otherwise : given; }

}  // namespace

ThemedForm::ThemedForm(const WindowTable& table, std::int32_t& grabX, std::int32_t& grabY)
    : TableForm(table, platform::FormFrame::None),
      grabX_(grabX),
      grabY_(grabY),
      fullHeight_(Or(table.FullHeight, table.Height)),
      shpFrame(*this, "shpFrame",
               {0, 0, Or(table.FrameWidth, table.Width), Or(table.FrameHeight, table.Height)}, kFrameLine,
               kThinLine) {
    SetBackColor(kWindowBack);
    SetSpokenName(lblTitle.Caption());

    lblTitle.MouseDown = [this](float X, float Y) { lblTitle_MouseDown(X, Y); };
    lblTitle.MouseMove = [this](float X, float Y) { lblTitle_MouseMove(X, Y); };
    lblTitle.MouseUp = [this](float, float) { lblTitle_MouseUp(); };

    for (const NamedControl& control : Controls()) {
        if (!control.What.Label.Button) continue;
        auto& button = static_cast<platform::Label&>(*control.Made);
        button.MouseDown = [&button](float, float) { button.SetBorderStyle(1); };
        button.MouseUp = [&button](float, float) { button.SetBorderStyle(0); };
        if (control.Name.Array == "Cmnd")
            button.Click = [this, index = control.Name.Index] { Cmnd_Click(index); };
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
    grabX_ = RoundToLong(X);
    grabY_ = RoundToLong(Y);
}

// The position of the window is in twips and that of the pointer in pixels. They are added as they are: the
// window follows the pointer slowly and comes nearer with each move.
void ThemedForm::lblTitle_MouseMove(float X, float Y) {
    if (lblTitle.BorderStyle() != 1) {
        Status.SetCaption(kDragHint);
        return;
    }
    if (X != static_cast<float>(grabX_)) SetLeft(Left() - static_cast<float>(grabX_) + X);
    if (Y != static_cast<float>(grabY_)) SetTop(Top() - static_cast<float>(grabY_) + Y);
}

void ThemedForm::lblTitle_MouseUp() { lblTitle.SetBorderStyle(0); }

void ThemedForm::Cmnd_Click(int Index) {
    switch (Index) {
        case kCloseButton:
        case kCloseGlyph:
            PlayWave("quit.wav");
            Close();
            break;
        case kRollGlyph:
            PlayWave("click.wav");
            RollUp();
            break;
        default: break;
    }
}

void ThemedForm::CopyResult(const platform::TextBox& box) {
    PlayWave("click.wav");
    platform::SetClipboardText(box.Text());
}

void ThemedForm::RollUp() {
    const bool full = rollGlyph_.Caption() == kFullGlyph;
    rollGlyph_.SetCaption(full ? kRolledUpGlyph : kFullGlyph);
    SetHeight(full ? kRolledUpHeight : static_cast<float>(fullHeight_) * platform::kTwipsPerPixel);
    shpFrame.SetHeight(full ? kRolledUpFrameHeight : fullHeight_);
}

}  // namespace orvane
