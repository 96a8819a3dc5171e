#pragma once

#include <QObject>

namespace platform {

// Watches widgets into which text is pasted. While who holds the clipboard does not answer, they see nothing
// of what would ask for it: the toolkit would hold the program up for up to a quarter of a minute.
class PasteGuard : public QObject {
 public:
    // The one for all widgets.
    static PasteGuard& Instance();

    bool eventFilter(QObject* watched, QEvent* event) override;
};

// Whether who keeps what an ended program has copied would take it over now. Also if there is nothing to
// keep.
bool ClipboardManagerAnswers();

}  // namespace platform
