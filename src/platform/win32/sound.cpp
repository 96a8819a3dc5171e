#include <windows.h>

#include <mmsystem.h>

#include <utility>

#include "platform/sound_requests.h"
#include "platform/win32/toolkit.h"

namespace platform {

// The sound library is slow to load, so it comes into the process when the launcher has.
void ServeSounds(SoundRequests& requests) {
    WaitForSingleObject(FirstDrawn(), INFINITE);
    const HMODULE library = LoadLibraryExW(L"winmm.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr) return;
    const auto play = reinterpret_cast<decltype(&PlaySoundW)>(
        reinterpret_cast<void*>(GetProcAddress(library, "PlaySoundW")));
    for (std::unique_lock guard(requests.Lock); play != nullptr; guard.lock()) {
        requests.Arrived.wait(guard, [&] { return !requests.Wanted.empty(); });
        const auto wanted = std::exchange(requests.Wanted, {});
        guard.unlock();
        const auto file = SoundFile(wanted);
        if (!file.empty()) play(file.c_str(), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT);
    }
}

}  // namespace platform
