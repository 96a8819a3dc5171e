#include <windows.h>

#include <oleacc.h>

#include "platform/controls.h"
#include "platform/win32/theme_style.h"
#include "platform/win32/toolkit.h"

namespace platform {
namespace {

struct ButtonNative : Control::Native {
    ButtonNative(Form& form, std::string_view name, const Rect& place, std::string_view caption, DWORD style)
        : Native(form, name, place, L"BUTTON", style | BS_NOTIFY, Pointer::System),
          Parsed(ParseCaption(caption)) {
        SetWindowTextW(Window, Parsed.Marked().c_str());
    }

    bool TakesFocus() const override { return true; }
    const ParsedCaption* Caption() const override { return &Parsed; }
    // The focus moves before the press, as with a click of the pointer.
    void AccessKey() override {
        Parent->FocusTo(*this);
        if (Parent->Focused == this) Press();
    }
    void Press() override { SendMessageW(Window, BM_CLICK, 0, 0); }

    void Notified(UINT code) override {
        // The system makes a quick second click something else.
        if (code == BN_CLICKED || code == BN_DOUBLECLICKED) Clicked();
    }
    virtual void Clicked() {
        if (Owner->Click) Owner->Click();
    }

    Told Tell() const override {
        Told told = Native::Tell();
        told.Name = Parsed.Text;
        told.Role = ROLE_SYSTEM_PUSHBUTTON;
        told.Action = L"Press";
        return told;
    }

    const ParsedCaption Parsed;
};

struct PushNative : ButtonNative {
    PushNative(Form& form, std::string_view name, const Rect& place, std::string_view caption)
        : ButtonNative(form, name, place, caption, BS_PUSHBUTTON) {}

    // Return, which only the system's own dialogs see to; held down it is one press.
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_KEYDOWN || wParam != VK_RETURN) return Native::Message(message, wParam, lParam);
        if ((HIWORD(lParam) & KF_REPEAT) == 0) Press();
        return 0;
    }
};

// Drawn by the theme. The system's button below it knows presses and the focus, but no state.
struct CheckNative : ButtonNative {
    CheckNative(Form& form, std::string_view name, const Rect& place, std::string_view caption)
        : ButtonNative(form, name, place, caption, BS_OWNERDRAW) {}

    void Clicked() override {
        Checked = !Checked;
        Invalidate();
        NotifyWinEvent(EVENT_OBJECT_STATECHANGE, Window, OBJID_CLIENT, CHILDID_SELF);
        ButtonNative::Clicked();
    }
    void DrawItem(const DRAWITEMSTRUCT& item) const override {
        SelectObject(item.hDC, FontOf(Face));
        DrawCheckBox(item.hDC, item.rcItem, *this,
                     {.Caption = Parsed.Marked(),
                      .Checked = Checked,
                      .Active = (item.itemState & (ODS_FOCUS | ODS_SELECTED)) != 0});
    }
    Told Tell() const override {
        Told told = ButtonNative::Tell();
        told.Role = ROLE_SYSTEM_CHECKBUTTON;
        told.State = Checked ? STATE_SYSTEM_CHECKED : 0;
        told.Action = Checked ? L"Uncheck" : L"Check";
        return told;
    }

    bool Checked = false;
};

}  // namespace

CheckBox::CheckBox(Form& form, std::string_view name, const Rect& place, std::string_view caption)
    : Control(std::make_unique<CheckNative>(form, name, place, caption)) {}

bool CheckBox::Checked() const { return static_cast<CheckNative&>(Toolkit()).Checked; }

PushButton::PushButton(Form& form, std::string_view name, const Rect& place, std::string_view caption)
    : Control(std::make_unique<PushNative>(form, name, place, caption)) {}

}  // namespace platform
