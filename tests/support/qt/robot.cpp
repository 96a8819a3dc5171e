#include "support/robot.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QKeySequence>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionComboBox>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <limits>
#include <stdexcept>

#include "platform/qt/label.h"

#if defined(__SANITIZE_ADDRESS__)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace robot {
namespace {

using platform::LabelWidget;
using platform::ToQString;

QWidgetList Windows() {
    // An unloaded form is still on its way out.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return QApplication::topLevelWidgets();
}

QWidget& FindForm(std::string_view form) {
    for (QWidget* window : Windows()) {
        if (window->objectName() == ToQString(form)) return *window;
    }
    throw std::runtime_error("no window " + std::string(form));
}

QWidget& FindControl(std::string_view form, std::string_view control) {
    if (auto* found = FindForm(form).findChild<QWidget*>(ToQString(control), Qt::FindDirectChildrenOnly))
        return *found;
    throw std::invalid_argument("no control " + std::string(control));
}

QWindow* WindowOf(std::string_view form) {
    QWidget& widget = FindForm(form);
    if (!widget.isVisible()) throw std::runtime_error(std::string(form) + " is not on the screen");
    return widget.windowHandle();
}

Qt::MouseButton ToQt(Button button) {
    if (button == Button::Left) return Qt::LeftButton;
    return button == Button::Right ? Qt::RightButton : Qt::MiddleButton;
}

QPoint ToQt(Point at) { return {at.X, at.Y}; }

platform::Rect ToRect(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

// In a hurry a letter in a list begins a new search if it comes a moment after the last one.
void LetSearchEnd() {
    if (QApplication::keyboardInputInterval() != 0) return;
    if (qobject_cast<QComboBox*>(QApplication::focusWidget()) != nullptr ||
        QApplication::activePopupWidget() != nullptr)
        QTest::qSleep(2);
}

void SendKey(QWindow* window, std::string_view key) {
    const QKeySequence sequence(ToQString(key));
    LetSearchEnd();
    QTest::keyClick(window, sequence[0].key(), sequence[0].keyboardModifiers());
}

void Assist(std::string_view form, std::string_view control, const QString& action) {
    QAccessible::queryAccessibleInterface(&FindControl(form, control))->actionInterface()->doAction(action);
}

// The names of the controls of which that holds.
std::vector<std::string> Named(std::string_view form, const std::function<bool(QWidget&)>& holds) {
    std::vector<std::string> names;
    for (QWidget* control : FindForm(form).findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (holds(*control)) names.push_back(control->objectName().toStdString());
    }
    return names;
}

// A colour that is drawn in the middle of a pixel.
platform::Color ColorAt(const QImage& image, int x, int y) {
    const QPointF at = QPointF(x + 0.5, y + 0.5) * image.devicePixelRatio();
    const QColor color = image.pixelColor(static_cast<int>(at.x()), static_cast<int>(at.y()));
    const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
    return {byte(color.red()), byte(color.green()), byte(color.blue())};
}

}  // namespace

std::vector<char*> Arguments(char* program) {
    static char platform[] = "-platform", offscreen[] = "offscreen", reverse[] = "-reverse";
    return {program, platform, offscreen, reverse};
}

void TurnTo(std::string_view form) {
    QWindow* window = WindowOf(form);
    if (QGuiApplication::focusWindow() == window || QApplication::activePopupWidget() != nullptr) return;
    window->requestActivate();
    QCoreApplication::processEvents();
}

void Move(std::string_view form, Point at) { QTest::mouseMove(WindowOf(form), ToQt(at)); }

void Press(std::string_view form, Point at, Button button) {
    QTest::mousePress(WindowOf(form), ToQt(button), {}, ToQt(at));
}

void Release(std::string_view form, Point at, Button button) {
    QTest::mouseRelease(WindowOf(form), ToQt(button), {}, ToQt(at));
}

void DoubleClick(std::string_view form, std::string_view control) {
    QTest::mouseDClick(WindowOf(form), Qt::LeftButton, {}, ToQt(Middle(form, control)));
}

void Wheel(std::string_view form, std::string_view control, int steps) {
    QWindow* window = WindowOf(form);
    const QPointF at = ToQt(Middle(form, control));
    QWheelEvent wheel(at, window->mapToGlobal(at), {}, {0, 120 * steps}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window, &wheel);
}

void Key(std::string_view form, std::string_view key) {
    for (const QWidget* first : {QApplication::activePopupWidget(), QApplication::activeModalWidget()}) {
        if (first != nullptr) return SendKey(first->windowHandle(), key);
    }
    SendKey(WindowOf(form), key);
}

void Type(std::string_view form, std::string_view text) {
    QWindow* window = WindowOf(form);
    for (const char32_t c : ToQString(text).toStdU32String()) {
        LetSearchEnd();
        QTest::sendKeyEvent(QTest::Click, window, Qt::Key_unknown, QString::fromUcs4(&c, 1), {});
    }
}

void Hurry() {
    QApplication::setDoubleClickInterval(0);
    QApplication::setKeyboardInputInterval(0);
    QApplication::setStartDragDistance(std::numeric_limits<int>::max());
    QApplication::setCursorFlashTime(0);
}

std::string Clipboard() { return QApplication::clipboard()->text().toStdString(); }

void OpenList(std::string_view form, std::string_view control) {
    Click(form, control);
    // A release soon after the opening would be the end of the opening click.
    QTest::qWait(QApplication::doubleClickInterval() + 50);
}

void Choose(std::string_view form, std::string_view control, int index) {
    OpenList(form, control);
    auto& list = dynamic_cast<QComboBox&>(FindControl(form, control));
    QAbstractItemView* view = list.view();
    const QPoint at = view->visualRect(view->model()->index(index, 0)).center();
    QTest::mouseMove(view->viewport(), at);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
}

platform::Rect Popup(std::string_view form) {
    const QWidget* popup = QApplication::activePopupWidget();
    if (popup == nullptr) return {};
    return ToRect(popup->geometry().translated(-FindForm(form).pos()));
}

platform::Color PopupPixel(int x, int y) {
    return ColorAt(QApplication::activePopupWidget()->grab().toImage(), x, y);
}

void DesktopMoves(std::string_view form, int left, int top) {
    WindowOf(form)->setPosition(left, top);
    QCoreApplication::processEvents();
}

void DesktopTellsLate(std::string_view form, int left, int top) {
    QMoveEvent late({left, top}, {});
    QCoreApplication::sendEvent(&FindForm(form), &late);
}

void DesktopCloses(std::string_view form) { FindForm(form).close(); }

std::vector<std::string> ShownWindows() {
    std::vector<std::string> names;
    for (const QWidget* window : Windows()) {
        const QString name = window->objectName().isEmpty() ? window->windowTitle() : window->objectName();
        if (window->isVisible()) names.push_back(name.toStdString());
    }
    return names;
}

platform::Rect Bounds(std::string_view form) { return ToRect(FindForm(form).geometry()); }

platform::Rect Bounds(std::string_view form, std::string_view control) {
    return ToRect(FindControl(form, control).geometry());
}

bool OnTop(std::string_view form) { return FindForm(form).windowFlags().testFlag(Qt::WindowStaysOnTopHint); }

std::string Text(std::string_view form, std::string_view control) {
    const QWidget& widget = FindControl(form, control);
    if (const auto* label = dynamic_cast<const LabelWidget*>(&widget))
        return label->Parsed().Text.toStdString();
    for (const char* property : {"text", "plainText", "currentText"}) {
        const QVariant text = widget.property(property);
        if (text.isValid()) return text.toString().replace('\n', "\r\n").toStdString();
    }
    throw std::runtime_error("no text on " + std::string(control));
}

bool Whole(std::string_view form, std::string_view control) {
    auto& area = dynamic_cast<QPlainTextEdit&>(FindControl(form, control));
    area.grab();  // lays the text out
    return area.document()->lineCount() == area.blockCount() && area.verticalScrollBar()->maximum() == 0;
}

std::vector<std::string> CutTexts(std::string_view form) {
    constexpr int kSmallest = 8;
    constexpr int kMark = 18;  // of a check box
    return Named(form, [](QWidget& control) {
        QStringList texts{control.property("text").toString().remove('&')};
        QRect room = control.rect().adjusted(0, 0, control.inherits("QCheckBox") ? -kMark : -2, 0);
        QFont font = control.font();
        int flags = 0;
        if (auto* label = dynamic_cast<LabelWidget*>(&control)) {
            texts = {label->Parsed().Text.trimmed()};
            room = label->rect();
            font = label->DrawnFont();
            flags = label->Style().Wrapped ? Qt::TextWordWrap : 0;
        } else if (const auto* list = qobject_cast<QComboBox*>(&control)) {
            QStyleOptionComboBox option;
            option.initFrom(list);
            room = list->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField,
                                                 list);
            for (int i = 0; i < list->count(); ++i) texts.push_back(list->itemText(i));
        }
        const auto isCut = [&](const QString& text) {
            const QRectF drawn = QFontMetricsF(font).boundingRect(room, flags, text);
            return !text.isEmpty() && (drawn.width() > room.width() || drawn.height() > room.height());
        };
        return QFontInfo(font).pixelSize() < kSmallest || std::ranges::any_of(texts, isCut);
    });
}

