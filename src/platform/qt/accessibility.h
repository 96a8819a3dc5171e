#pragma once

class QAccessibleInterface;
class QObject;
class QString;

namespace platform {

// Tells assistive technology what a label is: a text, or a button with a press action. Nothing for other
// objects.
QAccessibleInterface* MakeAccessible(const QString& className, QObject* object);

}  // namespace platform
