#pragma once

// What the files of this folder share: the widget behind a form, the object behind a control, and the ways
// between the toolkit's types and those of the headers.

#include <QFont>
#include <QHash>
#include <QPalette>
#include <QPoint>
#include <QString>
#include <QWidget>
#include <chrono>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "platform/form.h"

class QPainter;
class QShortcut;

namespace platform {

class FormWidget;

// Line breaks are LF inside the toolkit and CR LF outside.
QString ToQString(std::string_view text);
std::string FromQString(QString text);

QColor ToQColor(Color color);
QFont ToQFont(const Font& font);

// The outline of a rectangle, a pixel wide inside its edge and so many outside. On a screen of broken density
// it is equally wide on all sides.
void DrawOutline(QPainter& painter, const QRect& rect, const QColor& color, int outside = 0);

// A picture of the program's own at the density of a screen.
QPixmap LoadPicture(std::string_view name, qreal density);

// A caption without the mark of its access key.
struct ParsedCaption {
    QString Text;
    int KeyIndex = -1;  // of the access key's character in Text; -1: no access key
    QKeySequence Shortcut() const;
};
ParsedCaption ParseCaption(const QString& caption);

// The object behind a control: it watches the control's widget and calls the control's handlers.
struct Control::Native : QObject {
    enum class Pointer {
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

struct Form::Native {
    FormWidget* Widget = nullptr;
    float Height = 0;  // in twips, as it was written
};

class FormWidget : public QWidget {
 public:
    FormWidget(Form& form, FormFrame frame);

    void Enrol(Control::Native& control);
    void Forget(Control::Native& control);
    Control::Native* Find(const QWidget* widget) const;

    // Moves the focus to the next control behind the given one that takes it.
    void FocusBehind(const QWidget* label);
    // Moves the focus unless the control that has it holds it back.
    void FocusTo(QWidget* widget);
    // Tells the control that had the focus before, which may hold it back even now.
    void FocusCame(Control::Native& control);

    void Orphan() { form_ = nullptr; }
    void MoveTo(float left, float top);
    void Centre();
    float Left() const { return left_; }
    float Top() const { return top_; }
    void ShowAgain();

 protected:
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

 private:
    // Asks the control that has the focus whether it lets it go to the given widget.
    bool MayLeaveTo(const QWidget* next) const;
    void ComeBack();

    Form* form_;
    std::vector<Control::Native*> controls_;
    Control::Native* focused_ = nullptr;  // the last that the focus came to
    float left_ = 0;
    float top_ = 0;
    struct Request {
        QPoint Position;
        std::chrono::steady_clock::time_point At;
    };
    std::deque<Request> requested_;  // positions that the desktop may still report, oldest first
    bool placing_ = false;
    bool shownBefore_ = false;
    std::chrono::steady_clock::time_point settledAt_;  // until then the desktop's place is not the user's
};

}  // namespace platform
