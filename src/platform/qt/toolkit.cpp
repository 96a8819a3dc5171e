#include "platform/qt/toolkit.h"

#include <png.h>

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QResource>
#include <QShortcut>
#include <cmath>
#include <utility>

#include "platform/qt/theme_style.h"

namespace platform {
namespace {

// The largest that keeps within 15 pixels a line, at exactly 8 a character.
QFont FixedFont() {
    QFont font;
    font.setFamilies({"Liberation Mono", "DejaVu Sans Mono", "monospace"});
    font.setStyleHint(QFont::Monospace);
    for (int size = 13; size > 8; --size) {
        font.setPixelSize(size);
        if (QFontMetricsF(font).height() <= 15) break;
    }
    font.setLetterSpacing(QFont::AbsoluteSpacing, 8.0 - QFontMetricsF(font).horizontalAdvance('0'));
    return font;
}

// What might have been an access key, and is none of this window. The toolkit's boxes would take the letter.
bool IsAltCharacter(const QKeyEvent& key) {
    const Qt::KeyboardModifiers shift = key.modifiers() & (Qt::AltModifier | Qt::ControlModifier);
    return shift == Qt::AltModifier && !key.text().isEmpty() && key.text().front().isPrint();
}

}  // namespace

QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).replace("\r\n", "\n");
}

std::string FromQString(QString text) { return text.replace('\n', "\r\n").toStdString(); }

QColor ToQColor(Color color) { return {color.Red, color.Green, color.Blue}; }

QFont ToQFont(const Font& font) {
    constexpr double kPixelsPerPoint = 96.0 / 72.0;
    if (font.Family == "Fixedsys") {
        static const QFont kFixed = FixedFont();
        return kFixed;
    }
    QFont result;
    result.setFamilies({"Liberation Sans", "Arimo", "Helvetica", "DejaVu Sans", "sans-serif"});
    result.setPixelSize(static_cast<int>(std::lround(font.Points * kPixelsPerPoint)));
    return result;
}

void DrawOutline(QPainter& painter, const QRect& rect, const QColor& color, int outside) {
    const QTransform toScreen = painter.deviceTransform();
    // Rounding leaves at least this many of the screen's pixels to each.
    const int line = static_cast<int>(painter.device()->devicePixelRatioF());
    const QRectF edge = toScreen.mapRect(QRectF(rect));
    const int out = line * outside;
    const QRectF outer =
        QRectF(edge.topLeft().toPoint(), edge.bottomRight().toPoint()).adjusted(-out, -out, out, out);
    const int width = line + out;
    const QTransform back = toScreen.inverted();
    for (const QRectF& side : {QRectF(outer.left(), outer.top(), outer.width(), width),
                               QRectF(outer.left(), outer.bottom() - width, outer.width(), width),
                               QRectF(outer.left(), outer.top(), width, outer.height()),
                               QRectF(outer.right() - width, outer.top(), width, outer.height())})
        painter.fillRect(back.mapRect(side), color);
}

QPixmap LoadPicture(std::string_view name, qreal density) {
    const char* ending = density > 1 ? "@2x.png" : ".png";
    const QByteArray file = QResource(":/assets/" + ToQString(name) + ending).uncompressedData();
    // The toolkit's reader would first open every plug-in for pictures on the machine, and some have twenty.
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    png_image_begin_read_from_memory(&header, file.constData(), static_cast<std::size_t>(file.size()));
    header.format = PNG_FORMAT_RGBA;
    QImage image(static_cast<int>(header.width), static_cast<int>(header.height), QImage::Format_RGBA8888);
    png_image_finish_read(&header, nullptr, image.bits(), 0, nullptr);
    QPixmap picture = QPixmap::fromImage(std::move(image));
    if (density > 1) picture.setDevicePixelRatio(2);
    return picture;
}

ParsedCaption ParseCaption(const QString& caption) {
    for (qsizetype mark = caption.indexOf('&'); mark >= 0; mark = caption.indexOf('&', mark + 1)) {
        if (mark + 1 == caption.size() || !caption[mark + 1].isLetterOrNumber()) continue;
        return {QString(caption).remove(mark, 1), static_cast<int>(mark)};
    }
    return {caption, -1};
}

