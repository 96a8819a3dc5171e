#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QTextDocument>
#include <limits>

#include "platform/controls.h"
#include "platform/qt/pasted_text.h"
#include "platform/qt/theme_style.h"
#include "platform/qt/toolkit.h"

namespace platform {
namespace {

// What can be pasted, in bytes and lines. More would take seconds to lay out, and half a kilobyte a line.
constexpr int kMostInLine = 64 * 1024;
constexpr int kMostInArea = 1024 * 1024;
constexpr int kMostLines = 64 * 1024;

class LineBox : public QLineEdit {
 public:
    LineBox(QWidget* parent, const TextBox::Style& style)
        : QLineEdit(parent), limit_(style.MaxLength > 0 ? style.MaxLength : kMostInLine) {
        setFrame(style.Framed);
        if (!style.Framed) setTextMargins(1, 0, 1, 0);
        setMaxLength(std::numeric_limits<int>::max());
        if (style.Align != Alignment::Left)
            setAlignment(style.Align == Alignment::Centre ? Qt::AlignCenter
                                                          : Qt::AlignRight | Qt::AlignVCenter);
    }

    bool DigitsOnly = false;

 protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool selection =
            event->key() == Qt::Key_Insert && event->modifiers().testFlag(Qt::ControlModifier);
        if (event->matches(QKeySequence::Paste))
            return Paste(selection ? QClipboard::Selection : QClipboard::Clipboard);
        const QString typed = event->text();
        const bool command = event->modifiers().testAnyFlags(Qt::ControlModifier | Qt::MetaModifier) ||
                             typed < QString(' ') || typed == "\x7F";
        if (command || Typed(typed) == typed) QLineEdit::keyPressEvent(event);
    }
    void inputMethodEvent(QInputMethodEvent* event) override {
        const QString typed = event->commitString();
        if (Typed(typed) != typed) event->setCommitString(Typed(typed));
        QLineEdit::inputMethodEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() != Qt::MiddleButton) return QLineEdit::mouseReleaseEvent(event);
        deselect();
        Paste(QClipboard::Selection);
    }
    void dropEvent(QDropEvent* event) override {
        deselect();
        QMimeData text;
        text.setText(Fitting(PastedText(*event->mimeData(), kMostInLine)));
        QDropEvent drop(event->position(), event->possibleActions(), &text, event->buttons(),
                        event->modifiers());
        QLineEdit::dropEvent(&drop);
        event->acceptProposedAction();
    }
    // The toolkit's own would ask the owner of the clipboard for all that it holds.
    void contextMenuEvent(QContextMenuEvent* event) override {
        auto* menu = new QMenu(this);
        const auto add = [&](const char* caption, QKeySequence::StandardKey key, bool enabled, auto act) {
            QAction* action = menu->addAction(tr(caption) + '\t' + QKeySequence(key).toString(), this, act);
            action->setEnabled(enabled);
        };
        add("&Undo", QKeySequence::Undo, isUndoAvailable(), &QLineEdit::undo);
        add("&Redo", QKeySequence::Redo, isRedoAvailable(), &QLineEdit::redo);
        menu->addSeparator();
        add("Cu&t", QKeySequence::Cut, hasSelectedText(), &QLineEdit::cut);
        add("&Copy", QKeySequence::Copy, hasSelectedText(), &QLineEdit::copy);
        add("&Paste", QKeySequence::Paste, true, [this] { Paste(QClipboard::Clipboard); });
        add("Delete", QKeySequence::Delete, hasSelectedText(), &QLineEdit::del);
        menu->addSeparator();
        add("Select All", QKeySequence::SelectAll, !text().isEmpty(), &QLineEdit::selectAll);
        ShowThemedMenu(menu, *this, event->globalPos());
    }

 private:
    void Paste(QClipboard::Mode mode) {
        const QMimeData* source = QGuiApplication::clipboard()->mimeData(mode);
        const QString text = source != nullptr ? PastedText(*source, kMostInLine) : QString();
        if (!text.isEmpty()) insert(Fitting(text));
    }
    QString Typed(const QString& text) const {
        const auto isDigit = [](QChar c) { return c >= '0' && c <= '9'; };
        return DigitsOnly && !std::ranges::all_of(text, isDigit) ? QString() : Fitting(text);
    }
    // What goes in of a text that the user enters: one line, within the limit. A text that the program made
    // longer may be edited, but not grow.
    QString Fitting(QString entered) const {
        entered.replace(QRegularExpression("[\r\n\u2028\u2029]"), " ");
        qsizetype room = std::max(limit_, text().size()) - text().size() + selectedText().size();
        if (room > 0 && room < entered.size() && entered[room].isLowSurrogate()) --room;
        return entered.left(room);
    }

    const qsizetype limit_;
};

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
    void WrapFor(qsizetype length) {
        constexpr int kLong = 16 * 1024;
        setWordWrapMode(length > kLong ? QTextOption::WrapAnywhere
                                       : QTextOption::WrapAtWordBoundaryOrAnywhere);
    }

 protected:
    // One who has something to paste or drop is not asked before that.
    bool canInsertFromMimeData(const QMimeData* source) const override {
        return source == QGuiApplication::clipboard()->mimeData() || source->hasText();
    }
    void insertFromMimeData(const QMimeData* source) override {
        const qsizetype has = Text().toUtf8().size() - textCursor().selectedText().toUtf8().size();
        QString text = PastedText(*source, std::max<qsizetype>(0, kMostInArea - has));
        text.replace(QRegularExpression("\r\n?|\u2029"), "\n");
        text = text.section('\n', 0, std::max(0, kMostLines - blockCount()));
        if (text.isEmpty()) return;
        if (wordWrapMode() != QTextOption::WrapAnywhere) WrapFor(has + text.size());
        insertPlainText(text);
        ensureCursorVisible();
    }
    QMimeData* createMimeDataFromSelection() const override {
        auto* data = new QMimeData;
        data->setText(textCursor()
                          .selectedText()
                          .replace(QChar::ParagraphSeparator, "\r\n")
                          .replace(QChar::LineSeparator, "\r\n"));
        return data;
    }
    void contextMenuEvent(QContextMenuEvent* event) override {
        ShowThemedMenu(createStandardContextMenu(), *this, event->globalPos());
    }
};

QWidget* MakeWidget(QWidget* parent, const TextBox::Style& style) {
    WatchDrops();
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
            area.WrapFor(std::max(area.Text().size(), wanted.size()));
            area.setPlainText(wanted);
            area.WrapFor(wanted.size());
        }
        return;
    }
    auto& box = static_cast<LineBox&>(*Toolkit().Widget);
    const QSignalBlocker silence(box.text() == wanted ? &box : nullptr);
    box.setText(wanted);
    box.setCursorPosition(0);
}

void TextBox::SetDigitsOnly() {
    auto& box = static_cast<LineBox&>(*Toolkit().Widget);
    box.DigitsOnly = true;
    box.setInputMethodHints(Qt::ImhDigitsOnly);
}

}  // namespace platform
