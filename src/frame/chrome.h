#pragma once

#include "frame/control_table.h"
#include "frame/mdlDeclars.h"

namespace orvane {

// What all themed windows have in common: the frame, the title that drags, the label-buttons, the hints in
// the status line, and the roll-up. Its controls are lblTitle, Cmnd(3), Cmnd(4) and Status of the window's
// table.
class ThemedForm : public Window {
 public:
    // The grab point of a title drag is one for all windows, but for a window that brings its own.
    explicit ThemedForm(const WindowTable& table, std::int32_t& grabX = DragX, std::int32_t& grabY = DragY);

    void CloseFromOutside() override;

 protected:
    // Of what Cmnd an index means, the part that is alike everywhere: 2 and 3 hide the window, 4 rolls it up
    // or down.
    virtual void Cmnd_Click(int Index);

    platform::Label& lblTitle = The<platform::Label>("lblTitle");
    platform::Label& Status = The<platform::Label>("Status");

 private:
    void lblTitle_MouseDown(float X, float Y);
    void lblTitle_MouseMove(float X, float Y);
    void lblTitle_MouseUp();
    void RollUp();

    std::int32_t& grabX_;
    std::int32_t& grabY_;
    platform::Label& rollGlyph_ = The<platform::Label>("Cmnd", 4);
    platform::Shape shpFrame;
};

}  // namespace orvane
