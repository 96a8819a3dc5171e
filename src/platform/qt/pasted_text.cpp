#include "platform/qt/pasted_text.h"

#include <poll.h>
#include <xcb/xproto.h>

#include <QAbstractNativeEventFilter>
#include <QClipboard>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QMimeData>
#include <QStringDecoder>
#include <optional>
#include <typeinfo>

// Last, since its macros take common names.
#include <X11/Xlib.h>

namespace platform {
namespace {

// In milliseconds. A full box needs some more to lay the text out.
constexpr int kPatience = 800;

// A connection of its own, so that the toolkit misses none of its events.
Display* Server() {
    static Display* const server = XOpenDisplay(nullptr);
    return server;
}

Atom AtomOf(const char* name) { return XInternAtom(Server(), name, False); }

// Sees when something was dropped, by the server's clock: one who drags answers only to that time.
class DropWatch : public QAbstractNativeEventFilter {
 public:
    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        static const Atom drop = AtomOf("XdndDrop");
        const auto& event = *static_cast<xcb_client_message_event_t*>(message);
        if ((event.response_type & 0x7F) == XCB_CLIENT_MESSAGE && event.type == drop)
            Dropped = event.data.data32[2];
        return false;
    }
    static inline Time Dropped = CurrentTime;
};

// What is asked of the owner of a selection.
class Question {
 public:
    explicit Question(const char* selection, Time time = CurrentTime)
        : selection_(AtomOf(selection)),
          time_(time),
          window_(XCreateWindow(Server(), DefaultRootWindow(Server()), 0, 0, 1, 1, 0, 0, InputOnly, nullptr,
                                0, nullptr)) {}
    // One who answers late may take it badly that the window has gone.
    ~Question() {
        if (!patience_.hasExpired()) XDestroyWindow(Server(), window_);
        XFlush(Server());
    }
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;

    // Where the answer lies; None if the owner refuses, or without an owner. No value if none comes in time.
    std::optional<Atom> Ask(const char* target) {
        XConvertSelection(Server(), selection_, AtomOf(target), selection_, window_, time_);
        const auto told = Wait(SelectionNotify);
        return told ? std::optional(told->xselection.property) : std::nullopt;
    }

    // The bytes of the answer, at most so many and a few. Empty if the owner stops in the middle of them.
    QByteArray Read(qsizetype most) {
        QByteArray bytes;
        if (ReadPiece(bytes, most) != AtomOf("INCR")) return bytes;
        XSelectInput(Server(), window_, PropertyChangeMask);
        for (qsizetype had = -1; had < bytes.size() && bytes.size() < most;) {
            // This asks for the next piece; an owner who is not asked does not write any more.
            XDeleteProperty(Server(), window_, selection_);
            std::optional<XEvent> event;
            do {
                event = Wait(PropertyNotify);
                if (!event) return {};
            } while (event->xproperty.state != PropertyNewValue);
            had = bytes.size();
            ReadPiece(bytes, most - had);
        }
        return bytes;
    }

 private:
    std::optional<XEvent> Wait(int type) {
        XEvent event;
        while (XCheckTypedWindowEvent(Server(), window_, type, &event) == False) {
            if (patience_.hasExpired()) return std::nullopt;
            pollfd readable{ConnectionNumber(Server()), POLLIN, 0};
            poll(&readable, 1, static_cast<int>(patience_.remainingTime()));
        }
        return event;
    }

    // Appends a text that lies there. Gives the type of what does.
    Atom ReadPiece(QByteArray& bytes, qsizetype most) {
        Atom type = None;
        int bits = 0;
        auto count = 0UL;
        auto left = 0UL;
        unsigned char* data = nullptr;
        XGetWindowProperty(Server(), window_, selection_, 0, (most / 4) + 1, False, AnyPropertyType, &type,
                           &bits, &count, &left, &data);
        if (bits == 8) bytes.append(reinterpret_cast<char*>(data), static_cast<qsizetype>(count));
        XFree(data);
        return type;
    }

    const QDeadlineTimer patience_{kPatience};
    const Atom selection_;  // also names the place of the answer
    const Time time_;
    const Window window_;
};

bool OnX11() { return QGuiApplication::platformName() == "xcb" && Server() != nullptr; }

QByteArray Answer(Question&& question, qsizetype most) {
    for (const char* target : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain"}) {
        const auto place = question.Ask(target);
        if (!place) return {};
        if (*place != None) return question.Read(most);
    }
    return question.Ask("STRING").value_or(None) == None ? QByteArray()
                                                         : QString::fromLatin1(question.Read(most)).toUtf8();
}

}  // namespace

void WatchDrops() {
    static DropWatch watch;
    if (OnX11()) QGuiApplication::instance()->installNativeEventFilter(&watch);
}

QString PastedText(const QMimeData& source, qsizetype most) {
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    const auto asked = [&] {
        // Only data of a type of its own has to ask another program for what it holds.
        if (!OnX11() || typeid(source) == typeid(QMimeData)) return source.text().toUtf8();
        if (clipboard.mimeData(QClipboard::Clipboard) == &source) return Answer(Question("CLIPBOARD"), most);
        if (clipboard.mimeData(QClipboard::Selection) == &source) return Answer(Question("PRIMARY"), most);
        return Answer(Question("XdndSelection", DropWatch::Dropped), most);
    };
    // A part of a character at the end waits in the decoder for the rest.
    return QStringDecoder(QStringDecoder::Utf8).decode(asked().left(most));
}

bool ClipboardManagerAnswers() {
    return !OnX11() || !QGuiApplication::clipboard()->ownsClipboard() ||
           Question("CLIPBOARD_MANAGER").Ask("TARGETS");
}

}  // namespace platform
