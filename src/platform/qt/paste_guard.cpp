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
#include <optional>
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
        if (!Connected()) return;
        window_ = xcb_generate_id(server_);
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(server_)).data;
        xcb_create_window(server_, 0, window_, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, 0, 0,
                          nullptr);
    }

    // False if the owner of a selection does not tell in time what it has. Without an owner the display
    // server itself answers.
    bool OwnerAnswers(std::string_view selection) {
        while (Connected() && NextEvent()) {
        }
        const xcb_atom_t targets = Atom(server_, "TARGETS");
        xcb_convert_selection(server_, window_, Atom(server_, selection), targets, targets, XCB_CURRENT_TIME);
        xcb_flush(server_);
        QElapsedTimer timer;
        timer.start();
        for (qint64 left = kPatience; Connected(); left = kPatience - timer.elapsed()) {
            if (left <= 0) return false;
            if (const auto event = NextEvent()) {
                if ((event->response_type & 0x7F) == XCB_SELECTION_NOTIFY) return true;
            } else {
                pollfd readable{xcb_get_file_descriptor(server_), POLLIN, 0};
                poll(&readable, 1, static_cast<int>(left));
            }
        }
        return true;
    }

 private:
    bool Connected() const { return xcb_connection_has_error(server_) == 0; }
    Freed<xcb_generic_event_t> NextEvent() { return {xcb_poll_for_event(server_), std::free}; }

    xcb_connection_t* const server_ = xcb_connect(nullptr, nullptr);
    xcb_window_t window_ = XCB_NONE;
};

bool OwnerAnswers(std::string_view selection) {
    if (QGuiApplication::platformName() != "xcb") return true;
    static auto* asker = new Asker;
    return asker->OwnerAnswers(selection);
}

bool CanPaste(QClipboard::Mode mode) {
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    if (mode == QClipboard::Selection) return clipboard.ownsSelection() || OwnerAnswers("PRIMARY");
    return clipboard.ownsClipboard() || OwnerAnswers("CLIPBOARD");
}

// What the toolkit pastes for a key, if it pastes at all.
std::optional<QClipboard::Mode> PastedBy(const QKeyEvent& key) {
    if (!key.matches(QKeySequence::Paste)) return std::nullopt;
    const bool selection =
        key.key() == Qt::Key_Insert && key.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    return selection ? QClipboard::Selection : QClipboard::Clipboard;
}

}  // namespace

PasteGuard& PasteGuard::Instance() {
    static auto* guard = new PasteGuard;  // outlives every widget
    return *guard;
}

bool PasteGuard::eventFilter(QObject* watched, QEvent* event) {
    // Of several lines it is the viewport that gets the pointer's events.
    const QObject* box = watched->property("readOnly").isValid() ? watched : watched->parent();
    if (box->property("readOnly").toBool()) return false;
    switch (event->type()) {
        case QEvent::KeyPress: {
            const auto pasted = PastedBy(*static_cast<QKeyEvent*>(event));
            return pasted && !CanPaste(*pasted);
        }
        case QEvent::ContextMenu: return !CanPaste(QClipboard::Clipboard);
        case QEvent::MouseButtonRelease:
            return static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton &&
                   !CanPaste(QClipboard::Selection);
        default: return false;
    }
}

bool ClipboardManagerAnswers() {
    return !QGuiApplication::clipboard()->ownsClipboard() || OwnerAnswers("CLIPBOARD_MANAGER");
}

}  // namespace platform
