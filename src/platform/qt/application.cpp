#include "platform/application.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QMessageBox>
#include <QPixmapCache>
#include <cstdlib>
#include <utility>
#include <vector>

#include "platform/qt/accessibility.h"
#include "platform/qt/pasted_text.h"
#include "platform/qt/toolkit.h"

// Last, since its macros take common names.
#include <X11/Xlib.h>

namespace platform {
namespace {

constexpr char kProgramTitle[] = "Orvane Utilities";

QApplication* application = nullptr;

// A Wayland desktop lets no program place its windows or keep them in front. Where it also offers an X
// server, that is the way to both.
void PreferX11() {
    const QByteArray wanted = qgetenv("QT_QPA_PLATFORM");
    const bool open = wanted.isEmpty() || wanted.startsWith("wayland");
    if (open && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && !qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
}

}  // namespace

Application::Application(int& argumentCount, char** arguments) {
    PreferX11();
    QCoreApplication::setApplicationName("orvane-utilities");
    QGuiApplication::setDesktopFileName("orvane-utilities");
    application = new QApplication(argumentCount, arguments);
    // The cache of pictures wakes the program up half a minute after its last use, to look for old ones.
    QPixmapCache::setCacheLimit(0);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // The windows are laid out for texts that run this way.
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    QAccessible::installFactory(MakeAccessible);
}

void Application::Run() {
    // When the display goes away the toolkit says so and calls exit, or the library below it does. Forms that
    // were taken down then would reach for the display.
    static_cast<void>(std::atexit([] { std::_Exit(EXIT_FAILURE); }));
    XSetIOErrorHandler([](Display*) -> int { std::_Exit(EXIT_FAILURE); });
    const int result = QApplication::exec();
    // Taking the toolkit down hands the clipboard over, for which it would wait long. What is left, a sound
    // and its thread, ends with the process.
    if (ClipboardManagerAnswers()) delete application;
    std::_Exit(result);
}

void EndProgram() {
    for (QWidget* window : QApplication::topLevelWidgets()) window->hide();
    QCoreApplication::exit(0);
}

void SetClipboardText(std::string_view text) {
    // As it stands: the line breaks are not the toolkit's.
    QGuiApplication::clipboard()->setText(
        QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

void ShowMessage(std::string_view text) {
    QMessageBox box(QMessageBox::NoIcon, kProgramTitle, ToQString(text), QMessageBox::Ok,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setWindowModality(Qt::ApplicationModal);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    // Assistive technology presses without an event that the box could hold back from the windows.
    std::vector<std::pair<QWidget*, QWidget*>> waiting;  // each window and what has the focus in it
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->parentWidget() == nullptr) waiting.emplace_back(window, window->focusWidget());
    }
    for (const auto& [window, focus] : waiting) window->setEnabled(false);
    box.setEnabled(true);
    box.exec();
    for (const auto& [window, focus] : waiting) {
        window->setEnabled(true);
        if (focus != nullptr) focus->setFocus();
    }
}

}  // namespace platform
