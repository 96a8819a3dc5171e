#include "platform/qt/paste_guard.h"

#include <poll.h>
#include <xcb/xcb.h>

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace platform {
namespace {

constexpr qint64 kPatience = 1000;  // in milliseconds

template <class T>
using Freed = std::unique_ptr<T, decltype(&std::free)>;

xcb_atom_t Atom(xcb_connection_t* server, std::string_view name) {
    const auto cookie = xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Freed<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server, cookie, nullptr), std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_NONE};
}

// A connection of its own, so that the toolkit misses none of its events. It lasts as long as the process: an
// owner that answers late must find the window that asked.
class Asker {
 public:
    Asker() {
        if (xcb_connection_has_error(server_) != 0) return;
        window_ = xcb_generate_id(server_);
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(server_)).data;
        xcb_create_window(server_, 0, window_, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, 0, 0,
                          nullptr);
    }

    // Whether the owner of a selection tells in time what it has. Without an owner the display server itself
    // answers.
    bool OwnerAnswers(std::string_view selection) {
        while (NextEvent()) {
        }
        const xcb_atom_t targets = Atom(server_, "TARGETS");
        xcb_convert_selection(server_, window_, Atom(server_, selection), targets, targets, XCB_CURRENT_TIME);
        xcb_flush(server_);
        QElapsedTimer timer;
        timer.start();
        for (qint64 left = kPatience; left > 0 && xcb_connection_has_error(server_) == 0;
             left = kPatience - timer.elapsed()) {
            if (const auto event = NextEvent()) {
                if ((event->response_type & 0x7F) == XCB_SELECTION_NOTIFY) return true;
            } else {
                pollfd readable{xcb_get_file_descriptor(server_), POLLIN, 0};
                poll(&readable, 1, static_cast<int>(left));
            }
        }
        return false;
    }

 private:
    Freed<xcb_generic_event_t> NextEvent() { return {xcb_poll_for_event(server_), std::free}; }

    xcb_connection_t* const server_ = xcb_connect(nullptr, nullptr);
    xcb_window_t window_ = XCB_NONE;
};

bool CanAsk(QClipboard::Mode mode) {
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    const bool own = mode == QClipboard::Selection ? clipboard.ownsSelection() : clipboard.ownsClipboard();
    if (own || QGuiApplication::platformName() != "xcb") return true;
    static auto* asker = new Asker;
    return asker->OwnerAnswers(mode == QClipboard::Selection ? "PRIMARY" : "CLIPBOARD");
}

}  // namespace

PasteGuard& PasteGuard::Instance() {
    static auto* guard = new PasteGuard;  // outlives every widget
    return *guard;
}

bool PasteGuard::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
            return static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste) &&
                   !CanAsk(QClipboard::Clipboard);
        case QEvent::ContextMenu: return !CanAsk(QClipboard::Clipboard);
        case QEvent::MouseButtonRelease:
            return static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton &&
                   !CanAsk(QClipboard::Selection);
        default: return false;
    }
}

}  // namespace platform
