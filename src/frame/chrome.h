#pragma once

#include "frame/control_table.h"
#include "frame/mdlDeclars.h"

namespace orvane {

// What all themed windows have in common: the frame, the title that drags, the label-buttons, the hints in
// the status line, and the roll-up. Its controls are lblTitle, Cmnd(3), Cmnd(4) and Status of the window's
// table.
class ThemedForm : public TableForm {
 public:
    // The grab point of a title drag is one for all windows, but for a window that brings its own.
    explicit ThemedForm(const WindowTable& table, std::int32_t& grabX = DragX, std::int32_t& grabY = DragY);

    void CloseFromOutside() override;

 protected:
    // Of what Cmnd an index means, the part that is alike everywhere: 2 and 3 close the window, 4 rolls it up
    // or down.
    virtual void Cmnd_Click(int Index);

    // What closing is, behind its sound: the window hides and keeps all that it holds.
    virtual void Close() { Hide(); }

    // What "Copy Result" does with a box.
    static void CopyResult(const platform::TextBox& box);

    platform::Label& lblTitle = The<platform::Label>("lblTitle");
    platform::Label& Status = The<platform::Label>("Status");

 private:
    static constexpr int kCloseButton = 2;
    static constexpr int kCloseGlyph = 3;
    static constexpr int kRollGlyph = 4;

    void lblTitle_MouseDown(float X, float Y);
    void lblTitle_MouseMove(float X, float Y);
    void lblTitle_MouseUp();
    void RollUp();

    std::int32_t& grabX_;
    std::int32_t& grabY_;
    const int fullHeight_;  // in pixels
    platform::Label& rollGlyph_ = The<platform::Label>({"Cmnd", kRollGlyph});
    platform::Shape shpFrame;
};

}  // namespace orvane
