#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/controls.h"
#include "platform/look.h"

namespace platform {

inline constexpr float kTwipsPerPixel = 15;

enum class FormFrame : std::uint8_t {
    None,   // the form draws its own frame
    Dialog  // the desktop's title bar with a close box, and a fixed size
};

// A window, hidden until Show. Its Left, Top and Height are in twips, 15 to the pixel, and are remembered as
// they were written, fractions of a pixel included; when the desktop moves the window, they follow it.
class Form {
 public:
    // Width and height are those of the client area, in pixels.
    Form(std::string_view name, std::string_view caption, int width, int height, FormFrame frame);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    // Runs once, after the form's reference has been stored.
    virtual void Form_Load() {}

    // The desktop asks the form to close (window manager, Alt+F4, close box). By itself it does nothing.
    virtual void CloseFromOutside() {}

    // Never waits. Shows the form where it last stood, or brings it forward if it is shown already. The first
    // time one without a place comes up where it covers no window of the program and none covers it, as long
    // as the screen that the pointer is on has such a place.
    void Show();
    // Keeps everything as it is.
    void Hide();

    // Before the first Show: in front of the windows of other programs as well.
    void StayOnTop();
    // Puts the form into the middle of the screen that the pointer is on.
    void Centre();
    // An icon by the name of its picture.
    void SetIcon(std::string_view picture);
    void SetBackColor(Color color);
    // What assistive technology calls the form in place of its caption.
    void SetSpokenName(std::string_view name);

    float Left() const;
    float Top() const;
    void SetLeft(float twips);
    void SetTop(float twips);
    void SetHeight(float twips);

    // The pointer moves over the form's own background; X and Y in pixels.
    std::function<void(float X, float Y)> MouseMove;

    struct Native;
    Native& Toolkit() const { return *native_; }

 private:
    std::unique_ptr<Native> native_;
};

namespace internal {
template <class Window>
std::unique_ptr<Window> reference;
}  // namespace internal

// The one instance of a window. First use creates it hidden, stores it and then runs its Form_Load, so a use
// from inside that, however deep, finds the instance and loads nothing twice.
template <class Window>
Window& TheForm() {
    std::unique_ptr<Window>& form = internal::reference<Window>;
    if (!form) {
        form = std::make_unique<Window>();
        form->Form_Load();
    }
    return *form;
}

// Closes the window and forgets all that it held; the next use starts anew. Of the window's own handlers
// CloseFromOutside may call this, as its last act, and no other.
template <class Window>
void UnloadForm() {
    internal::reference<Window>.reset();
}

}  // namespace platform
