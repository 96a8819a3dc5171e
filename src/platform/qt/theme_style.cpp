#include "platform/qt/theme_style.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QMenu>
#include <QPainter>
#include <QProxyStyle>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOption>

#include "platform/qt/toolkit.h"

namespace platform {
namespace {

constexpr int kArrowWidth = 15;

// Small dark controls with one-pixel lines, drawn in the colours of the widget's palette: Base, Text, and Mid
// for the lines.
class ThemeStyle : public QProxyStyle {
 public:
    ThemeStyle() : QProxyStyle(QStyleFactory::create("fusion")) {}

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        if (control == CC_ComboBox) return DrawList(*option, *painter);
        if (control == CC_ScrollBar)
            return DrawScrollBar(*static_cast<const QStyleOptionSlider*>(option), *painter);
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        if (element == CE_CheckBox)
            return DrawCheckBox(*static_cast<const QStyleOptionButton*>(option), *painter);
        if (element == CE_ComboBoxLabel) {
            const auto& list = *static_cast<const QStyleOptionComboBox*>(option);
            painter->setPen(list.palette.color(QPalette::Text));
            painter->drawText(subControlRect(CC_ComboBox, &list, SC_ComboBoxEditField, widget),
                              Qt::AlignLeft | Qt::AlignVCenter, list.currentText);
            return;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_PanelMenu) painter->fillRect(option->rect, option->palette.base());
        if (element == PE_Frame || element == PE_FrameMenu || element == PE_PanelMenu)
            return DrawOutline(*painter, option->rect, option->palette.color(QPalette::Mid));
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override {
        if (control == CC_ComboBox && part == SC_ComboBoxEditField)
            return option->rect.adjusted(5, 1, -kArrowWidth - 1, -1);
        if (control == CC_ComboBox && part == SC_ComboBoxArrow)
            return {option->rect.right() - kArrowWidth, option->rect.top(), kArrowWidth,
                    option->rect.height()};
        return QProxyStyle::subControlRect(control, option, part, widget);
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        switch (hint) {
            case SH_EtchDisabledText:
            case SH_ComboBox_Popup: return 0;
            case SH_ComboBox_PopupFrameStyle: return QFrame::Box | QFrame::Plain;
            default: return QProxyStyle::styleHint(hint, option, widget, data);
        }
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        switch (metric) {
            case PM_ScrollBarExtent: return 13;
            case PM_MenuPanelWidth: return 1;
            default: return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }

 private:
    // A triangle that points down (or up), in the middle of a rectangle.
    static void DrawArrow(const QRect& rect, const QColor& color, bool down, QPainter& painter) {
        const QPointF middle = QRectF(rect).center();
        const qreal base = down ? -2 : 2;
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawPolygon(
            QPolygonF({middle + QPointF(-4, base), middle + QPointF(4, base), middle + QPointF(0, -base)}));
        painter.setRenderHint(QPainter::Antialiasing, false);
    }

    void DrawList(const QStyleOptionComplex& option, QPainter& painter) const {
        const bool active = (option.state & State_HasFocus) != 0;
        painter.fillRect(option.rect, option.palette.base());
        const QRect arrow = subControlRect(CC_ComboBox, &option, SC_ComboBoxArrow, nullptr);
        DrawOutline(painter, arrow.adjusted(-1, 0, 1, 0), option.palette.color(QPalette::Mid));
        DrawOutline(painter, option.rect, option.palette.color(active ? QPalette::Text : QPalette::Mid));
        DrawArrow(arrow, option.palette.color(QPalette::Text), true, painter);
    }

    void DrawScrollBar(const QStyleOptionSlider& bar, QPainter& painter) const {
        painter.fillRect(bar.rect, bar.palette.base());
        // Of its outline only the left side is to be seen.
        DrawOutline(painter, bar.rect.adjusted(0, -1, 1, 1), bar.palette.color(QPalette::Mid));
        const bool movable = bar.maximum > bar.minimum;
        const QColor ink = bar.palette.color(movable ? QPalette::Text : QPalette::Mid);
        DrawArrow(proxy()->subControlRect(CC_ScrollBar, &bar, SC_ScrollBarSubLine, nullptr), ink, false,
                  painter);
        DrawArrow(proxy()->subControlRect(CC_ScrollBar, &bar, SC_ScrollBarAddLine, nullptr), ink, true,
                  painter);
        if (!movable) return;
        const QRect slider = proxy()->subControlRect(CC_ScrollBar, &bar, SC_ScrollBarSlider, nullptr);
        const bool held =
            (bar.activeSubControls & SC_ScrollBarSlider) != 0 && (bar.state & State_Sunken) != 0;
        painter.fillRect(slider.adjusted(3, 1, -2, -1),
                         bar.palette.brush(held ? QPalette::Text : QPalette::Mid));
    }

    static void DrawCheckBox(const QStyleOptionButton& box, QPainter& painter) {
        constexpr int kSide = 11;
        const QColor text = box.palette.color(QPalette::WindowText);
        const bool active = (box.state & State_HasFocus) != 0;
        painter.fillRect(box.rect, box.palette.window());
        const QRect square(box.rect.left() + 4, box.rect.center().y() - (kSide / 2), kSide, kSide);
        DrawOutline(painter, square,
                    active || (box.state & State_Sunken) != 0 ? text : box.palette.color(QPalette::Mid));
        if ((box.state & State_On) != 0) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(text, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            const QPointF corner(square.topLeft());
            painter.drawPolyline(QPolygonF(
                {corner + QPointF(2.7, 5.6), corner + QPointF(4.8, 8.0), corner + QPointF(8.6, 3.0)}));
            painter.setRenderHint(QPainter::Antialiasing, false);
        }
        painter.setPen(text);
        painter.drawText(box.rect.adjusted(kSide + 7, 0, 0, 0),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, box.text);
    }
};

QStyle& TheStyle() {
    static auto* style = new ThemeStyle;  // outlives every widget that uses it
    return *style;
}

}  // namespace

void ApplyThemeStyle(QWidget& widget) {
    if (qobject_cast<QAbstractScrollArea*>(&widget) != nullptr) {
        auto& area = static_cast<QAbstractScrollArea&>(widget);
        area.verticalScrollBar()->setStyle(&TheStyle());
    } else if (widget.inherits("QComboBox") || widget.inherits("QCheckBox")) {
        widget.setStyle(&TheStyle());
    }
}

void ThemePopup(QAbstractItemView& view, const QComboBox& owner) {
    if (owner.style() != &TheStyle()) return;
    view.setPalette(owner.palette());
    QPalette frame = owner.palette();
    frame.setColor(QPalette::WindowText, frame.color(QPalette::Mid));
    view.window()->setPalette(frame);
    view.window()->setStyle(&TheStyle());
}

void ShowThemedMenu(QMenu* menu, const QWidget& owner, const QPoint& at) {
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (owner.window()->windowFlags().testFlag(Qt::FramelessWindowHint)) {
        QPalette palette = owner.palette();
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            palette.setColor(QPalette::Disabled, role, palette.color(QPalette::Mid));
        menu->setPalette(palette);
        menu->setStyle(&TheStyle());
    }
    menu->popup(at);
}

}  // namespace platform
