#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QValidator>
#include <limits>

#include "platform/controls.h"
#include "platform/qt/paste_guard.h"
#include "platform/qt/theme_style.h"
#include "platform/qt/toolkit.h"

namespace platform {
namespace {

// Keeps what the user enters within a length. A text that the program made longer may be edited, but not
// grow.
class LineLimit : public QValidator {
 public:
    LineLimit(QLineEdit& box, int length) : QValidator(&box), length_(length) {
        connect(&box, &QLineEdit::textChanged, this, [this](const QString& text) { current_ = text.size(); });
    }

    State validate(QString& input, int& position) const override {
        for (QChar& c : input) {
            if (c == '\n' || c == '\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
                c = ' ';
        }
        if (length_ == 0) return Acceptable;
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
        setValidator(limit_ = new LineLimit(*this, style.MaxLength));
    }

    void SetText(const QString& text) {
        limit_->Suspended = true;
        setText(text);
        setCursorPosition(0);
        limit_->Suspended = false;
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

    LineLimit* limit_ = nullptr;
};

qsizetype LongestWord(const QString& text) {
    qsizetype longest = 0;
    qsizetype length = 0;
    for (const QChar c : text) longest = std::max(longest, length = c.isSpace() ? 0 : length + 1);
    return longest;
}

// A text of several lines keeps LF inside and gives CR LF away.
class TextArea : public QPlainTextEdit {
 public:
    // The toolkit's own way to the text would lose blanks that must not break.
    QString Text() const { return document()->toRawText().replace(QChar::ParagraphSeparator, '\n'); }

    TextArea(QWidget* parent, const TextBox::Style& style) : QPlainTextEdit(parent) {
        if (!style.Framed) setFrameShape(QFrame::NoFrame);
        setReadOnly(style.ReadOnly);
        // Read line by line and selected without a pointer.
        setTextInteractionFlags(textInteractionFlags() | Qt::TextSelectableByKeyboard);
        setTabChangesFocus(true);
        WrapFor(0);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(style.ScrollBar ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
        setCursorWidth(1);
        document()->setDocumentMargin(0);
    }

    // A word of many lines breaks anywhere, but the toolkit finds that out by measuring all the rest of it
    // for each line. It is spared this while there may be such a word, if only as what an undo brings back.
    void WrapFor(qsizetype longestWord) {
        constexpr qsizetype kLongWord = 5000;
        setWordWrapMode(longestWord > kLongWord ? QTextOption::WrapAnywhere
                                                : QTextOption::WrapAtWordBoundaryOrAnywhere);
    }

 protected:
    void insertFromMimeData(const QMimeData* source) override {
        if (wordWrapMode() != QTextOption::WrapAnywhere)
            WrapFor(LongestWord(Text()) + LongestWord(source->text()));
        QPlainTextEdit::insertFromMimeData(source);
    }
    QMimeData* createMimeDataFromSelection() const override {
        auto* data = new QMimeData;
        data->setText(textCursor().selection().toPlainText().replace('\n', "\r\n"));
        return data;
    }
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
    Toolkit().Widget->installEventFilter(&PasteGuard::Instance());
    if (auto* area = qobject_cast<QPlainTextEdit*>(Toolkit().Widget)) {
        Toolkit().WatchViewport(area->viewport());
        area->viewport()->installEventFilter(&PasteGuard::Instance());
        QObject::connect(area, &QPlainTextEdit::textChanged, &Toolkit(), changed);
    } else {
        QObject::connect(static_cast<QLineEdit*>(Toolkit().Widget), &QLineEdit::textChanged, &Toolkit(),
                         changed);
    }
}

std::string TextBox::Text() const {
    if (qobject_cast<QPlainTextEdit*>(Toolkit().Widget) != nullptr)
        return FromQString(static_cast<TextArea*>(Toolkit().Widget)->Text());
    return FromQString(static_cast<QLineEdit*>(Toolkit().Widget)->text());
}

// What is set cannot be undone, and a text that is there already is no change.
void TextBox::SetText(std::string_view text) {
    const QString wanted = ToQString(text);
    if (qobject_cast<QPlainTextEdit*>(Toolkit().Widget) != nullptr) {
        auto& area = static_cast<TextArea&>(*Toolkit().Widget);
        area.document()->clearUndoRedoStacks();
        if (area.Text() != wanted) {
            area.WrapFor(std::max(LongestWord(area.Text()), LongestWord(wanted)));
            area.setPlainText(wanted);
            area.WrapFor(LongestWord(wanted));
        }
        return;
    }
    auto& box = static_cast<LineBox&>(*Toolkit().Widget);
    const QSignalBlocker silence(box.text() == wanted ? &box : nullptr);
    box.SetText(wanted);
}

void TextBox::SetDigitsOnly() {
    auto& box = static_cast<LineBox&>(*Toolkit().Widget);
    box.DigitsOnly = true;
    box.setInputMethodHints(Qt::ImhDigitsOnly);
}

}  // namespace platform
