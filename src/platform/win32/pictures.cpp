#include <windows.h>

#include <oleacc.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/controls.h"
#include "platform/win32/toolkit.h"

namespace platform {
namespace {

// A picture of the resources, all of its pixels with their transparency multiplied in.
Bitmap FromResources(const std::wstring& name) {
    const auto source = static_cast<HBITMAP>(
        LoadImageW(GetModuleHandleW(nullptr), name.c_str(), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    DIBSECTION section{};
    GetObjectW(source, sizeof section, &section);
    const Bitmap bitmap = MakeBitmap(section.dsBm.bmWidth, section.dsBm.bmHeight);
    BITMAPINFO wanted = InfoOf(bitmap.Width, bitmap.Height);
    const HDC canvas = CreateCompatibleDC(nullptr);
    GetDIBits(canvas, source, 0, static_cast<UINT>(bitmap.Height), bitmap.Pixels, &wanted, DIB_RGB_COLORS);
    DeleteDC(canvas);
    DeleteObject(source);
    const bool opaque = section.dsBm.bmBitsPixel != 32;
    for (std::uint32_t& pixel :
         std::span(bitmap.Pixels, static_cast<std::size_t>(bitmap.Width * bitmap.Height))) {
        const std::uint32_t alpha = opaque ? 255 : pixel >> 24;
        std::uint32_t result = alpha << 24;
        for (const int shift : {0, 8, 16}) result |= ((pixel >> shift & 255) * alpha + 127) / 255 << shift;
        pixel = result;
    }
    return bitmap;
}

// Each pixel becomes the mean of those that it covers.
Bitmap Resized(const Bitmap& source, int width, int height) {
    const Bitmap result = MakeBitmap(width, height);
    const double stepX = static_cast<double>(source.Width) / width;
    const double stepY = static_cast<double>(source.Height) / height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            double sums[4]{}, area = 0;
            for (int v = static_cast<int>(y * stepY); v < std::min<double>(source.Height, (y + 1) * stepY);
                 ++v) {
                const double tall = std::min((y + 1) * stepY, v + 1.0) - std::max(y * stepY, v * 1.0);
                for (int u = static_cast<int>(x * stepX); u < std::min<double>(source.Width, (x + 1) * stepX);
                     ++u) {
                    const double part =
                        tall * (std::min((x + 1) * stepX, u + 1.0) - std::max(x * stepX, u * 1.0));
                    const std::uint32_t pixel = source.Pixels[v * source.Width + u];
                    for (int i = 0; i < 4; ++i) sums[i] += part * (pixel >> 8 * i & 255);
                    area += part;
                }
            }
            std::uint32_t& pixel = result.Pixels[y * width + x];
            for (int i = 0; i < 4; ++i)
                pixel |= static_cast<std::uint32_t>(std::lround(sums[i] / area)) << 8 * i;
        }
    }
    return result;
}

Bitmap PictureOf(std::string_view name, int width, int height) {
    const Bitmap source = FromResources(ToWide(name) + (Density() > 1 ? L"2X" : L""));
    if (source.Width == width && source.Height == height) return source;
    const Bitmap fitting = Resized(source, width, height);
    DeleteObject(source.Handle);
    return fitting;
}

void Put(HDC canvas, const Bitmap& picture) {
    const HDC from = CreateCompatibleDC(canvas);
    const HGDIOBJ before = SelectObject(from, picture.Handle);
    GdiAlphaBlend(canvas, 0, 0, picture.Width, picture.Height, from, 0, 0, picture.Width, picture.Height,
                  {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA});
    SelectObject(from, before);
    DeleteDC(from);
}

// The window passes pictures by that nobody could name.
Told TellPicture(const Control::Native& picture, Told told) {
    told.Role = ROLE_SYSTEM_GRAPHIC;
    told.State = picture.SpokenName.empty() ? STATE_SYSTEM_INVISIBLE : 0;
    return told;
}

struct PictureNative : Control::Native {
    PictureNative(Form& form, std::string_view name, const Rect& place, std::string_view picture)
        : Native(form, name, place, nullptr, 0, Pointer::Plain), File(picture) {}

    void Draw(HDC canvas, const RECT& area) override {
        // The same picture may stand in many places.
        static std::map<std::tuple<std::string, int, int>, Bitmap> loaded;
        const int width = WidthOf(area), height = HeightOf(area);
        Bitmap& picture = loaded[{File, width, height}];
        if (picture.Handle == nullptr) picture = PictureOf(File, width, height);
        Put(canvas, picture);
    }
    bool Transparent() const override { return true; }
    Told Tell() const override { return TellPicture(*this, Native::Tell()); }

    const std::string File;
};

// A picture that takes strokes.
struct CanvasNative : Control::Native {
    CanvasNative(Form& form, std::string_view name, const Rect& place, std::string_view picture)
        : Native(form, name, place, nullptr, 0, Pointer::Plain), File(picture) {}
    ~CanvasNative() override { DeleteObject(Bits.Handle); }

    void Draw(HDC canvas, const RECT& /*area*/) override {
        Load();
        Put(canvas, Bits);
    }
    Told Tell() const override { return TellPicture(*this, Native::Tell()); }

