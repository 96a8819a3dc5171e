#include <QCheckBox>
#include <QKeyEvent>
#include <QPushButton>

#include "platform/controls.h"
#include "platform/qt/toolkit.h"

namespace platform {
namespace {

class CheckWidget : public QCheckBox {
 public:
    using QCheckBox::QCheckBox;

 protected:
    // The whole control is the target, not only the box and the letters.
    bool hitButton(const QPoint& at) const override { return rect().contains(at); }
};

class PushWidget : public QPushButton {
 public:
    using QPushButton::QPushButton;

 protected:
    // Return, which not every desktop gives to a button; held down it is one press.
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
            return QPushButton::keyPressEvent(event);
        if (!event->isAutoRepeat() && !event->modifiers().testFlag(Qt::AltModifier)) click();
    }
};

// Access keys go through the form, which moves the focus before the press as a click with the pointer does.
void TakeCaption(QAbstractButton& button, Control::Native& control, std::string_view caption) {
    button.setFocusPolicy(Qt::StrongFocus);
    button.setText(ToQString(caption));
    button.setShortcut({});
    control.SetAccessKey(ParseCaption(button.text()), [&button, &control] {
        if (control.Parent->FocusTo(&button)) button.click();
    });
}

}  // namespace

CheckBox::CheckBox(Form& form, std::string_view name, const Rect& place, std::string_view caption)
    : Control(std::make_unique<Native>(form, name, place, new CheckWidget(form.Toolkit().Widget),
                                       Native::Pointer::Toolkit)) {
    auto& box = static_cast<CheckWidget&>(*Toolkit().Widget);
    TakeCaption(box, Toolkit(), caption);
    QObject::connect(&box, &QCheckBox::toggled, &Toolkit(), [this] {
        if (Click) Click();
    });
}

bool CheckBox::Checked() const { return static_cast<CheckWidget*>(Toolkit().Widget)->isChecked(); }

PushButton::PushButton(Form& form, std::string_view name, const Rect& place, std::string_view caption)
    : Control(std::make_unique<Native>(form, name, place, new PushWidget(form.Toolkit().Widget),
                                       Native::Pointer::Toolkit)) {
    auto& button = static_cast<QPushButton&>(*Toolkit().Widget);
    TakeCaption(button, Toolkit(), caption);
    QObject::connect(&button, &QPushButton::clicked, &Toolkit(), [this] {
        if (Click) Click();
    });
}

}  // namespace platform
