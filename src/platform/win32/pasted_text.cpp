#include "platform/win32/pasted_text.h"

#include <windows.h>

#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <utility>

namespace platform {
namespace {

constexpr std::chrono::milliseconds kPatience{1000};

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
        // Not half of a character.
        if (text.size() == most && IS_HIGH_SURROGATE(text.back())) text.pop_back();
    }
    CloseClipboard();
    return text;
}

}  // namespace

// The thread outlives the patience if it must, and then holds nothing but itself.
std::wstring ClipboardText(std::size_t most) {
    std::promise<std::wstring> promise;
    std::future<std::wstring> text = promise.get_future();
    std::thread([promise = std::move(promise), most]() mutable { promise.set_value(Read(most)); }).detach();
    return text.wait_for(kPatience) == std::future_status::ready ? text.get() : std::wstring();
}

}  // namespace platform
