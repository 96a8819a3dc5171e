#include "platform/win32/pasted_text.h"

#include <windows.h>

#include <algorithm>

#include "platform/win32/patience.h"

namespace platform {
namespace {

std::wstring Read(std::size_t most) {
    // Another program may just be looking.
    for (int i = 0; OpenClipboard(nullptr) == FALSE; ++i) {
        if (i == 20) return {};
        Sleep(20);
    }
    std::wstring text;
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);  // may wait for the owner
    if (const auto* begin = static_cast<const wchar_t*>(data == nullptr ? nullptr : GlobalLock(data))) {
        const std::size_t room = std::min(most, GlobalSize(data) / sizeof *begin);
        text.assign(begin, wcsnlen(begin, room));
        GlobalUnlock(data);
    }
    CloseClipboard();
    return text;
}

}  // namespace

std::wstring ClipboardText(std::size_t most) {
    // A window of this very thread may be asked about what it copied, and could not answer while that waits.
    if (GetWindowThreadProcessId(GetClipboardOwner(), nullptr) == GetCurrentThreadId()) return Read(most);
    return Within(1000, [most] { return Read(most); }).value_or(std::wstring());
}

}  // namespace platform
