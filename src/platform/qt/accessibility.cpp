#include "platform/qt/accessibility.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>
#include <algorithm>
#include <vector>

#include "platform/qt/label.h"

namespace platform {
namespace {

// A window with what its user can name: no outlines, no ornaments.
class AccessibleForm : public QAccessibleWidget {
 public:
    explicit AccessibleForm(FormWidget& form)
        : QAccessibleWidget(&form, (form.windowFlags() & Qt::FramelessWindowHint) != 0
                                       ? QAccessible::Window
                                       : QAccessible::Dialog) {}

    int childCount() const override { return static_cast<int>(Children().size()); }
    QAccessibleInterface* child(int index) const override {
        const auto children = Children();
        return index >= 0 && index < static_cast<int>(children.size())
                   ? children[static_cast<std::size_t>(index)]
                   : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto children = Children();
        const auto found = std::ranges::find(children, child);
        return found == children.end() ? -1 : static_cast<int>(found - children.begin());
    }

 private:
    std::vector<QAccessibleInterface*> Children() const {
        std::vector<QAccessibleInterface*> children;
        for (QObject* object : widget()->children()) {
            auto* inside = qobject_cast<QWidget*>(object);
            if (inside == nullptr || inside->isWindow()) continue;
            QAccessibleInterface* told = QAccessible::queryAccessibleInterface(inside);
            if (told == nullptr) continue;
            if (told->role() != QAccessible::Graphic || !told->text(QAccessible::Name).isEmpty())
                children.push_back(told);
        }
        return children;
    }
};

QAccessible::Role RoleOf(const Label::Style& style) {
    if (style.Button) return QAccessible::Button;
    return style.Status ? QAccessible::StatusBar : QAccessible::StaticText;
}

class AccessibleLabel : public QAccessibleWidget {
 public:
    explicit AccessibleLabel(LabelWidget& label) : QAccessibleWidget(&label, RoleOf(label.Style())) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? Label().Parsed().Text : QAccessibleWidget::text(kind);
    }

    QStringList actionNames() const override {
        return Label().Style().Button ? QStringList(pressAction()) : QStringList();
    }

    // Behind the answer to who asks for it: a press may open a box, and nobody would read that one aloud.
    void doAction(const QString& action) override {
        if (action != pressAction()) return;
        const auto press = [label = widget()] {
            const auto* form = static_cast<FormWidget*>(label->window());
            Control::Native* control = label->isEnabled() ? form->Find(label) : nullptr;
            if (control != nullptr) control->PressFromOutside();
        };
        QMetaObject::invokeMethod(widget(), press, Qt::QueuedConnection);
    }

 private:
    LabelWidget& Label() const { return static_cast<LabelWidget&>(*widget()); }
};

// The toolkit's own would give the selected entry for the name. Here it is the description, which a screen
// reader speaks behind the name.
class AccessibleList : public QAccessibleWidget {
 public:
    explicit AccessibleList(QComboBox& list) : QAccessibleWidget(&list, QAccessible::ComboBox) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Value || kind == QAccessible::Description) return List().currentText();
        return QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.expanded = List().view()->isVisible();
        state.collapsed = !state.expanded;
        return state;
    }
    int childCount() const override { return 1; }
    QAccessibleInterface* child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(List().view()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child->object() == List().view() ? 0 : -1;
    }

    QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
    void doAction(const QString& action) override {
        if (!actionNames().contains(action)) return QAccessibleWidget::doAction(action);
        if (List().isEnabled()) List().showPopup();
    }

 private:
    QComboBox& List() const { return static_cast<QComboBox&>(*widget()); }
};

}  // namespace

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    if (auto* label = dynamic_cast<LabelWidget*>(object)) return new AccessibleLabel(*label);
    if (auto* list = qobject_cast<QComboBox*>(object)) return new AccessibleList(*list);
    if (auto* form = dynamic_cast<FormWidget*>(object)) return new AccessibleForm(*form);
    // What else a form holds that is no widget of the toolkit's own is drawn: a picture or an outline.
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget != nullptr && widget->metaObject() == &QWidget::staticMetaObject &&
        dynamic_cast<FormWidget*>(widget->parent()) != nullptr) {
        return new QAccessibleWidget(widget, QAccessible::Graphic);
    }
    return nullptr;
}

}  // namespace platform
