#include "platform/qt/form_widget.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "platform/free_place.h"
#include "platform/qt/label.h"
#include "platform/qt/toolkit.h"

namespace platform {
namespace {

constexpr int kWidestFrame = 50;               // pixels that a window manager may put round a window
constexpr QMargins kUsualFrame(5, 5, 15, 45);  // with some room, since it is not known before it is there

const QScreen* PointersScreen() {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    return screen != nullptr ? screen : QGuiApplication::primaryScreen();
}

Rect ToRect(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

// Where on the pointer's screen a window of that size covers none of the program's, as near as can be to the
// one that the user is in.
std::optional<Rect> PlaceFor(const QSize& size) {
    const QScreen* screen = PointersScreen();
    if (screen == nullptr) return std::nullopt;
    std::vector<Rect> taken;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && !window->isMinimized()) taken.push_back(ToRect(window->frameGeometry()));
    }
    const Rect area = ToRect(screen->availableGeometry());
    const QWidget* active = QApplication::activeWindow();
    return FreePlace(area, size.width(), size.height(), taken,
                     active != nullptr ? ToRect(active->frameGeometry()) : area);
}

float ToTwips(int pixels) { return static_cast<float>(pixels) * kTwipsPerPixel; }
int ToPixels(float twips) { return static_cast<int>(std::lround(twips / kTwipsPerPixel)); }

bool TakesFocus(const Control::Native& control) { return control.Widget->focusPolicy() != Qt::NoFocus; }

// The label whose access key leads to the next control that is made and takes the focus, if there is one.
const LabelWidget* LabelAhead(const std::vector<Control::Native*>& controls) {
    for (auto control = controls.rbegin(); control != controls.rend() && !TakesFocus(**control); ++control) {
        const auto* label = dynamic_cast<const LabelWidget*>((*control)->Widget);
        if (label != nullptr && label->Parsed().KeyIndex >= 0) return label;
    }
    return nullptr;
}

}  // namespace

FormWidget::FormWidget(Form& form, Qt::WindowFlags flags) : QWidget(nullptr, flags), form_(&form) {
    setMouseTracking(true);
}

void FormWidget::Enrol(Control::Native& control) {
    // A button has a name of its own.
    if (TakesFocus(control) && !control.Widget->inherits("QAbstractButton")) {
        if (const LabelWidget* label = LabelAhead(controls_))
            control.Widget->setAccessibleName(QString(label->Parsed().Text).remove(':').trimmed());
    }
    controls_.push_back(&control);
}

void FormWidget::Forget(Control::Native& control) {
    std::erase(controls_, &control);
    if (focused_ == &control) focused_ = nullptr;
}

Control::Native* FormWidget::Find(const QWidget* widget) const {
    const auto found = std::ranges::find(controls_, widget, &Control::Native::Widget);
    return found == controls_.end() ? nullptr : *found;
}

void FormWidget::FocusBehind(const QWidget* label) {
    const auto start = std::ranges::find(controls_, label, &Control::Native::Widget);
    const auto next = std::ranges::find_if(
        start, controls_.end(), [](const Control::Native* control) { return TakesFocus(*control); });
    if (next != controls_.end()) FocusTo((*next)->Widget);
}

bool FormWidget::FocusTo(QWidget* widget, Qt::FocusReason reason) {
    widget->setFocus(reason);
    // In a window that the desktop has not turned to yet the toolkit would tell of it only then.
    if (Control::Native* control = Find(focusWidget())) FocusCame(*control);
    return focusWidget() == widget;
}

// The one that had the focus keeps it in its own eyes while a list is open or the desktop turns to another
// window.
bool FormWidget::FocusCame(Control::Native& control) {
    Control::Native* left = std::exchange(focused_, &control);
    if (left == nullptr || left == &control) return true;
    if (left->Owner->Validate && !left->Owner->Validate()) {
        focused_ = left;
        left->Widget->setFocus();
        return false;
    }
    if (left->Owner->LostFocus) left->Owner->LostFocus();
    return true;
}

// A press moves the focus before the widget sees it, and is nobody's where the focus is held back.
bool FormWidget::eventFilter(QObject* watched, QEvent* event) {
    if (watched != windowHandle() ||
        (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonDblClick)) {
        return QWidget::eventFilter(watched, event);
    }
    QWidget* target = childAt(static_cast<QMouseEvent*>(event)->position().toPoint());
    while (target != nullptr && target != this && (target->focusPolicy() & Qt::ClickFocus) == 0)
        target = target->parentWidget();
    return target != nullptr && target != this && !FocusTo(target, Qt::MouseFocusReason);
}