Control::Native::Native(Form& form, std::string_view name, const Rect& place, QWidget* widget,
                        Pointer pointer)
    : Parent(form.Toolkit().Widget), Widget(widget), pointer_(pointer) {
    widget->setObjectName(ToQString(name));
    widget->setGeometry(place.Left, place.Top, place.Width, place.Height);
    widget->setAttribute(Qt::WA_NoMousePropagation);
    widget->setMouseTracking(true);
    widget->installEventFilter(this);
    Parent->Enrol(*this);
}

void Control::Native::WatchViewport(QWidget* viewport) {
    viewport->setMouseTracking(true);
    viewport->installEventFilter(this);
}

bool Control::Native::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseMove:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease: return HandlePointer(event);
        case QEvent::FocusIn: return !Parent->FocusCame(*this);
        case QEvent::KeyPress: return IsAltCharacter(*static_cast<QKeyEvent*>(event));
        default: return false;
    }
}

bool Control::Native::HandlePointer(QEvent* event) {
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const QPointF at = mouse->position();
    const auto call = [at](const std::function<void(float, float)>& handler) {
        if (handler) handler(static_cast<float>(at.x()), static_cast<float>(at.y()));
    };
    if (event->type() == QEvent::MouseMove) {
        call(Owner->MouseMove);
        return pointer_ == Pointer::Plain;
    }
    if (pointer_ == Pointer::Toolkit) return false;
    // A second button during a press has no part in it.
    if (event->type() != QEvent::MouseButtonRelease) {
        if (pressed_ != Qt::NoButton) return true;
        pressed_ = mouse->button();
        call(Owner->MouseDown);
    } else if (mouse->button() == pressed_) {
        pressed_ = Qt::NoButton;
        call(Owner->MouseUp);
        if (Owner->Click && QRectF(Widget->rect()).contains(at)) Owner->Click();
    }
    return true;
}

void Control::Native::ReleasePress() {
    if (std::exchange(pressed_, Qt::NoButton) != Qt::NoButton && Owner->MouseUp) Owner->MouseUp(0, 0);
}

void Control::Native::SetAccessKey(const ParsedCaption& caption, const std::function<void()>& activated) {
    delete std::exchange(shortcut_, nullptr);
    if (caption.KeyIndex < 0) return;
    shortcut_ = new QShortcut("Alt+" + caption.Text.mid(caption.KeyIndex, 1).toUpper(), Widget);
    connect(shortcut_, &QShortcut::activated, this, activated);
    // Of several with the same key each has its turn.
    connect(shortcut_, &QShortcut::activatedAmbiguously, this, activated);
}

void Control::Native::PressFromOutside() {
    const QPointF middle = QRectF(Widget->rect()).center();
    const auto x = static_cast<float>(middle.x());
    const auto y = static_cast<float>(middle.y());
    if (Owner->MouseDown) Owner->MouseDown(x, y);
    if (Owner->MouseUp) Owner->MouseUp(x, y);
    if (Owner->Click) Owner->Click();
}

Control::Control(std::unique_ptr<Native> native) : native_(std::move(native)) { native_->Owner = this; }

Control::~Control() { native_->Parent->Forget(*native_); }

void Control::SetColors(const Colors& colors) {
    QPalette palette;
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button})
        palette.setColor(role, ToQColor(colors.Back));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(role, ToQColor(colors.Text));
    palette.setColor(QPalette::Mid, ToQColor(colors.Line));
    palette.setColor(QPalette::Highlight, ToQColor(colors.Line).darker(150));
    native_->Widget->setPalette(palette);
    ApplyThemeStyle(*native_->Widget);
}

void Control::SetFont(const Font& font) { native_->Widget->setFont(ToQFont(font)); }

void Control::SetSpokenName(std::string_view name) { native_->Widget->setAccessibleName(ToQString(name)); }

void Control::SetDescription(std::string_view text) {
    native_->Widget->setAccessibleDescription(ToQString(text));
}

}  // namespace platform
