#pragma once

#include <QFont>
#include <QWidget>
#include <optional>

#include "platform/controls.h"
#include "platform/qt/toolkit.h"

namespace platform {

// Draws a label; what happens on it is its control's business.
class LabelWidget : public QWidget {
 public:
    LabelWidget(QWidget* parent, const Label::Style& style);

    const Label::Style& Style() const { return style_; }
    const QString& Caption() const { return caption_; }
    const ParsedCaption& Parsed() const { return parsed_; }
    void SetCaption(const QString& caption);
    bool Bordered() const { return bordered_; }
    void SetBordered(bool bordered);
    // The font that the caption is drawn in to stay whole; at its least, 7 pixels, even that may cut it.
    const QFont& DrawnFont();

 protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    QRect Room() const;

    Label::Style style_;
    QString caption_;
    ParsedCaption parsed_;
    bool bordered_ = false;
    std::optional<QFont> fitted_;  // worked out at the first drawing of a caption
};

}  // namespace platform
