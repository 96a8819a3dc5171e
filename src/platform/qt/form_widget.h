#pragma once

#include <QPoint>
#include <QWidget>
#include <chrono>
#include <deque>
#include <vector>

#include "platform/controls.h"
#include "platform/form.h"

namespace platform {

// The widget behind a form: its place, and which of its controls has the focus.
class FormWidget : public QWidget {
 public:
    FormWidget(Form& form, Qt::WindowFlags flags);

    void Enrol(Control::Native& control);
    void Forget(Control::Native& control);
    Control::Native* Find(const QWidget* widget) const;

    // Moves the focus to the next control behind the given one that takes it.
    void FocusBehind(const QWidget* label);
    // Moves the focus. False if the control that had it holds it back.
    bool FocusTo(QWidget* widget, Qt::FocusReason reason = Qt::ShortcutFocusReason);
    // The focus is at a control. The one that had it before gets it back if it wants to, else it is told.
    bool FocusCame(Control::Native& control);

    // The form is no more; the widget may be in the middle of an event of its own.
    void Orphan();

    // In twips, as they were written.
    float Left() const { return left_; }
    float Top() const { return top_; }
    void MoveTo(float left, float top);
    void SetHeight(float height);
    void Centre();
    void ShowAgain();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

 private:
    void ComeUp();
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
    std::chrono::steady_clock::time_point settlingUntil_;  // till then the desktop's place is not the user's
};

struct Form::Native {
    FormWidget* Widget;
};

}  // namespace platform
