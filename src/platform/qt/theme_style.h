#pragma once

class QAbstractItemView;
class QComboBox;
class QMenu;
class QPoint;
class QWidget;

namespace platform {

// Gives a widget the look of the themed windows, in the colours of its own palette.
void ApplyThemeStyle(QWidget& widget);

// The same for what opens from a widget: the list of a drop-down list, and a menu, which is shown and deleted
// when it closes.
void ThemePopup(QAbstractItemView& view, const QComboBox& owner);
void ShowThemedMenu(QMenu* menu, const QWidget& owner, const QPoint& at);

}  // namespace platform
