#pragma once

// What the files of this folder share: the window behind a form and that behind a control, and the ways
// between the system's types and those of the headers.

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "platform/form.h"

namespace platform {

std::wstring ToWide(std::string_view text);
std::string FromWide(std::wstring_view text);
std::wstring TextOf(HWND window);

// An event that comes when the first window is on the screen.
HANDLE FirstDrawn();

// A class of windows that draw themselves, of a style besides that of all.
ATOM RegisteredClass(const wchar_t* name, WNDPROC procedure, UINT style = 0);
// Hands the messages of a window to a procedure; gives the one that had them.
WNDPROC Subclassed(HWND window, WNDPROC procedure);

COLORREF ToColorRef(Color color);

// The screen's pixels to one of the layout, as the system has them for all screens.
double Density();
int Scaled(double pixels);
// Edge by edge, so that what touches in the layout touches on the screen.
RECT ScaledRect(const Rect& place);

int WidthOf(const RECT& rect);
int HeightOf(const RECT& rect);

// A font in the screen's pixels; the program keeps each that was asked for. Of another size or width than the
// layout's it is a relative that has outlines.
HFONT FontOf(const Font& font);
HFONT FontOf(const Font& font, int pixels, int percentOfWidth);
int PixelsOf(const Font& font);
// The canvas to measure texts on, which nobody sees. It has the font until the next call.
HDC MeasuringIn(HFONT font);
TEXTMETRICW MetricsOf(HFONT font);
int WidthOf(HFONT font, std::wstring_view text);

void Fill(HDC canvas, const RECT& rect, COLORREF color);
// The outline of a rectangle, a pixel wide inside its edge and so many outside.
void DrawOutline(HDC canvas, const RECT& rect, COLORREF color, int outside = 0);

// A bitmap of 32 bits a pixel, from the top, and its pixels.
struct Bitmap {
    HBITMAP Handle = nullptr;
    std::uint32_t* Pixels = nullptr;
    int Width = 0;
    int Height = 0;
};
Bitmap MakeBitmap(int width, int height);
BITMAPINFO InfoOf(int width, int height);

// What is to be drawn on a window, put there at once at the end of the drawing.
class Drawing {
 public:
    explicit Drawing(HWND window);
    ~Drawing();
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    HDC Canvas() const { return canvas_; }
    const RECT& Area() const { return area_; }

 private:
    HWND window_;
    HDC screen_;
    RECT area_{};
    HDC canvas_;
};

// A caption without the mark of its access key.
struct ParsedCaption {
    std::wstring Text;
    int KeyIndex = -1;  // of the access key's character in Text; -1: no access key

    bool IsKey(wchar_t character) const;
    // With the marks that the system's own drawing of captions reads.
    std::wstring Marked() const;
};
ParsedCaption ParseCaption(std::string_view caption);

// What assistive technology is told of a window.
struct Told {
    std::wstring Name;
    std::wstring Description;
    std::wstring Value;
    std::wstring Action;  // what a press on it is called; empty: none
    long Role = 0;        // 0: as the system says
    long State = 0;       // besides what the system says
};

// The window behind a control, and the control's handlers called for what happens to it.
struct Control::Native {
    enum class Pointer : std::uint8_t {
        Plain,  // presses and clicks come from here
        System  // the window has its own idea of a click
    };
    Native(Form& form, std::string_view name, const Rect& place, const wchar_t* windowClass, DWORD style,
           Pointer pointer, DWORD extendedStyle = 0);
    virtual ~Native();
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    // The control of a window; null for any other window.
    static Native* Of(HWND window);

    // Messages to the window. An overrider hands on what is not its own. A handler of the control may have
    // taken the control away, so nothing may follow the call of one.
    virtual LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam);
    // What the window tells its form.
    virtual void Notified(UINT /*code*/) {}
    virtual void DrawItem(const DRAWITEMSTRUCT& /*item*/) const {}
    // What the program draws of the control.
    virtual void Draw(HDC canvas, const RECT& area);
    // Whether it shows what lies below.
    virtual bool Transparent() const { return false; }
    virtual void FontChanged();
    virtual bool TakesFocus() const { return false; }
    virtual bool TabStop() const { return TakesFocus(); }
    virtual void FocusByKey() { SetFocus(Window); }
    // Whatever is open ends.
    virtual void Close() const {}
    virtual const ParsedCaption* Caption() const { return nullptr; }
    // What the access key of the caption does.
    virtual void AccessKey() {}
    virtual Told Tell() const;
    // What assistive technology does in place of a click.
    virtual void Press();