std::vector<std::string> Controls(std::string_view form) {
    const QRect room = FindForm(form).rect();
    return Named(form, [&room](const QWidget& control) {
        return !control.isWindow() && !control.isHidden() && !control.objectName().isEmpty() &&
               !control.testAttribute(Qt::WA_TransparentForMouseEvents) &&
               room.contains(control.geometry().center());
    });
}

std::vector<std::string> Pressed(std::string_view form) {
    return Named(form, [](const QWidget& control) {
        const auto* label = dynamic_cast<const LabelWidget*>(&control);
        return label != nullptr && label->Bordered();
    });
}

std::string Focus(std::string_view form) {
    const QWidget* focus = FindForm(form).focusWidget();
    return focus == nullptr ? std::string() : focus->objectName().toStdString();
}

std::vector<platform::Color> Pixels(std::string_view form, const platform::Rect& part) {
    const QImage image = FindForm(form).grab().toImage();
    std::vector<platform::Color> colors;
    for (int y = part.Top; y < part.Top + part.Height; ++y) {
        for (int x = part.Left; x < part.Left + part.Width; ++x) colors.push_back(ColorAt(image, x, y));
    }
    return colors;
}

void WhenMessageComes(std::function<void()> look) {
    static QTimer* watch;
    delete watch;
    watch = new QTimer(qApp);
    watch->callOnTimeout([look = std::move(look)] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr || !box->objectName().isEmpty()) return;
        box->setObjectName("seen");
        look();
        if (box->isVisible()) QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    });
    watch->start(0);
}

