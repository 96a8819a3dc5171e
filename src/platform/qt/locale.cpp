#include "platform/locale.h"

#include <QLocale>

namespace platform {

const std::string& DecimalSeparator() {
    static const std::string separator = QLocale::system().decimalPoint().toStdString();
    return separator;
}

}  // namespace platform
