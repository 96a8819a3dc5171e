#pragma once

#include <QString>

class QMimeData;

namespace platform {

// The text that a box gets from the clipboard, from the selection or by a drop: its whole characters within
// so many bytes of UTF-8. Empty if there is none, or if another program does not hand it over within a
// second: the toolkit would wait for a quarter of a minute, and take whatever comes.
QString PastedText(const QMimeData& source, qsizetype most);

// To be called before a box that takes drops is shown.
void WatchDrops();

// Whether who keeps what an ended program has copied would take it over now. Also if there is nothing to
// keep.
bool ClipboardManagerAnswers();

}  // namespace platform