std::string MessageText() {
    const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    return box == nullptr ? std::string() : box->text().toStdString();
}

void WhenToolkitWarns(void (*tell)(const std::string& warning)) {
    static void (*listener)(const std::string&);
    listener = tell;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
        // Of pointers outside of a window, and of a desktop that is none.
        if (!text.contains("occurs outside target window") &&
            !text.startsWith("This plugin does not support"))
            listener(text.toStdString());
    });
}

const std::size_t kLateCaches = 500'000;

std::size_t HeldResources() {
#if defined(__SANITIZE_ADDRESS__)
    return __sanitizer_get_current_allocated_bytes();
#else
    return 0;
#endif
}

bool Live(const std::function<bool()>& step) {
    // A timer does not come again while it waits for its own step, as in the menu of a scroll bar.
    QTimer idle, waiting;
    waiting.callOnTimeout([] {
        QWidget* popup = QApplication::activePopupWidget();
        if (popup != nullptr && QThread::currentThread()->loopLevel() > 1) popup->close();
    });
    waiting.start(0);
    idle.callOnTimeout([&] {
        if (!step()) QCoreApplication::exit(1);
    });
    idle.start(0);
    return QCoreApplication::exec() == 0;
}

std::string Description(std::string_view form, std::string_view control) {
    return FindControl(form, control).accessibleDescription().toStdString();
}

void PressByAssistant(std::string_view form, std::string_view control) {
    Assist(form, control, QAccessibleActionInterface::pressAction());
    QCoreApplication::processEvents();
}

void FocusByAssistant(std::string_view form, std::string_view control) {
    Assist(form, control, QAccessibleActionInterface::setFocusAction());
}

}  // namespace robot
