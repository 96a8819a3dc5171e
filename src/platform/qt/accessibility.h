#pragma once

class QAccessibleInterface;
class QObject;
class QString;

namespace platform {

// Tells assistive technology what a form is and what is in it, and what its labels, lists and pictures are.
// Nothing for other objects.
QAccessibleInterface* MakeAccessible(const QString& className, QObject* object);

}  // namespace platform
