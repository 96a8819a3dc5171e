#include "platform/qt/label.h"

#include <QAccessible>
#include <QEvent>
#include <QPainter>
#include <QTextLayout>
#include <cmath>

namespace platform {
namespace {

Qt::Alignment ToQt(Alignment alignment) {
    switch (alignment) {
        case Alignment::Centre: return Qt::AlignHCenter;
        case Alignment::Right: return Qt::AlignRight;
        case Alignment::Left: break;
    }
    return Qt::AlignLeft;
}

// A label's text laid out within a width; the height and the widest line that came of it.
QSizeF LayOut(QTextLayout& layout, const ParsedCaption& caption, qreal width, const Label::Style& style) {
    QTextOption option(ToQt(style.Align));
    option.setWrapMode(style.Wrapped ? QTextOption::WordWrap : QTextOption::NoWrap);
    layout.setTextOption(option);
    if (caption.KeyIndex >= 0) {
        QTextLayout::FormatRange range{caption.KeyIndex, 1, {}};
        range.format.setFontUnderline(true);
        layout.setFormats({range});
    }
    QSizeF size(0, 0);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, size.height()});
        // Whole pixels keep the lines of a paragraph evenly spaced.
        size = {std::max(size.width(), line.naturalTextWidth()), size.height() + std::ceil(line.height())};
    }
    layout.endLayout();
    return size;
}

bool Fits(const QFont& font, const ParsedCaption& caption, const QSize& room, const Label::Style& style) {
    QTextLayout layout(caption.Text, font);
    const QSizeF size = LayOut(layout, caption, room.width(), style);
    return size.width() <= room.width() && (!style.Wrapped || size.height() <= room.height());
}

// The font in which the text stays whole: narrower first, then smaller. What a user cannot read at half the
// width would not be helped by going on.
QFont Fit(const QFont& font, const ParsedCaption& caption, const QSize& room, const Label::Style& style) {
    constexpr int kNarrowest = 72;
    QFont fitted = font;
    for (int pixels = font.pixelSize(); pixels > 6; --pixels) {
        fitted.setPixelSize(pixels);
        for (int stretch = 100; stretch >= kNarrowest; stretch -= 4) {
            fitted.setStretch(stretch);
            if (Fits(fitted, caption, room, style)) return fitted;
        }
    }
    return fitted;
}

}  // namespace

LabelWidget::LabelWidget(QWidget* parent, const Label::Style& style) : QWidget(parent), style_(style) {
    setAttribute(Qt::WA_OpaquePaintEvent, !style.Transparent);
}

void LabelWidget::SetCaption(const QString& caption) {
    if (caption == caption_) return;
    caption_ = caption;
    parsed_ = ParseCaption(caption);
    fitted_.reset();
    update();
    if (QAccessible::isActive()) {
        QAccessibleEvent changed(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&changed);
    }
}

void LabelWidget::SetBordered(bool bordered) {
    if (bordered == bordered_) return;
    bordered_ = bordered;
    update();
}

void LabelWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) fitted_.reset();
    QWidget::changeEvent(event);
}

QRect LabelWidget::Room() const {
    const int margin = style_.Transparent ? 0 : 2;
    return rect().adjusted(margin, 0, -margin, 0);
}

const QFont& LabelWidget::DrawnFont() {
    if (!fitted_) fitted_ = Fit(font(), parsed_, Room().size(), style_);
    return *fitted_;
}

void LabelWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!style_.Transparent) painter.fillRect(rect(), palette().window());
    if (bordered_) {
        // One pixel inside the edge, where no outline of the window hides it.
        DrawOutline(painter, rect().adjusted(1, 1, -1, -1), palette().color(QPalette::WindowText));
    }
    const QRect room = Room();
    QTextLayout layout(parsed_.Text, DrawnFont());
    const QSizeF size = LayOut(layout, parsed_, room.width(), style_);
    const qreal top = style_.Wrapped ? 0 : std::floor((room.height() - size.height()) / 2);
    painter.setPen(palette().color(QPalette::WindowText));
    layout.draw(&painter, QPointF(room.left(), room.top() + top));
}

Label::Label(Form& form, std::string_view name, const Rect& place, const Style& style)
    : Control(std::make_unique<Native>(form, name, place, new LabelWidget(form.Toolkit().Widget, style),
                                       Native::Pointer::Plain)) {}

std::string Label::Caption() const {
    return FromQString(static_cast<LabelWidget*>(Toolkit().Widget)->Caption());
}

void Label::SetCaption(std::string_view caption) {
    auto& widget = static_cast<LabelWidget&>(*Toolkit().Widget);
    widget.SetCaption(ToQString(caption));
    Toolkit().SetAccessKey(widget.Parsed(), [this] { Toolkit().Parent->FocusBehind(Toolkit().Widget); });
}

int Label::BorderStyle() const { return static_cast<LabelWidget*>(Toolkit().Widget)->Bordered() ? 1 : 0; }

void Label::SetBorderStyle(int style) {
    static_cast<LabelWidget*>(Toolkit().Widget)->SetBordered(style == 1);
}

}  // namespace platform
