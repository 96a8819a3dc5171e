#pragma once

// What the files of this folder share: the object behind a control, and the ways between the toolkit's types
// and those of the headers.

#include <QFont>
#include <QPalette>
#include <QString>
#include <QWidget>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/controls.h"
#include "platform/qt/form_widget.h"

class QPainter;
class QShortcut;

namespace platform {

// Line breaks are LF inside the toolkit and CR LF outside.
QString ToQString(std::string_view text);
std::string FromQString(QString text);

QColor ToQColor(Color color);
QFont ToQFont(const Font& font);

// The outline of a rectangle, a pixel wide inside its edge and so many outside, on a screen of broken density
// equally wide on all sides.
void DrawOutline(QPainter& painter, const QRect& rect, const QColor& color, int outside = 0);

// A picture of the program's own at the density of a screen.
QPixmap LoadPicture(std::string_view name, qreal density);

// A caption without the mark of its access key.
struct ParsedCaption {
    QString Text;
    int KeyIndex = -1;  // of the access key's character in Text; -1: no access key
};
ParsedCaption ParseCaption(const QString& caption);

// The object behind a control: it watches the control's widget and calls the control's handlers.
struct Control::Native : QObject {
    enum class Pointer : std::uint8_t {
        Plain,   // presses and clicks come from here
        Toolkit  // the widget has its own idea of a click
    };
    Native(Form& form, std::string_view name, const Rect& place, QWidget* widget, Pointer pointer);

    bool eventFilter(QObject* watched, QEvent* event) override;
    void WatchViewport(QWidget* viewport);
    void SetAccessKey(const ParsedCaption& caption, const std::function<void()>& activated);
    // Ends a press without a click.
    void ReleasePress();
    // What assistive technology does in place of a click.
    void PressFromOutside();

    Control* Owner = nullptr;
    FormWidget* Parent = nullptr;
    QWidget* Widget = nullptr;

 private:
    bool HandlePointer(QEvent* event);

    Pointer pointer_;
    QShortcut* shortcut_ = nullptr;
    Qt::MouseButton pressed_ = Qt::NoButton;
};

}  // namespace platform