void FormWidget::mouseMoveEvent(QMouseEvent* event) {
    if (form_ == nullptr || !form_->MouseMove) return;
    form_->MouseMove(static_cast<float>(event->position().x()), static_cast<float>(event->position().y()));
}

void FormWidget::MoveTo(float left, float top) {
    left_ = left;
    top_ = top;
    const QPoint position(ToPixels(left), ToPixels(top));
    if (position == pos()) return;
    requested_.push_back({position, std::chrono::steady_clock::now()});
    placing_ = true;
    move(position);
    placing_ = false;
}

void FormWidget::Centre() {
    const QScreen* screen = PointersScreen();
    if (screen == nullptr) return;
    const QRect area = screen->geometry();
    const int left = area.x() + ((area.width() - width()) / 2);
    const int top = area.y() + ((area.height() - height()) / 2);
    MoveTo(ToTwips(left), ToTwips(top));
}

// A display server answers each move later, so a report of a position asked for some moves ago is no news.
void FormWidget::moveEvent(QMoveEvent* event) {
    if (placing_) return;
    constexpr auto kLatest = std::chrono::seconds(2);
    const auto now = std::chrono::steady_clock::now();
    while (!requested_.empty() && now - requested_.front().At > kLatest) requested_.pop_front();
    const auto own = std::ranges::find(requested_, event->pos(), &Request::Position);
    if (own != requested_.end()) {
        requested_.erase(requested_.begin(), own + 1);
        return;
    }
    if (event->pos() == QPoint(ToPixels(left_), ToPixels(top_))) return;
    // A tiling window manager puts a new window off by the frame that it takes away again.
    const QPoint off = event->pos() - QPoint(ToPixels(left_), ToPixels(top_));
    const bool byFrame = QRect(0, 0, kWidestFrame, kWidestFrame).contains(off);
    if (now < std::exchange(settlingUntil_, {}) && byFrame) return MoveTo(left_, top_);
    left_ = ToTwips(event->pos().x());
    top_ = ToTwips(event->pos().y());
}

// From then on a move is the user's.
void FormWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange) settlingUntil_ = {};
    QWidget::changeEvent(event);
}

// What a press or a menu began ends with the window.
void FormWidget::hideEvent(QHideEvent* event) {
    for (Control::Native* control : std::vector(controls_)) control->ReleasePress();
    QWidget* popup = QApplication::activePopupWidget();
    if (popup != nullptr && popup->parentWidget() != nullptr && popup->parentWidget()->window() == this)
        popup->close();
    QWidget::hideEvent(event);
}

void FormWidget::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (form_ != nullptr) form_->CloseFromOutside();
}

void FormWidget::ComeBack() {
    const QRect place({ToPixels(left_), ToPixels(top_)}, size());
    move(place.topLeft());
    // Without a place that the program asks for, if only for the one that it has, the window manager would
    // place the window as if it were new.
    windowHandle()->setPosition(windowHandle()->position());
    // The screen that it stood on may have gone meanwhile.
    const auto shows = [&](const QScreen* screen) { return screen->geometry().intersects(place); };
    if (std::ranges::none_of(QGuiApplication::screens(), shows)) Centre();
}

void FormWidget::ComeUp() {
    const QMargins frame = windowFlags().testFlag(Qt::FramelessWindowHint) ? QMargins() : kUsualFrame;
    if (const auto place = PlaceFor(size().grownBy(frame)))
        MoveTo(ToTwips(place->Left + frame.left()), ToTwips(place->Top + frame.top()));
}

void FormWidget::ShowAgain() {
    if (!isVisible()) {
        if (shownBefore_) {
            ComeBack();
        } else if (!testAttribute(Qt::WA_Moved)) {
            ComeUp();
        }
        if (testAttribute(Qt::WA_Moved))
            settlingUntil_ = std::chrono::steady_clock::now() + std::chrono::seconds(1);
        if (focusWidget() == nullptr && focusNextPrevChild(true)) focused_ = Find(focusWidget());
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    if (!shownBefore_) windowHandle()->installEventFilter(this);
    shownBefore_ = true;
    raise();
    activateWindow();
}

void FormWidget::SetHeight(float height) { setFixedHeight(std::max(1, ToPixels(height))); }

void FormWidget::Orphan() {
    form_ = nullptr;
    hide();
    deleteLater();
}

}  // namespace platform
