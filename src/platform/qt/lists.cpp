#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QKeyEvent>
#include <QPointer>
#include <QProxyStyle>
#include <QWheelEvent>

#include "platform/controls.h"
#include "platform/qt/theme_style.h"
#include "platform/qt/toolkit.h"

namespace platform {
namespace {

// The desktop's look, with the room for the text that a narrow list needs.
class RoomyListStyle : public QProxyStyle {
 public:
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override {
        if (control == CC_ComboBox && part == SC_ComboBoxEditField)
            return option->rect.adjusted(3, 1, -16, -1);
        return QProxyStyle::subControlRect(control, option, part, widget);
    }
};

class ListWidget : public QComboBox {
 public:
    explicit ListWidget(QWidget* parent) : QComboBox(parent) {
        static auto* roomy = new RoomyListStyle;  // outlives every list
        setStyle(roomy);
        setFocusPolicy(Qt::StrongFocus);
        setMaxVisibleItems(20);
    }

    std::function<void()> OnKey;
    std::function<void()> OnOpen;

    void showPopup() override {
        if (OnOpen) OnOpen();
        if (!watched_) {
            watched_ = true;
            view()->installEventFilter(this);
            ThemePopup(*view(), *this);
        }
        // A newer toolkit would mark the entry at which the open list was last left with Escape.
        view()->setCurrentIndex(model()->index(currentIndex(), modelColumn()));
        QComboBox::showPopup();
    }

 protected:
    void keyPressEvent(QKeyEvent* event) override {
        Report(*event);
        QComboBox::keyPressEvent(event);
    }
    // A wheel that passes over the window must not change a list that the focus never was in.
    void wheelEvent(QWheelEvent* event) override {
        if (hasFocus()) {
            QComboBox::wheelEvent(event);
        } else {
            event->ignore();
        }
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        // The toolkit acts on some keys before they are pressed, in the round that looks for shortcuts.
        if (event->type() == QEvent::ShortcutOverride) Report(*static_cast<QKeyEvent*>(event));
        return QComboBox::eventFilter(watched, event);
    }

 private:
    void Report(const QKeyEvent& event) {
        const bool character = !event.text().isEmpty() && event.key() != Qt::Key_Delete &&
                               event.key() != Qt::Key_Tab && event.key() != Qt::Key_Backtab &&
                               (event.modifiers() & Qt::AltModifier) == 0;
        if (character && OnKey) OnKey();
    }

    bool watched_ = false;
};

}  // namespace

DropDownList::DropDownList(Form& form, std::string_view name, const Rect& place)
    : Control(std::make_unique<Native>(form, name, place, new ListWidget(form.Toolkit().Widget),
                                       Native::Pointer::Toolkit)) {
    auto& list = static_cast<ListWidget&>(*Toolkit().Widget);
    // The widget may be there a little longer than the control.
    list.OnKey = [this, there = QPointer(&Toolkit())] {
        if (!there.isNull() && KeyPress) KeyPress();
    };
    list.OnOpen = [this, there = QPointer(&Toolkit())] {
        if (!there.isNull() && DropDown) DropDown();
    };
    QObject::connect(&list, &QComboBox::currentIndexChanged, &Toolkit(), [&list] {
        if (!QAccessible::isActive()) return;
        QAccessibleEvent changed(&list, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&changed);
    });
    QObject::connect(&list, &QComboBox::activated, &Toolkit(), [this] {
        if (Click) Click();
    });
}

void DropDownList::AddItem(std::string_view text) {
    auto& list = static_cast<ListWidget&>(*Toolkit().Widget);
    const int index = list.currentIndex();
    list.addItem(ToQString(text));
    list.setCurrentIndex(index);  // the toolkit would select the first entry by itself
}

int DropDownList::ListIndex() const { return static_cast<ListWidget*>(Toolkit().Widget)->currentIndex(); }

void DropDownList::SetListIndex(int index) {
    static_cast<ListWidget*>(Toolkit().Widget)->setCurrentIndex(index);
    if (Click) Click();
}

std::string DropDownList::Text() const {
    return FromQString(static_cast<ListWidget*>(Toolkit().Widget)->currentText());
}

}  // namespace platform