    void Load() {
        if (Bits.Handle != nullptr) return;
        RECT area;
        GetClientRect(Window, &area);
        Bits = PictureOf(File, WidthOf(area), HeightOf(area));
    }
    void Clear() {
        DeleteObject(Bits.Handle);
        Bits = {};
        Invalidate();
    }

    const std::string File;
    Bitmap Bits;
};

std::uint32_t Pixel(Color color) {
    return 0xFF000000U | static_cast<std::uint32_t>(color.Red << 16 | color.Green << 8 | color.Blue);
}

}  // namespace

Picture::Picture(Form& form, std::string_view name, const Rect& place, std::string_view picture)
    : Control(std::make_unique<PictureNative>(form, name, place, picture)) {}

PictureBox::PictureBox(Form& form, std::string_view name, const Rect& place, std::string_view picture)
    : Control(std::make_unique<CanvasNative>(form, name, place, picture)) {}

void PictureBox::SetPen(int width, PenMode mode) {
    width_ = width;
    mode_ = mode;
}

void PictureBox::Box(float x1, float y1, float x2, float y2, Color color) {
    const auto round = [](float value) { return static_cast<int>(std::lround(value)); };
    const int left = std::min(round(x1), round(x2)), right = std::max(round(x1), round(x2));
    const int top = std::min(round(y1), round(y2)), bottom = std::max(round(y1), round(y2));
    if (left == right || top == bottom) return;
    auto& canvas = static_cast<CanvasNative&>(Toolkit());
    canvas.Load();
    const Bitmap& bits = canvas.Bits;
    for (int y = std::max(0, Scaled(top)); y < std::min(bits.Height, Scaled(bottom + 1)); ++y) {
        for (int x = std::max(0, Scaled(left)); x < std::min(bits.Width, Scaled(right + 1)); ++x) {
            std::uint32_t& pixel = bits.Pixels[y * bits.Width + x];
            pixel = mode_ == PenMode::Xor ? pixel ^ (Pixel(color) & 0xFFFFFF) : Pixel(color);
        }
    }
    canvas.Invalidate();
}

// A pixel takes as much of the colour as the line covers of it, told by the distance of its middle from the
// line's; a pixel cannot be turned round in part.
void PictureBox::Line(float x1, float y1, float x2, float y2, Color color) {
    auto& canvas = static_cast<CanvasNative&>(Toolkit());
    canvas.Load();
    const Bitmap& bits = canvas.Bits;
    // A coordinate names the middle of a pixel.
    const double density = Density();
    const double fromX = (x1 + 0.5) * density, fromY = (y1 + 0.5) * density;
    const double wayX = (x2 - x1) * density, wayY = (y2 - y1) * density;
    const double square = wayX * wayX + wayY * wayY;
    const double half = width_ * density / 2;
    // The pixels between which it lies on one side of the picture.
    const auto reach = [half](double from, double way, int size) {
        const double least = std::min(from, from + way) - half - 1,
                     most = std::max(from, from + way) + half + 1;
        return std::pair(static_cast<int>(std::clamp<double>(least, 0, size)),
                         static_cast<int>(std::clamp<double>(most, 0, size)));
    };
    const auto [left, right] = reach(fromX, wayX, bits.Width);
    const auto [top, bottom] = reach(fromY, wayY, bits.Height);
    for (int y = top; y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            const double toX = x + 0.5 - fromX, toY = y + 0.5 - fromY;
            const double along = square == 0 ? 0 : std::clamp((toX * wayX + toY * wayY) / square, 0.0, 1.0);
            const double distance = std::hypot(toX - along * wayX, toY - along * wayY);
            const double covered = std::clamp(half + 0.5 - distance, 0.0, 1.0);
            std::uint32_t& pixel = bits.Pixels[y * bits.Width + x];
            if (mode_ == PenMode::Xor) {
                if (covered >= 0.5) pixel ^= Pixel(color) & 0xFFFFFF;
                continue;
            }
            std::uint32_t mixed = 0xFF000000U;
            for (const int shift : {0, 8, 16}) {
                const double old = pixel >> shift & 255, ink = Pixel(color) >> shift & 255;
                mixed |= static_cast<std::uint32_t>(std::lround(old + (ink - old) * covered)) << shift;
            }
            pixel = mixed;
        }
    }
    canvas.Invalidate();
}

void PictureBox::Cls() { static_cast<CanvasNative&>(Toolkit()).Clear(); }

void Outline::Draw(HDC canvas) const {
    // An outline that reaches over the form's edge is closed on the edge.
    RECT area, form;
    GetClientRect(Parent->Window, &form);
    area = ScaledRect(Place);
    area.right = std::min(area.right, form.right);
    DrawOutline(canvas, area, Color, LineWidth / 2);
}

struct Shape::Native {
    Outline Line;
};

Shape::Shape(Form& form, std::string_view name, const Rect& place, Color color, int lineWidth)
    : native_(new Native{{&form.Toolkit(), std::string(name), place, ToColorRef(color), lineWidth}}) {
    native_->Line.Order = form.Toolkit().Enrol(native_->Line);
}

Shape::~Shape() { native_->Line.Parent->Forget(native_->Line); }

void Shape::SetHeight(int height) {
    native_->Line.Place.Height = height;
    RedrawWindow(native_->Line.Parent->Window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

}  // namespace platform
