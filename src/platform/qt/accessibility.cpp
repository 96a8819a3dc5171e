#include "platform/qt/accessibility.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>

#include "platform/qt/label.h"

namespace platform {
namespace {

class AccessibleLabel : public QAccessibleWidget {
 public:
    explicit AccessibleLabel(LabelWidget& label)
        : QAccessibleWidget(&label, label.Style().Button ? QAccessible::Button : QAccessible::StaticText) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? Label().Parsed().Text : QAccessibleWidget::text(kind);
    }

    QStringList actionNames() const override {
        return Label().Style().Button ? QStringList(pressAction()) : QStringList();
    }

    void doAction(const QString& action) override {
        if (action != pressAction()) return;
        auto* form = static_cast<FormWidget*>(widget()->window());
        if (Control::Native* control = form->Find(widget())) control->PressFromOutside();
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
    int childCount() const override { return 1; }
    QAccessibleInterface* child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(List().view()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child->object() == List().view() ? 0 : -1;
    }

    QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
    void doAction(const QString&) override { List().showPopup(); }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
    QComboBox& List() const { return static_cast<QComboBox&>(*widget()); }
};

}  // namespace

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    if (auto* label = dynamic_cast<LabelWidget*>(object)) return new AccessibleLabel(*label);
    if (auto* list = qobject_cast<QComboBox*>(object)) return new AccessibleList(*list);
    return nullptr;
}

}  // namespace platform
