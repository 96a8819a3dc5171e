#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QValidator>
#include <limits>

#include "platform/controls.h"
#include "platform/qt/theme_style.h"
#include "platform/qt/toolkit.h"

namespace platform {
namespace {

// Keeps what the user enters within a length. A text that the program made longer may be edited, but not
// grow.
class LengthLimit : public QValidator {
 public:
    LengthLimit(QLineEdit& box, int length) : QValidator(&box), length_(length) {
        connect(&box, &QLineEdit::textChanged, this, [this](const QString& text) { current_ = text.size(); });
    }

    State validate(QString& input, int& position) const override {
        const qsizetype excess = input.size() - std::max(length_, current_);
        if (excess <= 0 || Suspended) return Acceptable;
        if (position < excess) return Invalid;
        // The end of what has just been entered is what does not fit.
        position -= static_cast<int>(excess);
        input.remove(position, excess);
        return Acceptable;
    }

    bool Suspended = false;

 private:
    qsizetype length_;
    qsizetype current_ = 0;
};

class LineBox : public QLineEdit {
 public:
    LineBox(QWidget* parent, const TextBox::Style& style) : QLineEdit(parent) {
        setFrame(style.Framed);
        if (!style.Framed) setTextMargins(1, 0, 1, 0);
        setMaxLength(std::numeric_limits<int>::max());
        setReadOnly(style.ReadOnly);
        if (style.Align != Alignment::Left)
            setAlignment(style.Align == Alignment::Centre ? Qt::AlignCenter
                                                          : Qt::AlignRight | Qt::AlignVCenter);
        if (style.MaxLength > 0) setValidator(limit_ = new LengthLimit(*this, style.MaxLength));
    }

    void SetText(const QString& text) {
        if (limit_ != nullptr) limit_->Suspended = true;
        setText(text);
        setCursorPosition(0);
        if (limit_ != nullptr) limit_->Suspended = false;
    }

    bool DigitsOnly = false;

 protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool command = (event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier)) != 0;
        if (command || !Refused(event->text())) QLineEdit::keyPressEvent(event);
    }
    void inputMethodEvent(QInputMethodEvent* event) override {
        if (Refused(event->commitString())) event->setCommitString({});
        QLineEdit::inputMethodEvent(event);
    }
    void contextMenuEvent(QContextMenuEvent* event) override {
        ShowThemedMenu(createStandardContextMenu(), *this, event->globalPos());
    }

 private:
    bool Refused(const QString& typed) const {
        return DigitsOnly &&
               std::ranges::any_of(typed, [](QChar c) { return c.isPrint() && (c < '0' || c > '9'); });
    }

    LengthLimit* limit_ = nullptr;
};

class TextArea : public QPlainTextEdit {
 public:
    TextArea(QWidget* parent, const TextBox::Style& style) : QPlainTextEdit(parent) {
        if (!style.Framed) setFrameShape(QFrame::NoFrame);
        setReadOnly(style.ReadOnly);
        setTabChangesFocus(true);
        setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(style.ScrollBar ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
        setCursorWidth(1);
        document()->setDocumentMargin(0);
        // Every line of a fixed font counts in the height of the boxes.
        setViewportMargins(0, 0, 0, 0);
    }

 protected:
    void contextMenuEvent(QContextMenuEvent* event) override {
        ShowThemedMenu(createStandardContextMenu(), *this, event->globalPos());
    }
};

QWidget* MakeWidget(QWidget* parent, const TextBox::Style& style) {
    QWidget* widget =
        style.MultiLine ? static_cast<QWidget*>(new TextArea(parent, style)) : new LineBox(parent, style);
    widget->setFocusPolicy(style.TabStop ? Qt::StrongFocus : Qt::ClickFocus);
    return widget;
}

}  // namespace

TextBox::TextBox(Form& form, std::string_view name, const Rect& place, const Style& style)
    : Control(std::make_unique<Native>(form, name, place, MakeWidget(form.Toolkit().Widget, style),
                                       Native::Pointer::Toolkit)) {
    const auto changed = [this] {
        if (Change) Change();
    };
    if (auto* area = qobject_cast<QPlainTextEdit*>(Toolkit().Widget)) {
        Toolkit().WatchViewport(area->viewport());
        QObject::connect(area, &QPlainTextEdit::textChanged, &Toolkit(), changed);
    } else {
        QObject::connect(static_cast<QLineEdit*>(Toolkit().Widget), &QLineEdit::textChanged, &Toolkit(),
                         changed);
    }
}

std::string TextBox::Text() const {
    if (const auto* area = qobject_cast<QPlainTextEdit*>(Toolkit().Widget))
        return FromQString(area->toPlainText());
    return FromQString(static_cast<QLineEdit*>(Toolkit().Widget)->text());
}

void TextBox::SetText(std::string_view text) {
    const QString wanted = ToQString(text);
    if (auto* area = qobject_cast<QPlainTextEdit*>(Toolkit().Widget)) {
        if (area->toPlainText() != wanted) area->setPlainText(wanted);
        return;
    }
    auto& box = static_cast<LineBox&>(*Toolkit().Widget);
    if (box.text() != wanted) box.SetText(wanted);
}

void TextBox::SetDigitsOnly() {
    auto& box = static_cast<LineBox&>(*Toolkit().Widget);
    box.DigitsOnly = true;
    box.setInputMethodHints(Qt::ImhDigitsOnly);
}

}  // namespace platform
