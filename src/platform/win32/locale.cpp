#include "platform/locale.h"

#include "platform/win32/toolkit.h"

namespace platform {

const std::string& DecimalSeparator() {
    static const std::string separator = [] {
        wchar_t text[8] = L"";  // the system holds at most three characters
        GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, text, static_cast<int>(std::size(text)));
        return text[0] == L'\0' ? std::string(".") : FromWide(text);
    }();
    return separator;
}

}  // namespace platform