    void PressLater() const;

    // Draws it anew later, with all that has changed by then, or at once.
    void Invalidate(bool atOnce = false);
    // Leaves to the later controls what they cover.
    void LeaveToLater() const;
    COLORREF Back() const;
    COLORREF Ink() const;
    COLORREF Line() const { return ToColorRef(Look.Line); }

    Control* Owner = nullptr;
    Form::Native* Parent = nullptr;
    const RECT Place;  // in the screen's pixels, from the corner of the form
    HWND Window = nullptr;
    std::string Name;
    Colors Look;
    bool Themed = false;
    Font Face;
    std::wstring SpokenName;
    std::wstring Description;
    int Order = 0;  // among the form's controls and shapes

 protected:
    // What the window does by itself.
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) const;

 private:
    LRESULT HandlePointer(UINT message, WPARAM wParam, LPARAM lParam);
    void DrawAllHere();

    WNDPROC before_ = nullptr;  // the window's own
    Pointer pointer_;
    UINT pressed_ = 0;  // the message that began a press
};

// An outline of some width, centred on the edge of a place.
struct Outline {
    Form::Native* Parent;
    std::string Name;
    Rect Place;
    COLORREF Color;
    int LineWidth;
    int Order = 0;

    void Draw(HDC canvas) const;
};

// The window behind a form.
struct Form::Native {
    Native(Form& form, std::string_view name, std::string_view caption, int width, int height,
           FormFrame frame);
    ~Native();
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static Native* Of(HWND window);
    static std::vector<Native*>& All();

    int Enrol(Control::Native& control);
    void Forget(Control::Native& control);
    int Enrol(Outline& shape);
    void Forget(Outline& shape);

    // Moves the focus to the next control behind the given one that takes it, to the one before or after the
    // one that has it, or to a given one, unless the control that has it holds it back.
    void FocusBehind(const Control::Native& label);
    void FocusNext(bool forward);
    void FocusTo(Control::Native& control);
    // Asks the control that has the focus whether it lets it go, if it was not asked before.
    bool MayLeaveTo(const Control::Native* next);
    // Tells the control that had the focus before, which may hold it back even now.
    void FocusCame(Control::Native& control);
    void PressAccessKey(wchar_t character);
    // The name that the label ahead of a control gives it.
    std::wstring NameFromLabel(const Control::Native& control) const;

    void MoveTo(float left, float top);
    void Centre();
    void ShowAgain();
    void SetHeight(float twips);
    // The outlines between two places of the order.
    void DrawShapes(HDC canvas, int above, int below) const;

    Form* Owner;
    HWND Window = nullptr;
    std::string Name;
    FormFrame Frame;
    float Left = 0;  // in twips, as they were written
    float Top = 0;
    COLORREF Back;
    std::wstring SpokenName;
    std::vector<Control::Native*> Controls;
    std::vector<Outline*> Shapes;
    Control::Native* Focused = nullptr;  // has the focus whenever the form has it

 private:
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam);
    void MoveToFreePlace();
    void Moved();
    void Hidden();
    const Control::Native* letGo_ = nullptr;  // has let the focus go that is on its way
    int lastOrder_ = 0;
    int width_;
    bool placing_ = false;
    bool placed_ = false;  // by the program
    bool shownBefore_ = false;
};

// Ends the process with all that it shows.
[[noreturn]] void EndAtOnce();

// Sent later to a form: a window that cannot be destroyed in the middle of its own message.
inline constexpr UINT kDestroyLater = WM_APP;

// Whether the pointer has moved since it was asked last. The system reports moves of a pointer that stands
// still when windows come and go below it.
bool PointerHasMoved();

}  // namespace platform
